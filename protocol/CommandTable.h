// SPDX-License-Identifier: MIT
#pragma once

// The commands that cross the link towards the receiver and the payload lengths that each accepts: shared by
// the codec and the virtual receiver, free of Qt. The codec frames any payload of a known id that fits a
// frame; it is the receiver that judges length and range, so that a wrong one is answered and not swallowed.

#include "protocol/AssistPayloads.h"
#include "protocol/AssistRecords.h"
#include "protocol/CommandPayloads.h"
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
constexpr std::uint16_t kMinEphemeris = AssistEphemerisSize(1);
constexpr std::uint16_t kMaxEphemeris = AssistEphemerisSize(kMaxAssistSatellites);
constexpr std::uint16_t kMinChannels = AssistChannelsSize(1);
constexpr std::uint16_t kMaxChannels = AssistChannelsSize(kMaxAssistSatellites);
constexpr std::uint16_t kMinGrid = AssistGridSize(kMinGridSide, kMinGridSide);
constexpr std::uint16_t kMaxGrid = AssistGridSize(kMaxGridSide, kMaxGridSide);
static_assert(kMaxEphemeris <= kMaxFramePayload && kMaxGrid <= kMaxFramePayload);

/// One accepted form with the one length of a list.
template <typename List>
constexpr CommandForm FormOf(std::uint16_t id, const List& fields, std::uint16_t word1 = 0)
{
    const auto length = static_cast<std::uint16_t>(LengthOf(fields));
    return {id, word1, 0, length, length};
}

constexpr CommandForm kCommandForms[] = {
    FormOf(CmdStart, kStartFields),
    FormOf(CmdStart, kStartFields, kStartWord),
    {CmdStop, 0, 0, 0, 0},
    {CmdStop, 0, 0, kStopPayload, kStopPayload},
    FormOf(CmdConstellations, kConstellationSettingFields),
    FormOf(CmdConstellations, kStartItemFields, kHotStartWord),
    FormOf(CmdConstellations, kStartItemFields, kColdStartWord),
    FormOf(CmdConstellations, kNmeaMaskFields, kNmeaMaskWord),
    {CmdStartMode, 0, 0, kOneByte, kOneByte},
    {CmdNmea, 0, 0, kOneByte, kOneByte}, // the probe after silence
    FormOf(CmdNmea, kNmeaSettingFields),
    FormOf(CmdAcqLowPower, kLowPowerFields),
    FormOf(CmdTrkLowPower, kLowPowerFields),
    FormOf(CmdAntiJam, kAntiJamFields),
    {CmdUpdateRate, 0, 0, kOneByte, kOneByte},
    FormOf(CmdPps, kPpsFields),
    FormOf(CmdReports, kReportFields),
    {CmdFixPriority, 0, 0, kOneByte, kOneByte},
    {CmdInjectHistory, 0, 0, 1, static_cast<std::uint16_t>(kMaxHistoryBlock)},
    {CmdReadHistory, 0, 1, 0, 0},
    FormOf(CmdPgnssTime, kReferenceTimeFields),
    FormOf(CmdPgnssPosition, kScenePositionFields),
    {CmdPgnssGpsEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdPgnssEphemeris, 0, 0, kMinEphemeris, kMaxEphemeris},
    {CmdPgnssUtc, 0, 0, kAssistUtcSize, kAssistUtcSize},
    {CmdPgnssGpsIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdPgnssIntegrity, 0, 0, kAssistIntegritySize, kAssistIntegritySize},
    {CmdPgnssIonosphere, 0, 0, kAssistIonosphereSize, kAssistIonosphereSize},
    {CmdPgnssGloChannels, 0, 0, kMinChannels, kMaxChannels},
    {CmdPgnssFineIonosphere, 0, 0, kMinGrid, kMaxGrid},
    {CmdAgnssGpsTime, 0, 0, kAssistTimeSize, kAssistTimeSize},
    FormOf(CmdAgnssPosition, kReferencePositionFields),
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
    FormOf(CmdUtcTime, kUtcTimeFields),
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
