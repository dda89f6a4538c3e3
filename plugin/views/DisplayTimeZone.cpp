// SPDX-License-Identifier: MIT
#include "views/DisplayTimeZone.h"

#include <QLocale>

namespace {

constexpr const char* kDateFormat = "yyyy-MM-dd";
constexpr const char* kTimeFormat = "hh:mm:ss";
constexpr int kHours = 12;

} // namespace

QStringList TimeZoneNames()
{
    QStringList names;
    for (int hours = kHours; hours > 0; --hours) {
        names += QString("UTC-%1").arg(hours);
    }
    for (int hours = 1; hours <= kHours; ++hours) {
        names += QString("UTC+%1").arg(hours);
    }
    return names;
}

DateTimeTexts MovedTexts(const QDateTime& time, int hours)
{
    const QDateTime moved = time.addSecs(qint64(hours) * 3600);
    if (!time.isValid() || !moved.isValid()) {
        return {};
    }
    const QLocale digits = QLocale::c();
    return {digits.toString(moved.date(), kDateFormat), digits.toString(moved.time(), kTimeFormat)};
}

QDateTime ReadTexts(const DateTimeTexts& texts)
{
    const QLocale digits = QLocale::c();
    const QDate date = digits.toDate(texts.date, kDateFormat);
    const QTime time = digits.toTime(texts.time, kTimeFormat);
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}
