// SPDX-License-Identifier: MIT
#include "codec/Codec.h"

#include "codec/link/CommandEncoder.h"

#include <algorithm>
#include <cstring>

namespace codec {

Codec::Codec(RecordSink* sink)
    : m_sink(sink != nullptr ? sink : &m_nowhere), m_parser(*this), m_epochs(*this, m_fixes), m_reports(m_fixes)
{
    ResetNow();
}

void Codec::SetSink(RecordSink* sink)
{
    m_sink = sink != nullptr ? sink : &m_nowhere;
}

void Codec::SetLogHandler(LogHandler handler)
{
    m_logHandler = handler;
    Log(__LINE__, __func__, "GnssUtils %d.%d.%d", kVersion / 10000, kVersion / 100 % 100, kVersion % 100);
}

void Codec::Reset()
{
    m_sink = &m_nowhere;
    m_logHandler = nullptr;
    m_mayUseSleep = true;
    if (m_decoding) {
        // The bytes at hand belong to the state that is to be forgotten: finish with them first.
        m_resetPending = true;
        m_nested.clear();
        return;
    }
    ResetNow();
}

void Codec::ResetNow()
{
    m_parser.Reset();
    m_fixes.Arm();
    m_epochs.Reset();
    m_reports.Reset();
    m_history.Reset();
    m_text.count = 0;
    m_sentCount = 0;
    m_nested.clear();
    m_nextBadLog = 1;
    m_nextDropLog = kFirstDropLog;
    m_resetPending = false;
}

void Codec::Decode(const std::uint8_t* data, std::size_t length)
{
    if (data == nullptr || length == 0) {
        return;
    }
    if (m_decoding) {
        const std::size_t room = kMaxNested - m_nested.size();
        m_nested.insert(m_nested.end(), data, data + std::min(room, length));
        return;
    }
    m_decoding = true;
    DecodeNow(data, length);
    while (!m_nested.empty() && !m_resetPending) {
        const std::vector<std::uint8_t> nested = std::move(m_nested);
        m_nested.clear();
        DecodeNow(nested.data(), nested.size());
    }
    m_decoding = false;
    if (m_resetPending) {
        ResetNow();
    }
}

void Codec::DecodeNow(const std::uint8_t* data, std::size_t length)
{
    DeliverSentPackages();
    m_parser.Feed(data, length);
    FlushText();
    const std::uint64_t dropped = m_parser.Counters().droppedBytes;
    if (dropped >= m_nextDropLog) {
        Log(__LINE__, __func__, "%llu bytes so far were neither sentence nor frame",
            static_cast<unsigned long long>(dropped));
        m_nextDropLog = std::max(m_nextDropLog, dropped) * 2;
    }
}

void Codec::EndOfInput()
{
    if (m_decoding) {
        return;
    }
    m_decoding = true;
    m_epochs.Finish();
    FlushText();
    m_decoding = false;
    if (m_resetPending) {
        ResetNow();
    }
}

int Codec::Encode(std::uint32_t id, const void* payload, std::size_t payloadLength, void* out, std::size_t outSize)
{
    const int result = EncodeCommand(id, payload, payloadLength, out, outSize);
    if (result <= 0) {
        return result;
    }
    const std::uint8_t* data = static_cast<const std::uint8_t*>(out);
    std::size_t length = static_cast<std::size_t>(result);
    while (length > 0) {
        const SentCommand command = ReadSentCommand(data, length);
        if (!command.found) {
            break;
        }
        if (m_sentCount < kMaxQueuedPackages) {
            m_sent[m_sentCount++] = command.package;
        }
        if (command.start) {
            m_epochs.Restart();
            m_fixes.Arm();
        }
    }
    return result;
}

void Codec::DeliverSentPackages()
{
    // A record's receiver may send again: what it adds waits for the next call.
    const std::size_t count = m_sentCount;
    protocol::PackageRecord sent[kMaxQueuedPackages];
    std::copy(m_sent, m_sent + count, sent);
    m_sentCount = 0;
    for (std::size_t i = 0; i < count; ++i) {
        m_sink->OnPackage(sent[i]);
    }
}

void Codec::OnSentence(const char* text, std::size_t length, std::size_t total)
{
    char* slot = m_text.slot[m_text.count];
    const std::size_t size = std::min(total, protocol::kNmeaSlotSize - 1);
    std::memcpy(slot, text, size);
    slot[size] = '\0';
    ++m_text.count;
    m_sink->OnSentence(text, length);
    if (m_text.count == protocol::kNmeaSlots) {
        FlushText();
    }
    m_epochs.Take(text, length);
}

void Codec::OnBadChecksum(const char* text, std::size_t length)
{
    const std::uint64_t errors = m_parser.Counters().checksumErrors;
    if (errors >= m_nextBadLog) {
        m_nextBadLog = errors * 2;
        Log(__LINE__, __func__, "%llu sentences so far had a wrong checksum, the last: %.*s",
            static_cast<unsigned long long>(errors), static_cast<int>(std::min<std::size_t>(length, 127)), text);
    }
}

RecordSink& Codec::BeginRecords()
{
    FlushText();
    return *m_sink;
}

void Codec::FlushText()
{
    if (m_text.count == 0) {
        return;
    }
    m_sink->OnNmeaText(m_text);
    m_text.count = 0;
}

void Codec::OnFrame(const protocol::FrameView& frame)
{
    RecordSink& sink = BeginRecords();
    protocol::PackageRecord package{};
    package.type = protocol::kFrameClass;
    package.subType = frame.id;
    package.length = static_cast<std::uint16_t>(frame.payloadLength);
    sink.OnPackage(package);

    if (frame.id == protocol::RptAck) {
        if (frame.payloadLength >= protocol::LengthOf(protocol::kAckFields)) {
            m_sink->OnAck(protocol::Unpacked<protocol::CbRecvAckType>(frame.payload, frame.payloadLength,
                                                                      protocol::kAckFields));
        }
    } else if (frame.id == protocol::RptSleep) {
        TakeSleepNotice(frame);
    } else if (frame.id == protocol::RptHistory) {
        TakeHistory(frame);
    } else if (frame.id >= protocol::RptMessage && frame.id <= protocol::kRptMessageLast) {
        TakeMessage(frame);
    }
}

void Codec::TakeSleepNotice(const protocol::FrameView& frame)
{
    const bool workWaiting = frame.payloadLength > 0 && frame.payload[0] == protocol::SleepWakeMe;
    if (frame.payloadLength > 0 && (workWaiting || !m_mayUseSleep)) {
        m_sink->OnWakeUpNeeded();
    }
}

void Codec::TakeHistory(const protocol::FrameView& frame)
{
    switch (m_history.Take(frame)) {
    case HistoryAssembler::Result::Complete:
        m_sink->OnHistory(m_history.Block(), m_history.Length());
        break;
    case HistoryAssembler::Result::Refused:
        Log(__LINE__, __func__, "history report dropped at part %d of %d", frame.word1, frame.word2);
        break;
    case HistoryAssembler::Result::Incomplete:
        break;
    }
}

void Codec::TakeMessage(const protocol::FrameView& frame)
{
    const std::uint32_t msgType = static_cast<std::uint32_t>(frame.id - protocol::RptMessage);
    const protocol::MessageLayout* layout = protocol::FindMessageLayout(msgType);
    if (layout == nullptr) {
        return;
    }
    if (frame.payloadLength < layout->minPayload || frame.payloadLength > layout->fullPayload) {
        Log(__LINE__, __func__, "message %s dropped: %d bytes", layout->name,
            static_cast<int>(frame.payloadLength));
        return;
    }
    // Tail padding that the receiver left out is filled up.
    std::uint8_t record[protocol::kMessageHeaderSize + sizeof(protocol::MsgMeas)] = {};
    static_assert(sizeof(protocol::MsgMeas) >= sizeof(protocol::MsgGsv), "the largest message");
    std::memcpy(record, &msgType, sizeof msgType);
    std::memcpy(record + protocol::kMessageHeaderSize, frame.payload, frame.payloadLength);
    m_sink->OnMessage(msgType, record, layout->fullPayload);
    if (msgType == protocol::MsgTypeLoc) {
        protocol::MsgLoc loc;
        std::memcpy(&loc, record + protocol::kMessageHeaderSize, sizeof loc);
        m_reports.Take(*m_sink, loc, m_epochs.TakeToldPosition());
    } else if (msgType == protocol::MsgTypeMeas) {
        protocol::MsgMeas meas;
        std::memcpy(&meas, record + protocol::kMessageHeaderSize, sizeof meas);
        m_reports.Take(*m_sink, meas, m_epochs.TakeToldSatellites());
    }
}

void Codec::Log(int line, const char* function, const char* format, ...)
{
    if (m_logHandler == nullptr) {
        return;
    }
    std::va_list arguments;
    va_start(arguments, format);
    m_logHandler("codec/Codec.cpp", line, function, format, arguments);
    va_end(arguments);
}

} // namespace codec
