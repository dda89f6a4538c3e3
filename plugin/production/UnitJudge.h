// SPDX-License-Identifier: MIT
#pragma once

#include "production/EpochSignals.h"

#include <cstdint>

/// What a unit is measured against. Only the strongest satellite of a group counts, and reaching is enough.
struct UnitThresholds {
    bool needGps = true;
    std::uint16_t gpsCn0 = 0; ///< dB-Hz
    bool needNonGps = false;
    std::uint16_t nonGpsCn0 = 0;
};

enum class UnitVerdict {
    None, ///< not yet
    Passed,
    WeakGps,
    WeakNonGps,
    TimedOut, ///< no fix in time
};

/// Of a unit that has fixes: passed or weak.
UnitVerdict JudgeUnit(const UnitThresholds& thresholds, std::uint8_t gpsStrongest, std::uint8_t nonGpsStrongest);

/// Whether a fix of this UTC is a later one than the first, whose own epoch began before it. Past midnight the
/// difference is negative, and no fix of that day is a later one.
bool IsLaterFix(double utc, double firstFixUtc);

/// The time to first fix as it is kept: milliseconds in 16 bits, so that 70 s show as 4. That is meant so.
std::uint16_t KeptTtff(std::int64_t milliseconds);
