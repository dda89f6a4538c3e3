// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/EpochBuilder.h"
#include "codec/epoch/FixOutput.h"
#include "codec/epoch/ReportEpochs.h"
#include "codec/link/HistoryAssembler.h"
#include "codec/link/LinkParser.h"

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace codec {

/// Signature of the log handler of the boundary.
using LogHandler = void (*)(const char* file, int line, const char* function, const char* format,
                            std::va_list arguments);

/// The codec: bytes from a receiver to records, commands to frames. One instance per link; not for use from
/// two threads at once.
///
/// A sink may call back into the codec: Encode at any time; Decode from inside a record is taken up after the
/// running call has ended its own bytes (at most kMaxNested of them wait, the rest are dropped).
class Codec final : private LinkListener, private EpochBuilder::Output {
public:
    static constexpr int kVersion = 100; ///< major * 10000 + minor * 100 + patch
    static constexpr std::size_t kMaxNested = 1 << 20;
    static constexpr std::size_t kMaxQueuedPackages = 256;

    /// `sink` may be null, and must outlive the codec or be replaced.
    explicit Codec(RecordSink* sink = nullptr);

    void SetSink(RecordSink* sink);
    void SetLogHandler(LogHandler handler);
    /// 0: keep awake, every sleep notice asks for a wake-up. Otherwise only one that says work is waiting.
    void SetSleepSwitch(std::uint32_t flag) { m_mayUseSleep = flag != 0; }

    /// Forgets all that came before; sink, log handler and sleep switch too.
    void Reset();

    void Decode(const std::uint8_t* data, std::size_t length);
    /// Hands over what is held back only because more could follow, at the end of a file.
    void EndOfInput();

    /// Frames a command (see EncodeCommand) and queues the record of the sent frame for the next Decode.
    int Encode(std::uint32_t id, const void* payload, std::size_t payloadLength, void* out, std::size_t outSize);

    const LinkCounters& Counters() const { return m_parser.Counters(); }

private:
    void OnSentence(const char* text, std::size_t length, std::size_t total) override;
    void OnBadChecksum(const char* text, std::size_t length) override;
    void OnFrame(const protocol::FrameView& frame) override;
    RecordSink& BeginRecords() override;

    void DecodeNow(const std::uint8_t* data, std::size_t length);
    void ResetNow();
    void FlushText();
    void DeliverSentPackages();
    void TakeSleepNotice(const protocol::FrameView& frame);
    void TakeHistory(const protocol::FrameView& frame);
    void TakeMessage(const protocol::FrameView& frame);
    void Log(int line, const char* function, const char* format, ...) __attribute__((format(printf, 4, 5)));

    RecordSink m_nowhere;
    RecordSink* m_sink;
    LogHandler m_logHandler = nullptr;
    bool m_mayUseSleep = true;
    LinkParser m_parser;
    FixOutput m_fixes;
    EpochBuilder m_epochs;
    ReportEpochs m_reports;
    HistoryAssembler m_history;
    protocol::NmeaText m_text;
    protocol::PackageRecord m_sent[kMaxQueuedPackages];
    std::size_t m_sentCount = 0;
    bool m_decoding = false;
    bool m_resetPending = false;
    std::vector<std::uint8_t> m_nested;
    std::uint64_t m_nextBadLog = 1;
    std::uint64_t m_nextDropLog = kFirstDropLog;

    static constexpr std::uint64_t kFirstDropLog = 1024;
};

} // namespace codec
