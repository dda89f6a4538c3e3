// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"
#include "receiver/Utc.h"

#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// Cuts what the host sends into frames, AT lines and single 0x00 bytes, and notices where a firmware load begins;
/// everything else is noise.
class HostStream {
public:
    struct Item {
        enum class Kind { Frame, AtLine, Zero, Loader } kind;
        std::string bytes; ///< the whole frame, the line without its end, or all from the first loader message on
    };

    /// Takes bytes that came at `now`; returns what they complete, in order.
    std::vector<Item> Feed(const std::uint8_t* bytes, std::size_t length, Millis now);

    void Clear() { m_buffer.clear(); }

private:
    bool TakeOne(std::vector<Item>& items);

    std::string m_buffer;
    Millis m_lastByte = 0;
};

} // namespace receiver
