// SPDX-License-Identifier: MIT
#pragma once

#include "codec/link/AtReport.h"
#include "protocol/LinkFrame.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// Takes what a LinkParser finds on the line, in the order of the line.
class LinkListener {
public:
    /// A sentence with a right checksum. `text` runs from the '$'; `length` counts up to the checksum's last
    /// digit, `total` the line end too. Valid during the call only, not NUL-terminated.
    virtual void OnSentence(const char* text, std::size_t length, std::size_t total) = 0;
    /// A whole line with the form of a sentence and a wrong checksum.
    virtual void OnBadChecksum(const char* text, std::size_t length) = 0;
    virtual void OnFrame(const protocol::FrameView& frame) = 0;

protected:
    ~LinkListener() = default;
};

struct LinkCounters {
    std::uint64_t bytes = 0;
    std::uint64_t sentences = 0;      ///< right checksum and a line end
    std::uint64_t checksumErrors = 0; ///< wrong checksum and a line end
    std::uint64_t frames = 0;         ///< binary and AT form together
    std::uint64_t droppedBytes = 0;   ///< bytes of neither sentence nor frame; line ends do not count
};

/// Cuts a byte stream into sentences and frames.
///
/// What it finds depends on the bytes alone and never on how they are divided into calls of Feed. It
/// allocates nothing. An item that is not complete yet is held back: a sentence up to kMaxSentence bytes, a
/// frame up to kMaxFrameLength.
class LinkParser {
public:
    static constexpr std::size_t kMaxSentence = 1024;

    explicit LinkParser(LinkListener& listener) : m_listener(listener) {}
    LinkParser(const LinkParser&) = delete;
    LinkParser& operator=(const LinkParser&) = delete;

    void Reset();
    void Feed(const std::uint8_t* data, std::size_t length);
    const LinkCounters& Counters() const { return m_counters; }

private:
    using Byte = std::uint8_t;

    void Run(const Byte* p, const Byte* end);
    const Byte* FillHeldFrame(const Byte* p, const Byte* end);
    const Byte* SkipNoise(const Byte* p, const Byte* end);
    const Byte* BeginSentence(const Byte* p, const Byte* end);
    const Byte* ContinueSentence(const Byte* p, const Byte* end);
    const Byte* ContinueAtPrefix(const Byte* p);
    const Byte* ContinueAtDigits(const Byte* p, const Byte* end);
    const Byte* BeginFrame(const Byte* p, const Byte* end);
    void TakeOrdinary(Byte c);
    void AbandonSentence();
    void CompleteSentence();
    void Judge(const char* text, std::size_t length, std::size_t total);
    void EndAtDigits();

    LinkListener& m_listener;
    LinkCounters m_counters;
    std::size_t m_textLength = 0; ///< sentence so far, 0 outside a sentence
    std::size_t m_lineEnd = 0;    ///< CRs at the end of it
    std::size_t m_heldLength = 0; ///< bytes of a frame that is not complete yet
    AtReport m_at;
    char m_text[kMaxSentence + 4];
    Byte m_held[protocol::kMaxFrameLength];
};

} // namespace codec
