// SPDX-License-Identifier: MIT
#include "production/UnitJudge.h"

UnitVerdict JudgeUnit(const UnitThresholds& thresholds, std::uint8_t gpsStrongest, std::uint8_t nonGpsStrongest)
{
    if (thresholds.needGps && gpsStrongest < thresholds.gpsCn0) {
        return UnitVerdict::WeakGps;
    }
    if (thresholds.needNonGps && nonGpsStrongest < thresholds.nonGpsCn0) {
        return UnitVerdict::WeakNonGps;
    }
    return UnitVerdict::Passed;
}

bool IsLaterFix(double utc, double firstFixUtc)
{
    return utc - firstFixUtc > 1e-15;
}

std::uint16_t KeptTtff(std::int64_t milliseconds)
{
    return static_cast<std::uint16_t>(milliseconds);
}
