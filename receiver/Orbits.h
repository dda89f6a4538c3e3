// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/AssistPayloads.h"
#include "receiver/Geodesy.h"
#include "receiver/Utc.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace receiver {

/// The systems by their numbers in the constellation setting.
using System = protocol::AssistSystem;
constexpr std::size_t kSystems = protocol::kAssistSystems;

/// What the outside calls a system.
constexpr const protocol::ConstellationRow& NamesOf(System system)
{
    return protocol::RowOf(protocol::ConstellationOf(system));
}

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
