// SPDX-License-Identifier: MIT
#include "codec/nmea/TimeFields.h"

#include <cstddef>

namespace codec {

namespace {

int DaysInMonth(int year, int month)
{
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

} // namespace

CivilDate NextDay(CivilDate date)
{
    if (++date.day > DaysInMonth(date.year, date.month)) {
        date.day = 1;
        if (++date.month > 12) {
            date.month = 1;
            ++date.year;
        }
    }
    return date;
}

CivilDate MakeDate(int year, int month, int day)
{
    if (year < 1980 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) {
        return {};
    }
    return {year, month, day};
}

UtcTime ReadTime(FieldReader& fields)
{
    UtcTime time;
    std::size_t length = 0;
    const char* text = fields.Text(length);
    if (length < 6) {
        return time;
    }
    int digit[6];
    for (int i = 0; i < 6; ++i) {
        digit[i] = text[i] - '0';
        if (digit[i] < 0 || digit[i] > 9) {
            return time;
        }
    }
    std::int64_t nanos = 0;
    if (length > 6) {
        if (text[6] != '.') {
            return time;
        }
        std::int64_t unit = 100000000;
        for (std::size_t i = 7; i < length; ++i) {
            const int d = text[i] - '0';
            if (d < 0 || d > 9) {
                return time;
            }
            nanos += std::int64_t{d} * unit;
            unit /= 10;
        }
    }
    const int hour = digit[0] * 10 + digit[1];
    const int minute = digit[2] * 10 + digit[3];
    const int second = digit[4] * 10 + digit[5];
    if (hour > 23 || minute > 59 || second > 60) {
        return time;
    }
    constexpr std::int64_t nanosPerSecond = 1000000000;
    const std::int64_t secondNanos = second * nanosPerSecond + nanos;
    time.hour = hour;
    time.minute = minute;
    time.second = static_cast<double>(secondNanos) / static_cast<double>(nanosPerSecond);
    time.key = std::int64_t{hour * 100 + minute} * 100 * nanosPerSecond + secondNanos;
    time.raw = static_cast<double>(time.key) / static_cast<double>(nanosPerSecond);
    return time;
}

/// Two digits of a year below 80 are in this century, since GPS time begins in 1980.
CivilDate ReadShortDate(FieldReader& fields, std::uint32_t& raw)
{
    std::size_t length = 0;
    FieldReader probe = fields;
    probe.Text(length);
    bool present = false;
    const int value = fields.Integer(present);
    if (!present || value < 0 || length != 6) {
        return {};
    }
    raw = static_cast<std::uint32_t>(value);
    const int year = value % 100;
    return MakeDate(year + (year < 80 ? 2000 : 1900), value / 100 % 100, value / 10000);
}

} // namespace codec
