// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// What the offline assistance decides without its window. Times are in Unix seconds.

/// Whether a seed of this span still serves an injection at `time`: it must last for another hour.
bool SeedCovers(quint32 validStart, quint32 validEnd, qint64 time);

/// The size of a file in bytes for its label.
QString SeedSizeText(qint64 size);

/// The span of a seed in local time for its label.
QString SeedSpanText(quint32 validStart, quint32 validEnd);

/// Reads "yyyy/MM/dd hh:mm:ss" as local time and gives it in UTC. False for anything else.
bool ReadCustomTime(const QString& text, QDateTime& utc);

/// The time of the ephemeris to inject: the largest of those in the file names (10 characters from index 4) that
/// isn't more than two hours ahead of `time`, or with `narrowWindow` within 15 minutes of it. 0 with none.
qint64 ChooseEphemeris(const QStringList& names, qint64 time, bool narrowWindow);

/// Deletes the ephemerides and data of the last injection from a folder. False when there is no such folder; an
/// empty `folder` is none.
bool DeleteExpandedFiles(const QString& folder);
