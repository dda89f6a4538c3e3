// SPDX-License-Identifier: MIT
#include "codec/link/HistoryAssembler.h"

#include <cstring>

namespace codec {

void HistoryAssembler::Reset()
{
    m_nextPart = 0;
    m_parts = 0;
    m_length = 0;
}

HistoryAssembler::Result HistoryAssembler::Refuse()
{
    Reset();
    return Result::Refused;
}

HistoryAssembler::Result HistoryAssembler::Take(const protocol::FrameView& frame)
{
    const std::uint16_t part = frame.word1;
    const std::uint16_t parts = frame.word2;
    if (part == 0) {
        // A first part always begins anew: the receiver has been asked again.
        Reset();
        m_parts = parts;
    }
    if (parts == 0 || parts != m_parts || part != m_nextPart || part >= parts) {
        return Refuse();
    }
    if (frame.payloadLength > protocol::kMaxHistoryBlock - m_length) {
        return Refuse();
    }
    if (frame.payloadLength > 0) {
        std::memcpy(m_block + m_length, frame.payload, frame.payloadLength);
        m_length += frame.payloadLength;
    }
    if (++m_nextPart < m_parts) {
        return Result::Incomplete;
    }
    m_nextPart = 0;
    m_parts = 0;
    return Result::Complete;
}

} // namespace codec
