// SPDX-License-Identifier: MIT
#pragma once

// The commands that cross the link towards the receiver and the payload lengths that each accepts: shared by
// the codec and the virtual receiver, free of Qt. The codec frames any payload of a known id that fits a
// frame; it is the receiver that judges length and range, so that a wrong one is answered and not swallowed.

#include "protocol/AssistPayloads.h"
#include "protocol/LinkFrame.h"

namespace protocol {

/// One accepted form of a command. An id with several accepted lengths or first words has several rows.
struct CommandForm {
    std::uint16_t id;
    std::uint16_t word1;      ///< first parameter word that selects this form; 0 in encoded frames
    std::uint16_t word2;      ///< second parameter word; the receiver does not look at it
    std::uint16_t minPayload; ///< bytes, inclusive
    std::uint16_t maxPayload; ///< bytes, inclusive
};

// Lengths of the assistance items, of protocol/AssistPayloads.h.
constexpr std::uint16_t kMinEphemeris = static_cast<std::uint16_t>(AssistEphemerisSize(1));
constexpr std::uint16_t kMaxEphemeris = static_cast<std::uint16_t>(AssistEphemerisSize(kMaxAssistSatellites));
constexpr std::uint16_t kMinChannels = static_cast<std::uint16_t>(AssistChannelsSize(1));
constexpr std::uint16_t kMaxChannels = static_cast<std::uint16_t>(AssistChannelsSize(kMaxAssistSatellites));
constexpr std::uint16_t kMinGrid = static_cast<std::uint16_t>(AssistGridSize(kMinGridSide, kMinGridSide));
constexpr std::uint16_t kMaxGrid = static_cast<std::uint16_t>(AssistGridSize(kMaxGridSide, kMaxGridSide));
static_assert(kMaxEphemeris <= kMaxFramePayload && kMaxGrid <= kMaxFramePayload);

constexpr CommandForm kCommandForms[] = {
    {CmdStart, 0, 0, 12, 12},
    {CmdStart, kStartWord, 0, 12, 12},
    {CmdStop, 0, 0, 0, 0},
    {CmdStop, 0, 0, 4, 4},
    {CmdConstellations, 0, 0, 5, 5},
    {CmdConstellations, kHotStartWord, 0, 5, 5},
    {CmdConstellations, kColdStartWord, 0, 5, 5},
    {CmdConstellations, kNmeaMaskWord, 0, 6, 6},
    {CmdStartMode, 0, 0, 1, 1},
    {CmdNmea, 0, 0, 1, 1}, // the probe after silence
    {CmdNmea, 0, 0, 8, 8},
    {CmdAcqLowPower, 0, 0, 2, 2},
    {CmdTrkLowPower, 0, 0, 2, 2},
    {CmdAntiJam, 0, 0, 3, 3},
    {CmdUpdateRate, 0, 0, 1, 1},
    {CmdPps, 0, 0, 2, 2},
    {CmdReports, 0, 0, 2, 2},
    {CmdFixPriority, 0, 0, 1, 1},
    {CmdInjectHistory, 0, 0, 1, static_cast<std::uint16_t>(kMaxHistoryBlock)},
    {CmdReadHistory, 0, 1, 0, 0},
    {CmdPgnssTime, 0, 0, 14, 14},
    {CmdPgnssPosition, 0, 0, 21, 21},
    {CmdPgnssGpsEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdPgnssEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdPgnssUtc, 0, 0, kAssistUtcSize, kAssistUtcSize},
    {CmdPgnssGpsIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdPgnssIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdPgnssIonosphere, 0, 0, kAssistIonosphereSize, kAssistIonosphereSize},
    {CmdPgnssGloChannels, 0, 0, kMinChannels, kMaxChannels},
    {CmdPgnssFineIonosphere, 0, 0, kMinGrid, kMaxGrid},
    {CmdAgnssGpsTime, 0, 0, kAssistTimeSize, kAssistTimeSize},
    {CmdAgnssPosition, 0, 0, 20, 20},
    {CmdAgnssGpsEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdAgnssGpsIonosphere, 0, 0, kAssistIonosphereSize, kAssistIonosphereSize},
    {CmdAgnssUtc, 0, 0, kAssistUtcSize, kAssistUtcSize},
    {CmdAgnssGpsIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdAgnssTime, 0, 0, kAssistTimeSize, kAssistTimeSize},
    {CmdAgnssIonosphere, 0, 0, kAssistIonosphereSize, kAssistIonosphereSize},
    {CmdAgnssEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdAgnssIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdAgnssUtcParameters, 0, 0, kAssistUtcSize, kAssistUtcSize},
    {CmdAgnssChannels, 0, 0, kMinChannels, kMaxChannels},
    {CmdUtcTime, 0, 0, 12, 12},
};

/// The first row of an id, or null for an id that is no command. The pass-through (512) never crosses the
/// link, so it has no row.
constexpr const CommandForm* FindCommand(std::uint32_t id)
{
    for (const CommandForm& form : kCommandForms) {
        if (form.id == id) {
            return &form;
        }
    }
    return nullptr;
}

enum class CommandCheck {
    Accepted,
    BadLength, ///< the id and first word are known, the payload length is none of theirs
    Unknown,   ///< no such id, or no such first word of this id
};

/// Judges id, first parameter word and payload length of a received command.
constexpr CommandCheck CheckCommand(std::uint16_t id, std::uint16_t word1, std::size_t payloadLength)
{
    CommandCheck result = CommandCheck::Unknown;
    for (const CommandForm& form : kCommandForms) {
        if (form.id != id || form.word1 != word1) {
            continue;
        }
        if (payloadLength >= form.minPayload && payloadLength <= form.maxPayload) {
            return CommandCheck::Accepted;
        }
        result = CommandCheck::BadLength;
    }
    return result;
}

} // namespace protocol
