// SPDX-License-Identifier: MIT
#include "codec/nmea/Satellites.h"

namespace codec {

namespace {

// Signal ids: NMEA 0183 4.11, GSV and GSA sentences. Carrier frequencies: the interface documents of the
// systems (IS-GPS-200/705/800, GLONASS ICD 5.1, Galileo OS SIS ICD, BDS-SIS-ICD, IS-QZSS, NavIC ICD).
constexpr float kL1 = 1575.42F;
constexpr float kL2 = 1227.60F;
constexpr float kL5 = 1176.45F;
constexpr float kG1 = 1602.0F;
constexpr float kG2 = 1246.0F;
constexpr float kE5b = 1207.14F;
constexpr float kE5 = 1191.795F;
constexpr float kE6 = 1278.75F;
constexpr float kB1I = 1561.098F;
constexpr float kB3 = 1268.52F;
constexpr float kS = 2492.028F;

constexpr int kSignalIds = 16;

/// What a constellation sends.
struct SignalRow {
    System system;
    std::uint8_t defaultSignal;
    float frequency[kSignalIds]; ///< MHz by signal id; 0 for unknown ones
};

// In the order of the constellations.
constexpr SignalRow kSignals[kSystems] = {
    {System::Gps, 1, {0, kL1, kL1, kL1, kL2, kL2, kL2, kL5, kL5}},
    {System::Sbas, 1, {0, kL1, kL1, kL1, 0, 0, 0, kL5, kL5}},
    {System::Glonass, 1, {0, kG1, kG1, kG2, kG2}},
    {System::Galileo, 7, {0, kL5, kE5b, kE5, kE6, kE6, kL1, kL1}},
    {System::Qzss, 1, {0, kL1, kL1, kL1, kL1, kL2, kL2, kL5, kL5, kE6, kE6}},
    {System::Beidou, 1, {0, kB1I, kB1I, kL1, kL1, kL5, kE5b, kE5, kB3, kB3, kB3, kE5b, kE5b}},
    {System::Navic, 1, {0, kL5, kS, kL5, kS, kL1}},
};

constexpr const SignalRow& SignalsOf(System system)
{
    return kSignals[protocol::IndexOf(system)];
}

constexpr bool SignalsAreInOrder()
{
    for (const protocol::ConstellationRow& row : protocol::kConstellationTable) {
        if (SignalsOf(row.constellation).system != row.constellation) {
            return false;
        }
    }
    return true;
}
static_assert(SignalsAreInOrder());

constexpr int kSbasOffset = 87;

SatelliteId Make(System system, int svid)
{
    return {system, static_cast<std::uint8_t>(svid)};
}

bool Within(int number, int first, int last)
{
    return number >= first && number <= last;
}

/// Numbers that mean the same whatever the talker.
SatelliteId IdentifyShifted(int number)
{
    if (Within(number, 1, 32)) {
        return Make(System::Gps, number);
    }
    if (Within(number, 33, 64)) {
        return Make(System::Sbas, number + kSbasOffset);
    }
    if (Within(number, 65, 99)) {
        return Make(System::Glonass, number - 64);
    }
    if (Within(number, 101, 119)) {
        return Make(System::Galileo, number - 100);
    }
    if (Within(number, 120, 158)) {
        return Make(System::Sbas, number);
    }
    if (Within(number, 193, 202)) {
        return Make(System::Qzss, number - 192);
    }
    if (Within(number, 203, 264)) {
        return Make(System::Beidou, number - 200);
    }
    if (Within(number, 301, 336)) {
        return Make(System::Galileo, number - 300);
    }
    if (Within(number, 401, 464)) {
        return Make(System::Beidou, number - 400);
    }
    return {};
}

} // namespace

TalkerSystem SystemOfTalker(char first, char second)
{
    const auto matches = [&](const char* talker) {
        return talker != nullptr && talker[0] == first && talker[1] == second;
    };
    for (const protocol::ConstellationRow& row : protocol::kConstellationTable) {
        if (matches(row.talker) || matches(row.otherTalker)) {
            return row.constellation;
        }
    }
    return std::nullopt;
}

TalkerSystem SystemOfId(int systemId)
{
    if (!Within(systemId, 1, static_cast<int>(protocol::kNmeaSystemOrder.size()))) {
        return std::nullopt;
    }
    return protocol::kNmeaSystemOrder[static_cast<std::size_t>(systemId - 1)];
}

SatelliteId IdentifySatellite(TalkerSystem talker, int number)
{
    if (!talker) {
        return IdentifyShifted(number);
    }
    switch (*talker) {
    case System::Glonass:
        if (Within(number, 1, 32)) {
            return Make(System::Glonass, number);
        }
        break;
    case System::Galileo:
        if (Within(number, 1, 99)) {
            return Make(System::Galileo, number);
        }
        if (Within(number, 101, 199)) {
            return Make(System::Galileo, number - 100);
        }
        if (Within(number, 201, 299)) {
            return Make(System::Galileo, number - 200);
        }
        break;
    case System::Beidou:
        if (Within(number, 1, 99)) {
            return Make(System::Beidou, number);
        }
        if (Within(number, 101, 199)) {
            return Make(System::Beidou, number - 100);
        }
        if (Within(number, 201, 299)) {
            return Make(System::Beidou, number - 200);
        }
        break;
    case System::Qzss:
        if (Within(number, 1, 32)) {
            return Make(System::Qzss, number);
        }
        if (Within(number, 183, 192)) {
            return Make(System::Qzss, number - 182);
        }
        break;
    case System::Navic:
        if (Within(number, 1, 99)) {
            return Make(System::Navic, number);
        }
        break;
    case System::Gps:
    case System::Sbas:
        break;
    }
    return IdentifyShifted(number);
}

std::uint8_t DefaultSignal(System system)
{
    return SignalsOf(system).defaultSignal;
}

float CarrierFrequency(System system, std::uint8_t signalId)
{
    const float* row = SignalsOf(system).frequency;
    const float frequency = signalId < kSignalIds ? row[signalId] : 0;
    return frequency > 0 ? frequency : row[DefaultSignal(system)];
}

bool IsFirstBand(System system, std::uint8_t signalId)
{
    const float frequency = CarrierFrequency(system, signalId);
    return frequency > 1500 && frequency < 1700;
}

} // namespace codec
