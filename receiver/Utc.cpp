// SPDX-License-Identifier: MIT
#include "receiver/Utc.h"

#include "receiver/TextNumbers.h"

#include <cmath>

namespace receiver {

namespace {

// Days since 1970-01-01 of a date in the proleptic Gregorian calendar; years begin in March, so that the
// leap day is the last of its year.
std::int64_t DaysFromDate(int year, int month, int day)
{
    const std::int64_t y = year - (month <= 2 ? 1 : 0);
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

std::int64_t FloorDivide(std::int64_t a, std::int64_t b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

bool FixedDigits(std::string_view text, std::size_t at, std::size_t count, int& value)
{
    if (at + count > text.size()) {
        return false;
    }
    value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') {
            return false;
        }
        value = value * 10 + (text[i] - '0');
    }
    return true;
}

} // namespace

UtcFields ToFields(Millis utc)
{
    const std::int64_t days = FloorDivide(utc, 86400000);
    const std::int64_t ofDay = utc - days * 86400000;
    const std::int64_t shifted = days + 719468;
    const std::int64_t era = FloorDivide(shifted, 146097);
    const std::int64_t dayOfEra = shifted - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t month = (5 * dayOfYear + 2) / 153;
    UtcFields fields;
    fields.day = static_cast<int>(dayOfYear - (153 * month + 2) / 5 + 1);
    fields.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    fields.year = static_cast<int>(yearOfEra + era * 400 + (fields.month <= 2 ? 1 : 0));
    fields.hour = static_cast<int>(ofDay / 3600000);
    fields.minute = static_cast<int>(ofDay / 60000 % 60);
    fields.second = static_cast<int>(ofDay / 1000 % 60);
    fields.millisecond = static_cast<int>(ofDay % 1000);
    return fields;
}

Millis FromFields(const UtcFields& f)
{
    return ((DaysFromDate(f.year, f.month, f.day) * 24 + f.hour) * 60 + f.minute) * 60000 +
           Millis{f.second} * 1000 + f.millisecond;
}

bool FieldsValid(const UtcFields& f)
{
    if (f.year < 1980 || f.year > 9999 || f.month < 1 || f.month > 12 || f.day < 1 || f.hour < 0 || f.hour > 23 ||
        f.minute < 0 || f.minute > 59 || f.second < 0 || f.second > 59 || f.millisecond < 0 ||
        f.millisecond > 999) {
        return false;
    }
    const UtcFields back = ToFields(FromFields(f));
    return back.day == f.day && back.month == f.month;
}

bool ParseUtc(std::string_view text, Millis& utc)
{
    if (!text.empty() && text.back() == 'Z') {
        text.remove_suffix(1);
    }
    UtcFields f;
    if (!FixedDigits(text, 0, 4, f.year) || !FixedDigits(text, 5, 2, f.month) || !FixedDigits(text, 8, 2, f.day) ||
        text[4] != '-' || text[7] != '-') {
        return false;
    }
    if (text.size() > 10) {
        if (!FixedDigits(text, 11, 2, f.hour) || !FixedDigits(text, 14, 2, f.minute) || text[13] != ':' ||
            (text[10] != 'T' && text[10] != ' ')) {
            return false;
        }
        double seconds = 0.0;
        if (text.size() > 16 &&
            (text[16] != ':' || !FixedDigits(text, 17, 2, f.second) || !ParseDouble(text.substr(17), seconds))) {
            return false;
        }
        f.millisecond = static_cast<int>(std::lround((seconds - f.second) * 1000.0));
        if (f.millisecond > 999) {
            f.millisecond = 999;
        }
    }
    if (!FieldsValid(f)) {
        return false;
    }
    utc = FromFields(f);
    return true;
}

} // namespace receiver
