#pragma once

// The commands that cross the link towards the receiver and the payload lengths that each accepts: shared by
// the codec and the virtual receiver, free of Qt. The codec frames any payload of a known id that fits a
// frame; it is the receiver that judges length and range, so that a wrong one is answered and not swallowed.

#include "codec/Protocol.h"

namespace gnss {

/// One accepted form of a command. An id with several accepted lengths or first words has several rows.
struct CommandForm {
    std::uint16_t id;
    std::uint16_t word1;      ///< first parameter word that selects this form; 0 in encoded frames
    std::uint16_t word2;      ///< second parameter word; the receiver does not look at it
    std::uint16_t minPayload; ///< bytes, inclusive
    std::uint16_t maxPayload; ///< bytes, inclusive
};

/// Longest payload of an assistance item whose content the link does not look into.
constexpr std::uint16_t kMaxOpaquePayload = static_cast<std::uint16_t>(kMaxFramePayload);

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
    {CmdPgnssGpsEphemeris, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssEphemeris, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssUtc, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssGpsIntegrity, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssIntegrity, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssIonosphere, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssGloChannels, 0, 0, 1, kMaxOpaquePayload},
    {CmdPgnssFineIonosphere, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssGpsTime, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssPosition, 0, 0, 20, 20},
    {CmdAgnssGpsEphemeris, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssGpsIonosphere, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssUtc, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssGpsIntegrity, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssTime, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssIonosphere, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssEphemeris, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssIntegrity, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssUtcParameters, 0, 0, 1, kMaxOpaquePayload},
    {CmdAgnssChannels, 0, 0, 1, kMaxOpaquePayload},
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

} // namespace gnss
