// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Constellations.h"

#include <array>
#include <cstdint>
#include <optional>

namespace codec {

using System = protocol::Constellation;
constexpr int kSystems = static_cast<int>(protocol::kConstellationCount);

/// In which the constellations of a list follow each other when it is made of two: that of the NMEA system ids,
/// with SBAS behind.
constexpr std::array kListOrder = {System::Gps,  System::Glonass, System::Galileo, System::Beidou,
                                   System::Qzss, System::Navic,   System::Sbas};
static_assert(protocol::EachOnce(kListOrder) && kListOrder.size() == protocol::kConstellationCount);

/// Block of MsgGsv and MsgGsa, or -1 for a constellation that has none. Satellites of augmentation systems
/// are listed with GPS, as their sentences do.
constexpr int MessageBlockOf(System system)
{
    const std::size_t place =
        protocol::PlaceIn(protocol::kBlockOrder, system == System::Sbas ? System::Gps : system);
    return place < protocol::kBlockOrder.size() ? static_cast<int>(place) : -1;
}

struct SatelliteId {
    System system = System::Gps;
    std::uint8_t svid = 0; ///< number inside the constellation; for SBAS the PRN, 120 and up; 0 = none
};

/// The constellation that a talker speaks for, as it matters to satellite numbers; nothing for several.
using TalkerSystem = std::optional<System>;

/// The constellation that a two-letter talker speaks for; nothing for GN and for every other talker.
TalkerSystem SystemOfTalker(char first, char second);

/// The constellation of an NMEA 4.10 system id (1 to 6); nothing for others.
TalkerSystem SystemOfId(int systemId);

/// Takes apart a satellite number of a GSV or GSA sentence. Knows the numbers inside a constellation and the
/// ranges that receivers shift them to (33 SBAS, 65 GLONASS, 101 and 301 Galileo, 193 QZSS, 201 and 401
/// BeiDou). svid is 0 for a number that fits nothing.
SatelliteId IdentifySatellite(TalkerSystem talker, int number);

/// Signal id that a sentence without one, or with 0, stands for: the constellation's first open signal.
std::uint8_t DefaultSignal(System system);

/// Carrier frequency in MHz of an NMEA 0183 4.11 signal id. For the frequency-divided signals of GLONASS the
/// centre of the band. An unknown id gives the frequency of the default signal.
float CarrierFrequency(System system, std::uint8_t signalId);

/// True for the signals around 1.57 and 1.6 GHz.
bool IsFirstBand(System system, std::uint8_t signalId);

} // namespace codec
