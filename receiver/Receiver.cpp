// SPDX-License-Identifier: MIT
#include "receiver/Receiver.h"

#include "receiver/AtCommands.h"
#include "receiver/CommandRules.h"
#include "receiver/ReportWriter.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace receiver {

namespace {

constexpr std::size_t kHistoryPart = 1024;

} // namespace

Receiver::Receiver(const ReceiverOptions& options)
    : m_options(options), m_positioning(m_options, m_settings), m_commands(m_settings, m_positioning),
      m_output(options.faults, Seeded(options.seed, BranchLine), options.product), m_loader(options.faults)
{
    m_settings.rateHz = options.rateHz;
    m_output.SendText(VersionSentence(m_version), 0);
    if (!options.idle) {
        m_positioning.Start(0);
    }
}

Millis Receiver::SleepAt() const
{
    return m_options.faults.sleepAt < 0.0 || m_hasSlept ? kNever
                                                        : static_cast<Millis>(m_options.faults.sleepAt * 1000.0);
}

Millis Receiver::NextEvent() const
{
    return std::min(
        {m_positioning.NextEpoch(), m_output.NextEvent(), SleepAt(), m_wakeRequestAt, m_loader.NextEvent()});
}

void Receiver::Advance(Millis now)
{
    for (Millis next = NextEvent(); next <= now; next = NextEvent()) {
        m_now = std::max(m_now, next);
        m_output.Advance(m_now);
        if (m_now >= SleepAt()) {
            m_output.SendFrame(MakeSleepNotice(protocol::SleepComing), m_now);
            m_hasSlept = true;
            m_asleep = true;
            if (m_options.faults.wakeRequestAfter > 0.0) {
                m_wakeRequestAt = m_now + static_cast<Millis>(m_options.faults.wakeRequestAfter * 1000.0);
            }
        }
        if (m_now >= m_wakeRequestAt) {
            m_output.SendFrame(MakeSleepNotice(protocol::SleepWakeMe), m_now);
            m_wakeRequestAt = kNever;
        }
        RunLoader(m_now);
        if (m_now >= m_positioning.NextEpoch()) {
            RunEpoch(m_now);
            m_positioning.ScheduleEpoch(m_now);
        }
    }
    m_now = std::max(m_now, now);
    m_output.Advance(m_now);
}

void Receiver::EnterLoader(Millis now)
{
    m_positioning.Stop();
    m_output.DropLate();
    m_loader.Enter(now);
}

void Receiver::RunLoader(Millis now)
{
    for (std::string& piece : m_loader.Advance(now)) {
        m_output.SendText(std::move(piece), now);
    }
    if (m_loader.TakeReboot(m_version)) {
        // It boots with nothing in its memory and waits for a start command, so that the line with its version
        // stands alone.
        m_settings = Configuration();
        m_settings.rateHz = m_options.rateHz;
        m_positioning.Engine().Known().Forget();
        m_stream.Clear();
        m_output.SendText(VersionSentence(m_version), now);
    }
}

void Receiver::RunEpoch(Millis now)
{
    const Epoch epoch = m_positioning.RunEpoch(now);
    if (m_asleep || !m_options.ownOutput) {
        return;
    }
    std::vector<std::string> sentences;
    WriteSentences(epoch, m_settings.sentences, sentences);
    for (std::string& sentence : sentences) {
        m_output.SendText(std::move(sentence), now);
    }
    RunReports(now, epoch);
}

void Receiver::RunReports(Millis now, const Epoch& epoch)
{
    const bool all = m_options.reports == ReportPolicy::All && epoch.utc % 1000 == 0;
    if (m_settings.solution || all) {
        m_output.SendFrame(MakeMessage(protocol::MsgTypeLoc, MakeLoc(epoch)), now);
    }
    if (m_settings.measurements || all) {
        m_output.SendFrame(MakeMessage(protocol::MsgTypeMeas, MakeMeas(epoch)), now);
    }
    if (!all) {
        return;
    }
    m_output.SendFrame(MakeMessage(protocol::MsgTypePdrComm, MakePdrComm(epoch, 1.0)), now);
    m_output.SendFrame(MakeMessage(protocol::MsgTypePdrMeas, MakePdrMeas(epoch)), now);
    m_output.SendFrame(MakeMessage(protocol::MsgTypePdrLs, MakePdrLs(epoch)), now);
    for (const std::uint16_t id : {protocol::CmdPps, protocol::CmdConstellations, protocol::CmdNmea}) {
        ReportChange(id, now);
    }
    const protocol::MsgTsensor sensor{static_cast<std::int16_t>(std::lround(epoch.temperature))};
    m_output.SendFrame(MakeMessage(protocol::MsgTypeTsensor, sensor), now);
    m_output.SendFrame(MakeMessage(protocol::MsgTypeFtmCn0, MakeFtmCn0(epoch)), now);
}

void Receiver::ReportChange(std::uint16_t commandId, Millis now)
{
    if (commandId == protocol::CmdPps) {
        m_output.SendFrame(
            MakeMessage(protocol::MsgTypePpsSts, protocol::MsgPpsSts{static_cast<std::uint8_t>(m_settings.pps)}),
            now);
    } else if (commandId == protocol::CmdConstellations) {
        protocol::MsgFixMode mode{0};
        for (std::size_t i = 0; i < kSystems; ++i) {
            mode.modeMask |= m_settings.systems[i] ? 1u << i : 0u;
        }
        m_output.SendFrame(MakeMessage(protocol::MsgTypeFixMode, mode), now);
    } else if (commandId == protocol::CmdNmea) {
        m_output.SendFrame(MakeMessage(protocol::MsgTypeNmeaMode, protocol::MsgNmeaMode{m_settings.sentences}),
                           now);
    }
}

void Receiver::Receive(const std::uint8_t* bytes, std::size_t length, Millis now)
{
    Advance(now);
    if (m_asleep) {
        // Only the wake-up byte is heard; what came before it is lost.
        const auto* zero = static_cast<const std::uint8_t*>(std::memchr(bytes, 0, length));
        if (zero == nullptr) {
            return;
        }
        m_asleep = false;
        m_wakeRequestAt = kNever;
        length -= static_cast<std::size_t>(zero + 1 - bytes);
        bytes = zero + 1;
        m_stream.Clear();
    }
    if (m_loader.Active()) {
        m_loader.Receive({reinterpret_cast<const char*>(bytes), length}, m_now);
    } else {
        for (const HostStream::Item& item : m_stream.Feed(bytes, length, m_now)) {
            HandleItem(item, m_now);
        }
    }
    RunLoader(m_now);
}

void Receiver::HandleItem(const HostStream::Item& item, Millis now)
{
    if (item.kind == HostStream::Item::Kind::Loader) {
        EnterLoader(now);
        m_loader.Receive(item.bytes, now);
        return;
    }
    if (item.kind == HostStream::Item::Kind::AtLine) {
        if (m_options.product == protocol::kAtProduct) {
            CarryOutAtLine(
                item.bytes, [&](const protocol::FrameView& frame) { HandleFrame(frame, now); },
                [&](const char* text) { m_output.SendText(text, now); });
        }
        return;
    }
    protocol::FrameView frame;
    if (item.kind == HostStream::Item::Kind::Frame &&
        protocol::ReadFrame(reinterpret_cast<const std::uint8_t*>(item.bytes.data()), item.bytes.size(), frame)) {
        HandleFrame(frame, now);
    }
}

void Receiver::HandleFrame(const protocol::FrameView& frame, Millis now)
{
    if (m_options.faults.refuse >= 0) {
        m_output.SendAck(frame.id, static_cast<std::uint16_t>(m_options.faults.refuse), now);
        return;
    }
    protocol::AckStatus status = JudgeCommand(frame);
    if (status == protocol::AckAccepted) {
        status = m_commands.CarryOut(frame, now);
    }
    m_output.SendAck(frame.id, status, now);
    if (status != protocol::AckAccepted) {
        return;
    }
    if (frame.id == protocol::CmdReadHistory) {
        SendHistory(now);
    } else if (m_options.reports != ReportPolicy::None) {
        const bool mask = frame.id == protocol::CmdConstellations && frame.word1 == protocol::kNmeaMaskWord;
        const bool setting =
            frame.word1 == 0 && !(frame.id == protocol::CmdNmea && frame.payloadLength == protocol::kOneByte);
        if (mask || setting) {
            ReportChange(mask ? static_cast<std::uint16_t>(protocol::CmdNmea) : frame.id, now);
        }
    }
}

void Receiver::SendHistory(Millis now)
{
    const std::string block = PackHistory(m_positioning.Engine().Known(), UtcAt(now));
    const std::size_t parts = (block.size() + kHistoryPart - 1) / kHistoryPart;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::string_view piece = std::string_view(block).substr(part * kHistoryPart, kHistoryPart);
        m_output.SendFrame(MakeFrame(protocol::RptHistory, static_cast<std::uint16_t>(part),
                                     static_cast<std::uint16_t>(parts), piece.data(), piece.size()),
                           now);
    }
}

} // namespace receiver
