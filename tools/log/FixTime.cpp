// SPDX-License-Identifier: MIT
#include "tools/log/FixTime.h"

#include "tools/log/Numbers.h"

#include <algorithm>
#include <cmath>

namespace tools {

namespace {

constexpr std::int64_t kDayMs = 86400000;
constexpr unsigned kLastMillisecond = 59999;
constexpr unsigned kLongestMinute = 60999;

} // namespace

FixTime::FixTime(const protocol::FixRecord& fix)
    : m_known(fix.year != 0 || fix.hour != 0 || fix.minute != 0 || fix.second > 0),
      m_year(static_cast<int>(fix.year)), m_month(fix.month), m_day(fix.day), m_hour(fix.hour),
      m_minute(fix.minute)
{
    // Cut and not rounded, so that .9999 stays inside its second; the small share is for binary fractions.
    const double milliseconds = std::floor(fix.second * 1000.0 + 0.001);
    m_millisecond = milliseconds > 0 ? static_cast<unsigned>(std::min<double>(milliseconds, kLongestMinute)) : 0;
}

std::string FixTime::Text(bool leapSecond) const
{
    std::string text;
    if (!m_known) {
        return text;
    }
    if (HasDate()) {
        AppendPadded(text, static_cast<unsigned>(m_year), 4);
        text += '-';
        AppendPadded(text, m_month, 2);
        text += '-';
        AppendPadded(text, m_day, 2);
    }
    const unsigned millisecond = leapSecond ? m_millisecond : std::min(m_millisecond, kLastMillisecond);
    text += 'T';
    AppendPadded(text, m_hour, 2);
    text += ':';
    AppendPadded(text, m_minute, 2);
    text += ':';
    AppendPadded(text, millisecond / 1000, 2);
    text += '.';
    AppendPadded(text, millisecond % 1000, 3);
    text += 'Z';
    return text;
}

std::int64_t FixTime::MillisecondsSince(const FixTime& earlier) const
{
    const auto ofDay = [](const FixTime& time) {
        return static_cast<std::int64_t>(time.m_hour * 60 + time.m_minute) * 60000 + time.m_millisecond;
    };
    std::int64_t way = ofDay(*this) - ofDay(earlier);
    if (HasDate() && earlier.HasDate()) {
        return way + (DayNumber() - earlier.DayNumber()) * kDayMs;
    }
    if (way <= -kDayMs / 2) {
        way += kDayMs;
    } else if (way > kDayMs / 2) {
        way -= kDayMs;
    }
    return way;
}

/// Days of the Gregorian calendar since a fixed day long ago.
std::int64_t FixTime::DayNumber() const
{
    // Counted from March on, the leap day is the last of its year.
    const std::int64_t year = m_month > 2 ? m_year : m_year - 1;
    const std::int64_t month = m_month > 2 ? m_month - 3 : m_month + 9;
    return year * 365 + year / 4 - year / 100 + year / 400 + (month * 153 + 2) / 5 + m_day;
}

} // namespace tools
