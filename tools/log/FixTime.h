// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"

#include <cstdint>
#include <string>

namespace tools {

/// The UTC time of an epoch, in whole milliseconds, as far as the receiver has told it.
class FixTime {
public:
    FixTime() = default;
    explicit FixTime(const protocol::FixRecord& fix);

    /// False where neither date nor time of day was told.
    bool Known() const { return m_known; }
    bool HasDate() const { return m_year != 0; }
    /// Both are known and the same.
    bool IsSame(const FixTime& other) const { return m_known && other.m_known && MillisecondsSince(other) == 0; }

    /// "2026-03-14T09:26:53.000Z", without a date "T09:26:53.000Z", empty where unknown. A leap second is
    /// told as second 60, or as the last millisecond before it where a format has no such second.
    std::string Text(bool leapSecond = true) const;

    /// Milliseconds from `earlier` to this time. Where one of the two has no date, the way is taken that is
    /// shorter than half a day.
    std::int64_t MillisecondsSince(const FixTime& earlier) const;

private:
    std::int64_t DayNumber() const;

    bool m_known = false;
    int m_year = 0; ///< 0 = no date
    unsigned m_month = 0;
    unsigned m_day = 0;
    unsigned m_hour = 0;
    unsigned m_minute = 0;
    unsigned m_millisecond = 0; ///< of the minute, 0 to 60999
};

} // namespace tools
