// SPDX-License-Identifier: MIT
#include "codec/link/LinkParser.h"

#include "codec/link/Hex.h"
#include "codec/link/LineScan.h"

#include <algorithm>
#include <cstring>

namespace codec {

void LinkParser::Reset()
{
    m_counters = {};
    m_textLength = 0;
    m_lineEnd = 0;
    m_heldLength = 0;
    m_at.Reset();
}

void LinkParser::Feed(const std::uint8_t* data, std::size_t length)
{
    m_counters.bytes += length;
    const Byte* end = data + length;
    if (m_heldLength > 0) {
        data = FillHeldFrame(data, end);
    }
    Run(data, end);
}

void LinkParser::Run(const Byte* p, const Byte* end)
{
    while (p < end) {
        if (m_at.InDigits()) {
            p = ContinueAtDigits(p, end);
        } else if (m_at.InPrefix()) {
            p = ContinueAtPrefix(p);
        } else if (m_textLength > 0) {
            p = ContinueSentence(p, end);
        } else {
            p = SkipNoise(p, end);
        }
    }
}

/// Adds to a held frame what it still needs. A false header is given up and its bytes are read again.
const LinkParser::Byte* LinkParser::FillHeldFrame(const Byte* p, const Byte* end)
{
    while (m_heldLength > 0 && p < end) {
        const std::size_t need = protocol::ClaimedFrameLength(m_held, m_heldLength);
        const std::size_t take = std::min(need - m_heldLength, static_cast<std::size_t>(end - p));
        std::memcpy(m_held + m_heldLength, p, take);
        m_heldLength += take;
        p += take;
        if (m_heldLength < need && protocol::ClaimedFrameLength(m_held, m_heldLength) != 0) {
            continue;
        }
        // Either whole, or found out to be none: both are seen again by the usual road, which may hold the
        // rest back once more.
        const std::size_t length = m_heldLength;
        m_heldLength = 0;
        const Byte* next = BeginFrame(m_held, m_held + length);
        Run(next, m_held + length);
    }
    return p;
}

const LinkParser::Byte* LinkParser::SkipNoise(const Byte* p, const Byte* end)
{
    std::size_t noise = 0;
    std::uint8_t byteClass = Plain;
    for (; p < end; ++p) {
        byteClass = kByteClasses.of[*p];
        if (byteClass >= Dollar) {
            break;
        }
        noise += byteClass < Cr ? 1 : 0;
    }
    m_counters.droppedBytes += noise;
    if (p == end) {
        return p;
    }
    if (byteClass == Dollar) {
        return BeginSentence(p, end);
    }
    if (byteClass == Flag) {
        return BeginFrame(p, end);
    }
    m_at.Begin();
    return p + 1;
}

/// The fast road: a whole sentence that lies in the input with nothing odd in it is judged in place. All
/// others go byte by byte through m_text, with the same result.
const LinkParser::Byte* LinkParser::BeginSentence(const Byte* p, const Byte* end)
{
    const std::size_t reach = std::min(static_cast<std::size_t>(end - p), kMaxSentence + 3);
    const Byte* lineFeed = static_cast<const Byte*>(std::memchr(p, '\n', reach));
    if (lineFeed != nullptr) {
        const Byte* last = lineFeed;
        while (last > p + 4 && lineFeed - last < 2 && last[-1] == '\r') {
            --last;
        }
        const std::size_t length = static_cast<std::size_t>(last - p);
        if (length > 4 && length <= kMaxSentence && last[-3] == '*') {
            const int high = HexDigit(last[-2]);
            const int low = HexDigit(last[-1]);
            const BodyScan scan = ScanBody(p + 1, length - 4);
            const char* text = reinterpret_cast<const char*>(p);
            if (high >= 0 && low >= 0 && !scan.special && !scan.star &&
                !(scan.plus && memmem(p, length, protocol::kAtHexReport, AtReport::kPrefixLength) != nullptr)) {
                if (scan.checksum == high * 16 + low) {
                    ++m_counters.sentences;
                    m_listener.OnSentence(text, length, static_cast<std::size_t>(lineFeed + 1 - p));
                } else {
                    ++m_counters.checksumErrors;
                    m_listener.OnBadChecksum(text, length);
                }
                return lineFeed + 1;
            }
        }
    }
    m_text[0] = '$';
    m_textLength = 1;
    m_lineEnd = 0;
    return p + 1;
}

const LinkParser::Byte* LinkParser::ContinueSentence(const Byte* p, const Byte* end)
{
    for (; p < end; ++p) {
        const Byte c = *p;
        const std::uint8_t byteClass = kByteClasses.of[c];
        if (m_lineEnd > 0) {
            if (byteClass == Cr && m_lineEnd < 2) {
                m_text[m_textLength++] = '\r';
                ++m_lineEnd;
                continue;
            }
            if (byteClass == Lf) {
                m_text[m_textLength++] = '\n';
                ++m_lineEnd;
                ++p;
            }
            CompleteSentence();
            return p;
        }
        switch (byteClass) {
        case Plain:
            TakeOrdinary(c);
            if (m_textLength == 0) {
                return p + 1;
            }
            break;
        case Cr:
            m_text[m_textLength++] = '\r';
            m_lineEnd = 1;
            break;
        case Lf:
            m_text[m_textLength++] = '\n';
            m_lineEnd = 1;
            CompleteSentence();
            return p + 1;
        case Dollar:
            AbandonSentence();
            return BeginSentence(p, end);
        case Plus:
            m_at.Begin();
            return p + 1;
        case Flag:
            return BeginFrame(p, end);
        default:
            AbandonSentence();
            ++m_counters.droppedBytes;
            return p + 1;
        }
    }
    return p;
}

/// A byte that is text in a sentence and noise outside one.
void LinkParser::TakeOrdinary(Byte c)
{
    if (m_textLength == 0) {
        ++m_counters.droppedBytes;
    } else if (m_textLength == kMaxSentence) {
        AbandonSentence();
        ++m_counters.droppedBytes;
    } else {
        m_text[m_textLength++] = static_cast<char>(c);
    }
}

void LinkParser::AbandonSentence()
{
    m_counters.droppedBytes += m_textLength;
    m_textLength = 0;
    m_lineEnd = 0;
}

void LinkParser::CompleteSentence()
{
    const std::size_t total = m_textLength;
    const std::size_t length = total - m_lineEnd;
    m_textLength = 0;
    m_lineEnd = 0;
    Judge(m_text, length, total);
}

/// The first '*' ends the body. A right checksum counts only at the end of the line: what follows another
/// belongs to a sentence whose beginning was lost.
void LinkParser::Judge(const char* text, std::size_t length, std::size_t total)
{
    const Byte* p = reinterpret_cast<const Byte*>(text);
    const Byte* star = static_cast<const Byte*>(std::memchr(p, '*', length));
    const std::size_t body = star != nullptr ? static_cast<std::size_t>(star - p) : length;
    // NOLINTNEXTLINE(bugprone-branch-clone): the tests stand in the order of what is judged first
    if (body < 2 || length - body < 3 || HexDigit(star[1]) < 0 || HexDigit(star[2]) < 0) {
        m_counters.droppedBytes += length;
    } else if (ScanBody(p + 1, body - 1).checksum != HexDigit(star[1]) * 16 + HexDigit(star[2])) {
        ++m_counters.checksumErrors;
        m_listener.OnBadChecksum(text, length);
    } else if (length - body > 3) {
        m_counters.droppedBytes += length;
    } else {
        ++m_counters.sentences;
        m_listener.OnSentence(text, length, total);
    }
}

const LinkParser::Byte* LinkParser::ContinueAtPrefix(const Byte* p)
{
    if (m_at.TakePrefix(*p)) {
        if (m_at.InDigits()) {
            AbandonSentence();
        }
        return p + 1;
    }
    // Not the prefix after all. Only its first byte is a '+', so what was matched is plain text.
    const std::size_t matched = m_at.GiveUpPrefix();
    for (std::size_t i = 0; i < matched; ++i) {
        TakeOrdinary(static_cast<Byte>(protocol::kAtHexReport[i]));
    }
    return p;
}

const LinkParser::Byte* LinkParser::ContinueAtDigits(const Byte* p, const Byte* end)
{
    for (; p < end; ++p) {
        const int digit = HexDigit(*p);
        if (digit < 0) {
            EndAtDigits();
            return p;
        }
        if (!m_at.TakeDigit(digit)) {
            m_counters.droppedBytes += m_at.Length();
            m_at.EndDigits();
            return p;
        }
    }
    return p;
}

/// The digits have ended; the byte that ended them is read by the next step.
void LinkParser::EndAtDigits()
{
    m_at.EndDigits();
    protocol::FrameView frame;
    if (m_at.Read(frame)) {
        ++m_counters.frames;
        m_listener.OnFrame(frame);
    } else {
        m_counters.droppedBytes += m_at.Length();
    }
}

/// `p` is at a frame flag, inside a sentence or outside. A frame is handed over and leaves the sentence as it
/// was; one that is not complete is held back; a flag that begins no frame is an ordinary byte.
const LinkParser::Byte* LinkParser::BeginFrame(const Byte* p, const Byte* end)
{
    const std::size_t available = static_cast<std::size_t>(end - p);
    const std::size_t claimed = protocol::ClaimedFrameLength(p, available);
    if (claimed > available) {
        m_heldLength = available;
        std::memmove(m_held, p, available);
        return end;
    }
    protocol::FrameView frame;
    if (claimed != 0 && protocol::ReadFrame(p, claimed, frame)) {
        ++m_counters.frames;
        m_listener.OnFrame(frame);
        return p + claimed;
    }
    TakeOrdinary(*p);
    return p + 1;
}

} // namespace codec
