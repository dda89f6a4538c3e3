// SPDX-License-Identifier: MIT
#pragma once

// Commands that the host has ready as whole frames, and the AT texts that mean the same; free of Qt.

#include "protocol/CommandTable.h"
#include "protocol/LinkFrame.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace protocol {

enum class ReadyFrame : std::uint8_t {
    Start,       ///< start positioning
    Stop,        ///< stop positioning
    Probe,       ///< changes nothing: only its answer counts
    ReadHistory, ///< the history block out
    ColdStart,
    HotStart,
    NmeaMask, ///< all sentences on
};

// The beginning of the AT text that starts positioning; four numbers follow.
constexpr char kAtStartPrefix[] = "AT+GNSSSTART";
constexpr char kAtStart[] = "AT+GNSSSTART=1,1,1,0";
constexpr char kAtStop[] = "AT+GNSSSTOP";

constexpr std::size_t kLongestReadyFrame = 25;

struct ReadyFrameRow {
    ReadyFrame frame;
    const char* atText; ///< without line end; null when receivers of the AT product take the frame too
    std::uint8_t bytes[kLongestReadyFrame];

    /// Bytes of the frame, as its header tells.
    constexpr std::size_t Size() const { return ReadU16(bytes + 2); }
};

constexpr ReadyFrameRow kReadyFrames[] = {
    {ReadyFrame::Start, kAtStart, {0x7E, 0x04, 0x19, 0x00, 0x01, 0x00, 0x03, 0x00, 0x00, 0x00, 0x0C, 0x00, //
                                   0x01, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x7E}},
    {ReadyFrame::Stop, kAtStop, {0x7E, 0x04, 0x0D, 0x00, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x7E}},
    {ReadyFrame::Probe,
     nullptr,
     {0x7E, 0x04, 0x0E, 0x00, 0x05, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x7E}},
    {ReadyFrame::ReadHistory,
     nullptr,
     {0x7E, 0x04, 0x0D, 0x00, 0x02, 0x01, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x7E}},
    {ReadyFrame::ColdStart,
     nullptr,
     {0x7E, 0x04, 0x12, 0x00, 0x03, 0x00, 0x03, 0x00, 0x00, 0x00, 0x05, 0x00, //
      0x01, 0x00, 0x01, 0x00, 0x01, 0x7E}},
    {ReadyFrame::HotStart,
     nullptr,
     {0x7E, 0x04, 0x12, 0x00, 0x03, 0x00, 0x02, 0x00, 0x00, 0x00, 0x05, 0x00, //
      0x01, 0x00, 0x01, 0x00, 0x00, 0x7E}},
    {ReadyFrame::NmeaMask,
     nullptr,
     {0x7E, 0x04, 0x13, 0x00, 0x03, 0x00, 0x04, 0x01, 0x00, 0x00, 0x06, 0x00, //
      0x03, 0x00, 0x02, 0x00, 0xFF, 0x00, 0x7E}},
};

constexpr const ReadyFrameRow& RowOf(ReadyFrame frame)
{
    return kReadyFrames[static_cast<std::size_t>(frame)];
}

/// True for a whole frame of a command that a receiver accepts, with nothing behind it.
constexpr bool IsWellFormed(const ReadyFrameRow& row)
{
    FrameView frame;
    if (row.Size() > kLongestReadyFrame || !ReadFrame(row.bytes, row.Size(), frame) ||
        CheckCommand(frame.id, frame.word1, frame.payloadLength) != CommandCheck::Accepted ||
        FindCommand(frame.id)->word2 != frame.word2) {
        return false;
    }
    for (std::size_t i = row.Size(); i < kLongestReadyFrame; ++i) {
        if (row.bytes[i] != 0) {
            return false;
        }
    }
    return true;
}

constexpr bool ReadyFramesAreWellFormed()
{
    std::size_t place = 0;
    for (const ReadyFrameRow& row : kReadyFrames) {
        if (static_cast<std::size_t>(row.frame) != place || !IsWellFormed(row)) {
            return false;
        }
        ++place;
    }
    return place == static_cast<std::size_t>(ReadyFrame::NmeaMask) + 1;
}
static_assert(ReadyFramesAreWellFormed());
static_assert(std::string_view(kAtStart).substr(0, std::string_view(kAtStartPrefix).size()) == kAtStartPrefix);

} // namespace protocol
