// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVector>

/// The time in the name of a working log, "log_yyyyMMddhhmmss.txt"; invalid when the name holds none.
QDateTime LogStamp(const QString& fileName);

/// The times of those names that hold one, newest first.
QVector<QDateTime> LogStamps(const QStringList& fileNames);

/// The first name that holds the time; empty when none does.
QString LogFileOf(const QStringList& fileNames, const QDateTime& stamp);
