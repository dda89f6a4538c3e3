// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace receiver {

/// Milliseconds: since 1970-01-01 UTC without leap seconds where it is called utc, since power-on otherwise.
using Millis = std::int64_t;

constexpr Millis kNever = INT64_MAX / 4;

struct UtcFields {
    int year = 1970;
    int month = 1; ///< 1 to 12
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
};

constexpr Millis kGpsEpoch = 315964800000; ///< 1980-01-06
constexpr Millis kLeapMillis = 18000;      ///< GPS time is ahead of UTC by this much since 2017

UtcFields ToFields(Millis utc);
Millis FromFields(const UtcFields& fields);

/// False for a date or time that does not exist.
bool FieldsValid(const UtcFields& fields);

/// "2026-03-14T09:26:53", also with a blank for the T, a fraction of a second and a trailing Z; the time may
/// be missing.
bool ParseUtc(std::string_view text, Millis& utc);

} // namespace receiver
