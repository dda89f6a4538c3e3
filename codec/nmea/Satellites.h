// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace codec {

/// Constellations in the order of the NMEA system ids 1 to 6, with SBAS behind.
enum class System : std::uint8_t { Gps, Glonass, Galileo, Beidou, Qzss, Navic, Sbas };
constexpr int kSystems = 7;

constexpr char kSystemLetters[kSystems] = {'G', 'R', 'E', 'C', 'J', 'I', 'S'};

/// Block of MsgGsv and MsgGsa, or -1 for a constellation that has none. Satellites of augmentation systems
/// are listed with GPS, as their sentences do.
constexpr int kMessageBlockOf[kSystems] = {0, 3, 2, 1, 4, -1, 0};

struct SatelliteId {
    System system = System::Gps;
    std::uint8_t svid = 0; ///< number inside the constellation; for SBAS the PRN, 120 and up; 0 = none
};

/// Talkers as they matter to satellite numbers.
enum class TalkerSystem : std::uint8_t { Gps, Glonass, Galileo, Beidou, Qzss, Navic, Mixed };

/// The constellation that a two-letter talker speaks for; Mixed for GN and for every other talker.
TalkerSystem SystemOfTalker(char first, char second);

/// The constellation of an NMEA 4.10 system id (1 to 6); Mixed for others.
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
