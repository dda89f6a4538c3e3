// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/// Name of a raw capture: port, "_", time to the millisecond, ".bin". A port that is a path gives its last
/// component.
QString RawCaptureName(const QString& portName, const QDateTime& time);

/// Path of a new raw capture: in `saveDirectory`, or when that is empty in "GnssData" under the application
/// directory, which is made.
QString RawCapturePath(const QString& saveDirectory, const QString& portName, const QDateTime& time);

/// Creates an empty capture file. A failure is a line in the debug log.
void CreateRawCapture(const QString& path);

/// Appends bytes as they are; a file that cannot be opened loses them.
void AppendRawCapture(const QString& path, const QByteArray& bytes);
