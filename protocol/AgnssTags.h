// SPDX-License-Identifier: MIT
#pragma once

// The tags of the online assistance's reply body and the commands that carry their records to the receiver; free
// of Qt.

#include "protocol/LinkFrame.h"

namespace protocol {

// A tag is a constellation's base plus a data kind.
constexpr std::uint16_t kTagGps = 0;
constexpr std::uint16_t kTagGlo = 32;
constexpr std::uint16_t kTagBds = 64;
constexpr std::uint16_t kTagGal = 96;

enum AgnssKind : std::uint16_t {
    AgnssRtc = 1,
    AgnssEph = 2,
    AgnssUtc = 3,
    AgnssIon = 4,
    AgnssRti = 5,
    AgnssAux = 6,
};

struct AgnssTag {
    std::uint16_t tag;
    std::uint16_t commandId;
    std::uint8_t column; ///< text column of the command's ACK
};

constexpr AgnssTag kAgnssTags[] = {
    {kTagGps + AgnssRtc, CmdAgnssGpsTime, 0},       {kTagGps + AgnssEph, CmdAgnssGpsEphemeris, 0},
    {kTagGps + AgnssUtc, CmdAgnssUtc, 0},           {kTagGps + AgnssIon, CmdAgnssGpsIonosphere, 0},
    {kTagGps + AgnssRti, CmdAgnssGpsIntegrity, 0},  {kTagGps + AgnssAux, CmdAgnssChannels, 0},
    {kTagGlo + AgnssRtc, CmdAgnssTime, 0},          {kTagGlo + AgnssEph, CmdAgnssEphemeris, 0},
    {kTagGlo + AgnssUtc, CmdAgnssUtcParameters, 0}, {kTagGlo + AgnssIon, CmdAgnssIonosphere, 0},
    {kTagGlo + AgnssRti, CmdAgnssIntegrity, 0},     {kTagGlo + AgnssAux, CmdAgnssChannels, 0},
    {kTagBds + AgnssRtc, CmdAgnssTime, 1},          {kTagBds + AgnssEph, CmdAgnssEphemeris, 1},
    {kTagBds + AgnssUtc, CmdAgnssUtcParameters, 1}, {kTagBds + AgnssIon, CmdAgnssIonosphere, 1},
    {kTagBds + AgnssRti, CmdAgnssIntegrity, 1},     {kTagBds + AgnssAux, CmdAgnssChannels, 1},
    {kTagGal + AgnssRtc, CmdAgnssTime, 2},          {kTagGal + AgnssEph, CmdAgnssEphemeris, 2},
    {kTagGal + AgnssUtc, CmdAgnssUtcParameters, 2}, {kTagGal + AgnssIon, CmdAgnssIonosphere, 2},
    {kTagGal + AgnssRti, CmdAgnssIntegrity, 2},     {kTagGal + AgnssAux, CmdAgnssChannels, 2},
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
