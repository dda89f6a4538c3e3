// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// The time zone of the basic views, which lasts for the whole process.

/// "UTC-12" to "UTC-1", then "UTC+1" to "UTC+12". There is no zone in between, and so it is meant: one place in
/// the list is one hour, also from "UTC-1" to "UTC+1".
QStringList TimeZoneNames();

/// The texts of a date and a time of day.
struct DateTimeTexts {
    QString date; ///< yyyy-MM-dd
    QString time; ///< hh:mm:ss
};

/// The texts of `time` moved by `hours`; empty ones when there is no such time.
DateTimeTexts MovedTexts(const QDateTime& time, int hours);

/// The time that the texts show, in UTC, so that no clock change lies in the way; invalid when they don't parse.
QDateTime ReadTexts(const DateTimeTexts& texts);
