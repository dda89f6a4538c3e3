// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"

#include <cstdint>

namespace codec {

constexpr std::int64_t kNoTime = -1;

/// UTC time of day. Second 60 is a leap second and stays one.
struct UtcTime {
    std::int64_t key = kNoTime; ///< the same for the same time and ascending within a day
    int hour = 0;
    int minute = 0;
    double second = 0;
    double raw = 0; ///< hhmmss.sss as a number

    bool Known() const { return key != kNoTime; }
    int SecondOfDay() const { return hour * 3600 + minute * 60 + static_cast<int>(second); }
};

struct CivilDate {
    int year = 0; ///< 0 = unknown
    int month = 0;
    int day = 0;

    bool Known() const { return year != 0; }
};

CivilDate NextDay(CivilDate date);

/// Unknown for a date that does not exist or lies before GPS time.
CivilDate MakeDate(int year, int month, int day);

/// A time of day hhmmss with decimals; unknown for anything else.
UtcTime ReadTime(FieldReader& fields);

/// A date ddmmyy; `raw` is it as a number. Unknown, with `raw` as it was, for anything else.
CivilDate ReadShortDate(FieldReader& fields, std::uint32_t& raw);

} // namespace codec
