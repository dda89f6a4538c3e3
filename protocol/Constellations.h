// SPDX-License-Identifier: MIT
#pragma once

// The satellite constellations: one table with what anybody calls or shows them by. Where a layout or a display
// has an order of its own, that order is a list over this table. Free of Qt.

#include <array>
#include <cstddef>
#include <cstdint>

namespace protocol {

/// In the order of the shared list, by which MeasEntry::constellation and PdrMeasEntry::gnssType count.
enum class Constellation : std::uint8_t { Gps, Sbas, Glonass, Galileo, Qzss, Beidou, Navic };

struct ConstellationRow {
    Constellation constellation;
    char letter;             ///< in satellite records
    const char* name;        ///< in full
    const char* shortName;   ///< in file names and in the trees of the views; null where it never stands there
    const char* label;       ///< in a legend
    const char* talker;      ///< the two letters that begin its own sentences; null without
    const char* otherTalker; ///< another pair that means the same; null without
    int nmeaSystemId;        ///< NMEA 4.11; 0 without one
    int red, green, blue;    ///< its colour in every view
    const char* picture;     ///< begins the names of its two check pictures; null without
    const char* flag;        ///< the picture at the head of its group; null without
    const char* sceneFile;   ///< of its ephemerides in a scene's folder; null without
};

constexpr std::array<ConstellationRow, 7> kConstellationTable = {{
    {Constellation::Gps, 'G', "GPS", "GPS", "GPS", "GP", nullptr, 1, 96, 56, 17, "gps", "American",
     "GPS_PGNSS_REPLAY_FILE"},
    {Constellation::Sbas, 'S', "SBAS", nullptr, "SBA", nullptr, nullptr, 0, 142, 68, 173, nullptr, nullptr,
     nullptr},
    {Constellation::Glonass, 'R', "GLONASS", "GLO", "GLN", "GL", nullptr, 2, 0, 128, 128, "glo", "Russia",
     "GLO_PGNSS_REPLAY_FILE"},
    {Constellation::Galileo, 'E', "Galileo", "GAL", "GAL", "GA", nullptr, 3, 88, 131, 215, "gal", "European",
     "GAL_PGNSS_REPLAY_FILE"},
    {Constellation::Qzss, 'J', "QZSS", "QZS", "QZS", "GQ", "QZ", 5, 159, 43, 104, "qzs", "Japan",
     "QZSS_PGNSS_REPLAY_FILE"},
    {Constellation::Beidou, 'C', "BeiDou", "BDS", "BDS", "GB", "BD", 4, 203, 65, 84, "bds", "China",
     "BDS_PGNSS_REPLAY_FILE"},
    {Constellation::Navic, 'I', "NavIC", nullptr, "IRN", "GI", nullptr, 6, 243, 156, 18, nullptr, nullptr,
     nullptr},
}};
constexpr std::size_t kConstellationCount = kConstellationTable.size();

/// A place in the table, and with it the number of the shared list.
constexpr std::size_t IndexOf(Constellation constellation)
{
    return static_cast<std::size_t>(constellation);
}

constexpr const ConstellationRow& RowOf(Constellation constellation)
{
    return kConstellationTable[IndexOf(constellation)];
}

/// The row of a satellite record's letter, or null.
constexpr const ConstellationRow* FindConstellation(char letter)
{
    for (const ConstellationRow& row : kConstellationTable) {
        if (row.letter == letter) {
            return &row;
        }
    }
    return nullptr;
}

/// The place of a constellation in an order, or the order's size when it does not occur.
template <std::size_t Count>
constexpr std::size_t PlaceIn(const std::array<Constellation, Count>& order, Constellation constellation)
{
    std::size_t place = 0;
    while (place < Count && order[place] != constellation) {
        ++place;
    }
    return place;
}

/// The place of a letter in an order, or the order's size.
template <std::size_t Count>
constexpr std::size_t PlaceIn(const std::array<Constellation, Count>& order, char letter)
{
    const ConstellationRow* row = FindConstellation(letter);
    return row != nullptr ? PlaceIn(order, row->constellation) : Count;
}

/// True when no constellation occurs twice; every order must hold to it.
template <std::size_t Count> constexpr bool EachOnce(const std::array<Constellation, Count>& order)
{
    for (std::size_t i = 0; i < Count; ++i) {
        if (PlaceIn(order, order[i]) != i) {
            return false;
        }
    }
    return true;
}

constexpr bool TableIsInItsOrder()
{
    for (std::size_t i = 0; i < kConstellationCount; ++i) {
        if (IndexOf(kConstellationTable[i].constellation) != i ||
            FindConstellation(kConstellationTable[i].letter) != &kConstellationTable[i]) {
            return false;
        }
    }
    return true;
}
static_assert(TableIsInItsOrder());

// The orders of layouts.

/// Of the constellation setting's payload and of the assistance items' system.
constexpr std::array kSettingOrder = {Constellation::Gps, Constellation::Beidou, Constellation::Glonass,
                                      Constellation::Galileo, Constellation::Qzss};
/// Of the blocks of the GSV and GSA messages.
constexpr std::array kBlockOrder = {Constellation::Gps, Constellation::Beidou, Constellation::Galileo,
                                    Constellation::Glonass, Constellation::Qzss};
/// Of the NMEA system ids from 1 on.
constexpr std::array kNmeaSystemOrder = {Constellation::Gps,    Constellation::Glonass, Constellation::Galileo,
                                         Constellation::Beidou, Constellation::Qzss,    Constellation::Navic};
/// Of the tags of the online assistance's reply and of the bits of its request's mask.
constexpr std::array kAgnssOrder = {Constellation::Gps, Constellation::Glonass, Constellation::Beidou,
                                    Constellation::Galileo};
/// In which a seed's ephemerides are written and injected.
constexpr std::array kEphemerisOrder = {Constellation::Gps, Constellation::Glonass, Constellation::Beidou,
                                        Constellation::Galileo, Constellation::Qzss};
/// Of the text columns of commands that serve every constellation but GPS.
constexpr std::array kColumnOrder = {Constellation::Glonass, Constellation::Beidou, Constellation::Galileo,
                                     Constellation::Qzss};

static_assert(EachOnce(kSettingOrder) && EachOnce(kBlockOrder) && EachOnce(kNmeaSystemOrder) &&
              EachOnce(kAgnssOrder) && EachOnce(kEphemerisOrder) && EachOnce(kColumnOrder));

constexpr bool NmeaOrderIsById()
{
    for (std::size_t i = 0; i < kNmeaSystemOrder.size(); ++i) {
        if (RowOf(kNmeaSystemOrder[i]).nmeaSystemId != static_cast<int>(i) + 1) {
            return false;
        }
    }
    return true;
}
static_assert(NmeaOrderIsById());

/// The bit of a constellation in the mask of the online assistance's request.
constexpr std::uint32_t AgnssBit(Constellation constellation)
{
    return std::uint32_t{1} << PlaceIn(kAgnssOrder, constellation);
}

constexpr std::uint32_t kAllAgnss = (std::uint32_t{1} << kAgnssOrder.size()) - 1;
static_assert(kAllAgnss == 15);

/// The text column of a command that serves several constellations; 0 for one whose text has no columns.
constexpr std::uint8_t ColumnOf(Constellation constellation)
{
    const std::size_t place = PlaceIn(kColumnOrder, constellation);
    return static_cast<std::uint8_t>(place < kColumnOrder.size() ? place : 0);
}

} // namespace protocol
