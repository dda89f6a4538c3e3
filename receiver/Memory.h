// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Orbits.h"

#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// What the receiver remembers between two starts, and what gives it a quick one.
struct Memory {
    bool timeKnown = false;
    bool positionKnown = false;
    bool almanacKnown = false;
    Geodetic position;
    std::vector<Millis> ephemerisUntil = std::vector<Millis>(AllOrbits().size(), 0); ///< utc; 0: none

    bool HasEphemeris(std::size_t satellite, Millis utc) const { return ephemerisUntil[satellite] > utc; }
    void Forget() { *this = Memory(); }
};

/// How long a satellite's ephemeris serves, by system.
Millis EphemerisLife(System system);

/// The history block, with what the receiver would need after a power cut: docs/virtual-receiver.md has its
/// layout. Never longer than kMaxHistoryBlock.
std::string PackHistory(const Memory& memory, Millis utc);

/// False, with `memory` untouched, unless the block is whole, its checksum right and every value possible.
/// The time does not come from the block: the clock has run on since.
bool UnpackHistory(std::string_view block, Memory& memory);

} // namespace receiver
