// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// A frame in the AT form as it comes byte by byte: the prefix kAtHexReport, then hexadecimal digits.
class AtReport {
public:
    static constexpr std::size_t kPrefixLength = sizeof protocol::kAtHexReport - 1;

    void Reset();

    /// The prefix' first byte has come.
    void Begin() { m_matched = 1; }
    bool InPrefix() const { return m_matched > 0; }
    bool InDigits() const { return m_digits; }

    /// Takes the next byte of the prefix, behind whose last one the digits begin; false for any other byte.
    bool TakePrefix(std::uint8_t c);
    /// It is not the prefix after all. Returns how many bytes of it have come.
    std::size_t GiveUpPrefix();

    /// Takes the value of a digit; false when a frame has no room for it.
    bool TakeDigit(int digit);
    void EndDigits() { m_digits = false; }
    /// The frame that the digits hold; false when they hold none. It lies in this object.
    bool Read(protocol::FrameView& frame) const;
    /// Bytes of the line, prefix and digits.
    std::size_t Length() const { return kPrefixLength + m_nibbles; }

private:
    std::size_t m_matched = 0; ///< bytes of kAtHexReport seen
    bool m_digits = false;
    std::size_t m_nibbles = 0;
    std::uint8_t m_frame[protocol::kMaxFrameLength];
};

inline void AtReport::Reset()
{
    m_matched = 0;
    m_digits = false;
    m_nibbles = 0;
}

inline bool AtReport::TakePrefix(std::uint8_t c)
{
    if (c != static_cast<std::uint8_t>(protocol::kAtHexReport[m_matched])) {
        return false;
    }
    if (++m_matched == kPrefixLength) {
        m_matched = 0;
        m_digits = true;
        m_nibbles = 0;
    }
    return true;
}

inline std::size_t AtReport::GiveUpPrefix()
{
    const std::size_t matched = m_matched;
    m_matched = 0;
    return matched;
}

inline bool AtReport::TakeDigit(int digit)
{
    if (m_nibbles == 2 * protocol::kMaxFrameLength) {
        return false;
    }
    std::uint8_t& byte = m_frame[m_nibbles / 2];
    byte = m_nibbles % 2 == 0 ? static_cast<std::uint8_t>(digit << 4) : static_cast<std::uint8_t>(byte | digit);
    ++m_nibbles;
    return true;
}

inline bool AtReport::Read(protocol::FrameView& frame) const
{
    return m_nibbles % 2 == 0 && protocol::ReadFrame(m_frame, m_nibbles / 2, frame);
}

} // namespace codec
