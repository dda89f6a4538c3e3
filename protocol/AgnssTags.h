// SPDX-License-Identifier: MIT
#pragma once

// The tags of the online assistance's reply body and the commands that carry their records to the receiver; free
// of Qt.

#include "protocol/Constellations.h"
#include "protocol/LinkFrame.h"

namespace protocol {

enum AgnssKind : std::uint16_t {
    AgnssRtc = 1,
    AgnssEph = 2,
    AgnssUtc = 3,
    AgnssIon = 4,
    AgnssRti = 5,
    AgnssAux = 6,
};

/// The bit of a data kind in the mask of the request; 0 for the time, which always comes.
constexpr std::uint32_t DataTypeBit(AgnssKind kind)
{
    return kind == AgnssRtc ? 0 : std::uint32_t{1} << (kind - AgnssEph);
}
constexpr std::uint32_t kAllAgnssData = 2 * DataTypeBit(AgnssAux) - 1;
static_assert(kAllAgnssData == 31);

/// A tag is its constellation's place in kAgnssOrder, 32 tags each, plus a data kind.
constexpr std::uint16_t TagOf(Constellation constellation, AgnssKind kind)
{
    return static_cast<std::uint16_t>(PlaceIn(kAgnssOrder, constellation) * 32 + kind);
}
static_assert(TagOf(Constellation::Gps, AgnssRtc) == 1 && TagOf(Constellation::Glonass, AgnssRtc) == 33 &&
              TagOf(Constellation::Beidou, AgnssRtc) == 65 && TagOf(Constellation::Galileo, AgnssAux) == 102);

struct AgnssTag {
    std::uint16_t tag;
    std::uint16_t commandId;
    std::uint8_t column; ///< text column of the command's ACK
};

constexpr AgnssTag RowFor(Constellation constellation, AgnssKind kind, std::uint16_t commandId)
{
    return {TagOf(constellation, kind), commandId, ColumnOf(constellation)};
}

constexpr AgnssTag kAgnssTags[] = {
    RowFor(Constellation::Gps, AgnssRtc, CmdAgnssGpsTime),
    RowFor(Constellation::Gps, AgnssEph, CmdAgnssGpsEphemeris),
    RowFor(Constellation::Gps, AgnssUtc, CmdAgnssUtc),
    RowFor(Constellation::Gps, AgnssIon, CmdAgnssGpsIonosphere),
    RowFor(Constellation::Gps, AgnssRti, CmdAgnssGpsIntegrity),
    RowFor(Constellation::Gps, AgnssAux, CmdAgnssChannels),
    RowFor(Constellation::Glonass, AgnssRtc, CmdAgnssTime),
    RowFor(Constellation::Glonass, AgnssEph, CmdAgnssEphemeris),
    RowFor(Constellation::Glonass, AgnssUtc, CmdAgnssUtcParameters),
    RowFor(Constellation::Glonass, AgnssIon, CmdAgnssIonosphere),
    RowFor(Constellation::Glonass, AgnssRti, CmdAgnssIntegrity),
    RowFor(Constellation::Glonass, AgnssAux, CmdAgnssChannels),
    RowFor(Constellation::Beidou, AgnssRtc, CmdAgnssTime),
    RowFor(Constellation::Beidou, AgnssEph, CmdAgnssEphemeris),
    RowFor(Constellation::Beidou, AgnssUtc, CmdAgnssUtcParameters),
    RowFor(Constellation::Beidou, AgnssIon, CmdAgnssIonosphere),
    RowFor(Constellation::Beidou, AgnssRti, CmdAgnssIntegrity),
    RowFor(Constellation::Beidou, AgnssAux, CmdAgnssChannels),
    RowFor(Constellation::Galileo, AgnssRtc, CmdAgnssTime),
    RowFor(Constellation::Galileo, AgnssEph, CmdAgnssEphemeris),
    RowFor(Constellation::Galileo, AgnssUtc, CmdAgnssUtcParameters),
    RowFor(Constellation::Galileo, AgnssIon, CmdAgnssIonosphere),
    RowFor(Constellation::Galileo, AgnssRti, CmdAgnssIntegrity),
    RowFor(Constellation::Galileo, AgnssAux, CmdAgnssChannels),
};

/// The row of a tag, or null for one that is unknown.
constexpr const AgnssTag* FindAgnssTag(std::uint16_t tag)
{
    for (const AgnssTag& row : kAgnssTags) {
        if (row.tag == tag) {
            return &row;
        }
    }
    return nullptr;
}

} // namespace protocol
