// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

namespace codec {

/// Puts the parts of a history report together again.
class HistoryAssembler {
public:
    enum class Result {
        Incomplete, ///< more parts are to come
        Complete,   ///< Block() holds the whole
        Refused,    ///< out of order, or larger than a history block may be; the parts so far are dropped
    };

    void Reset();
    Result Take(const protocol::FrameView& frame);
    const std::uint8_t* Block() const { return m_block; }
    std::size_t Length() const { return m_length; }

private:
    Result Refuse();

    std::uint16_t m_nextPart = 0;
    std::uint16_t m_parts = 0;
    std::size_t m_length = 0;
    std::uint8_t m_block[protocol::kMaxHistoryBlock];
};

} // namespace codec
