// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Geodesy.h"
#include "receiver/Utc.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace receiver {

/// The systems in the order of the constellation setting's payload.
enum class System : std::uint8_t { Gps, Beidou, Glonass, Galileo, Qzss };
constexpr std::size_t kSystems = 5;

/// What the outside calls a system.
struct SystemNames {
    const char* gsvTalker;
    int nmeaSystemId;       ///< NMEA 4.11
    char letter;            ///< of the satellite records
    std::uint8_t listIndex; ///< place in the shared list of constellation letters
};
const SystemNames& NamesOf(System system);

enum class OrbitKind : std::uint8_t { Medium, Inclined, Geostationary };

/// A circular Kepler orbit.
struct Orbit {
    System system;
    OrbitKind kind;
    std::uint8_t svid; ///< NMEA number: GLONASS from 65, QZSS from 193
    std::uint8_t plane;
    bool secondSignal;   ///< sends on the second carrier too
    std::int8_t channel; ///< GLONASS frequency channel
    double radius;       ///< metres
    double inclination;  ///< radians
    double node;         ///< radians, right ascension at the reference time
    double argument;     ///< radians, argument of latitude at the reference time
};

/// The orbits' elements hold at this moment, when the earth's prime meridian is taken to point along the x axis.
constexpr Millis kOrbitReference = 1577836800000;

/// All satellites of all systems; never changes.
const std::vector<Orbit>& AllOrbits();

/// The satellite's number inside its system, from 1.
std::uint8_t NumberInSystem(const Orbit& orbit);

/// Earth-fixed metres.
Vector3 PositionAt(const Orbit& orbit, Millis utc);

/// Seconds for one turn.
double PeriodOf(const Orbit& orbit);

/// One signal of a system: the first of two is the one that every satellite sends.
struct SignalPlan {
    std::uint8_t nmeaSignalId;
    double frequency; ///< MHz; GLONASS: of channel 0
    double channelStep;
    double strength; ///< dB against GPS L1
};
const SignalPlan& SignalOf(System system, std::size_t index);

} // namespace receiver
