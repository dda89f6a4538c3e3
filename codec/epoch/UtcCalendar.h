// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/Sentences.h"

namespace codec {

/// Carries the date on from the sentences that have one to those that have only a time of day.
class UtcCalendar {
public:
    void Reset() { *this = UtcCalendar(); }

    /// The date at a time of day, from the last trusted one; a time far before the last one is on the next
    /// day. Unknown when there has been no trusted date.
    CivilDate DateAt(int secondOfDay) const
    {
        constexpr int halfDay = 43200;
        return m_date.Known() && secondOfDay + halfDay < m_secondOfDay ? NextDay(m_date) : m_date;
    }

    /// Takes a date and time of day to go on from.
    void Trust(CivilDate date, int secondOfDay)
    {
        m_date = date;
        m_secondOfDay = secondOfDay;
    }

private:
    CivilDate m_date;
    int m_secondOfDay = 0;
};

} // namespace codec
