// SPDX-License-Identifier: MIT
#pragma once

#include "production/EpochStore.h"

#include <array>
#include <cstdint>
#include <map>
#include <vector>

/// How many satellites with a signal a group has, and its strongest. Both have 8 bits.
struct SignalGroup {
    std::uint8_t count = 0;
    std::uint8_t strongest = 0; ///< dB-Hz

    void Add(std::uint8_t cn0);
};

/// The signals of each satellite of a constellation, by its number.
using SatelliteBars = std::map<int, std::vector<int>>;

/// What an epoch's satellites come to. Satellites with a C/N0 of 0 have no signal and are not counted.
struct EpochSignals {
    SignalGroup total;
    SignalGroup gps;
    SignalGroup nonGps;
    std::array<SignalGroup, kConstellations> each;   ///< in the order of kEpochOrder
    std::array<SatelliteBars, kConstellations> bars; ///< the same
};

EpochSignals SumUp(const std::vector<SatEntry>& satellites);
