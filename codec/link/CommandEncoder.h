// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/CommandTable.h"
#include "protocol/Records.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// Frames a command, or passes a ready one through (id 512). Returns the length in `out`, or -1 when nothing
/// may be sent: unknown id, null pointers, a payload that fits no frame, an `out` that is too small, an
/// empty pass-through.
int EncodeCommand(std::uint32_t id, const void* payload, std::size_t payloadLength, void* out,
                  std::size_t outSize);

/// What the bytes towards the receiver hold, for the record of sent frames.
struct SentCommand {
    bool found = false;
    protocol::PackageRecord package{};
    bool start = false; ///< a start, hot start or cold start
};

/// Reads the command at the front of `data` and moves `data` and `length` behind it: a frame, a frame in AT
/// form, or the AT start or stop text. `found` is false when what is there is none of these.
SentCommand ReadSentCommand(const std::uint8_t*& data, std::size_t& length);

} // namespace codec
