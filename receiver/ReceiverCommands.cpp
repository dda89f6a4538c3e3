// SPDX-License-Identifier: MIT
// How the receiver takes commands: see Receiver.h.

#include "receiver/Receiver.h"

#include "protocol/CommandFrames.h"
#include "receiver/Assistance.h"
#include "receiver/CommandRules.h"
#include "receiver/ReportWriter.h"
#include "receiver/TextNumbers.h"

#include <algorithm>
#include <cstring>

namespace receiver {

namespace {

constexpr std::size_t kHistoryPart = 1024;

// What is injected helps only when it is about right.
constexpr double kUsablePositionError = 300000.0;

constexpr int kRates[] = {1, 5, 10}; // by UpdateRate
static_assert(kRates[protocol::Rate10Hz] == 10);

/// The mask of a setting: its flags from bit 0 on.
std::uint8_t MaskOf(const protocol::NmeaSetting& setting)
{
    unsigned mask = 0;
    unsigned bit = 0;
    for (const std::uint8_t flag : protocol::Packed(setting, protocol::kNmeaSettingFields)) {
        mask |= static_cast<unsigned>(flag) << bit++;
    }
    return static_cast<std::uint8_t>(mask);
}

bool LowPowerOn(const protocol::FrameView& frame)
{
    return protocol::Unpacked<protocol::LowPowerSetting>(frame.payload, frame.payloadLength,
                                                         protocol::kLowPowerFields)
               .power != protocol::LowPower::Off;
}

} // namespace

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
            HandleAtLine(item.bytes, now);
        }
        return;
    }
    protocol::FrameView frame;
    if (item.kind == HostStream::Item::Kind::Frame &&
        protocol::ReadFrame(reinterpret_cast<const std::uint8_t*>(item.bytes.data()), item.bytes.size(), frame)) {
        HandleFrame(frame, now);
    }
}

void Receiver::HandleAtLine(const std::string& line, Millis now)
{
    const std::string_view text(line);
    const std::string_view hexPrefix(protocol::kAtHexCommand);
    const std::string start = std::string(protocol::kAtStartPrefix) + '=';
    if (text.substr(0, hexPrefix.size()) == hexPrefix) {
        const std::string_view digits = text.substr(hexPrefix.size());
        std::vector<std::uint8_t> bytes;
        const auto digit = [](char c) {
            return c >= '0' && c <= '9'   ? c - '0'
                   : c >= 'a' && c <= 'f' ? c - 'a' + 10
                   : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                          : -1;
        };
        bool good = digits.size() % 2 == 0;
        for (std::size_t i = 0; good && i < digits.size(); i += 2) {
            good = digit(digits[i]) >= 0 && digit(digits[i + 1]) >= 0;
            bytes.push_back(static_cast<std::uint8_t>(digit(digits[i]) * 16 + digit(digits[i + 1])));
        }
        protocol::FrameView frame;
        if (!good || !protocol::ReadFrame(bytes.data(), bytes.size(), frame)) {
            SendText("ERROR\r\n", now);
            return;
        }
        HandleFrame(frame, now);
        return;
    }
    // The other forms have a frame of the same meaning, whose acknowledgement follows the "OK".
    if (text == "AT") {
        SendText("OK\r\n", now);
        return;
    }
    protocol::FrameView frame;
    std::uint8_t payload[protocol::LengthOf(protocol::kStartFields)] = {};
    if (text == protocol::kAtStop) {
        frame.id = protocol::CmdStop;
    } else if (text.substr(0, start.size()) == start) {
        int numbers = 0;
        bool good = true;
        Split(text.substr(start.size()), ',', [&](std::string_view piece) {
            std::int64_t value = 0;
            good = good && ParseInteger(piece, value);
            ++numbers;
        });
        if (!good || numbers != 4) {
            SendText("ERROR\r\n", now);
            return;
        }
        frame.id = protocol::CmdStart;
        frame.word1 = protocol::kStartWord;
        frame.payload = payload;
        frame.payloadLength = sizeof payload;
    } else {
        SendText("ERROR\r\n", now);
        return;
    }
    SendText("OK\r\n", now);
    HandleFrame(frame, now);
}

void Receiver::HandleFrame(const protocol::FrameView& frame, Millis now)
{
    if (m_options.faults.refuse >= 0) {
        SendAck(frame.id, static_cast<std::uint16_t>(m_options.faults.refuse), now);
        return;
    }
    protocol::AckStatus status = JudgeCommand(frame);
    if (status == protocol::AckAccepted) {
        status = CarryOut(frame, now);
    }
    SendAck(frame.id, status, now);
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

protocol::AckStatus Receiver::CarryOut(const protocol::FrameView& frame, Millis now)
{
    switch (frame.id) {
    case protocol::CmdStart:
        // A second start changes nothing: the receiver is at it already.
        if (!m_running) {
            Start(now);
        }
        return protocol::AckAccepted;
    case protocol::CmdStop:
        Stop();
        return protocol::AckAccepted;
    case protocol::CmdInjectHistory: {
        const std::string_view block(reinterpret_cast<const char*>(frame.payload), frame.payloadLength);
        if (!UnpackHistory(block, m_engine.Known())) {
            return protocol::AckBadParameter;
        }
        if (m_running) {
            m_engine.KnowledgeGrew(UtcAt(now), ViewsAt(now));
        }
        return protocol::AckAccepted;
    }
    case protocol::CmdReadHistory:
        return protocol::AckAccepted;
    default:
        break;
    }
    if (frame.id <= protocol::CmdFixPriority) {
        Configure(frame, now);
    } else {
        Assist(frame, now);
    }
    return protocol::AckAccepted;
}

void Receiver::Configure(const protocol::FrameView& frame, Millis now)
{
    const std::uint8_t* p = frame.payload;
    const std::size_t n = frame.payloadLength;
    switch (frame.id) {
    case protocol::CmdConstellations:
        if (frame.word1 == protocol::kNmeaMaskWord) {
            m_settings.sentences =
                protocol::Unpacked<protocol::NmeaMaskItem>(p, n, protocol::kNmeaMaskFields).mask;
        } else if (frame.word1 == protocol::kHotStartWord || frame.word1 == protocol::kColdStartWord) {
            // The frame says how the next start begins; a receiver that runs starts over at once.
            if (protocol::Unpacked<protocol::StartItem>(p, n, protocol::kStartItemFields).cold == 1) {
                m_engine.Known().Forget();
            }
            if (m_running) {
                Start(now);
            }
        } else {
            const auto setting =
                protocol::Unpacked<protocol::ConstellationSetting>(p, n, protocol::kConstellationSettingFields);
            for (std::size_t i = 0; i < kSystems; ++i) {
                m_settings.systems[i] = setting.on[i] != 0;
            }
        }
        break;
    case protocol::CmdStartMode:
        m_settings.coldAtEveryStart = p[0] == protocol::StartCold;
        break;
    case protocol::CmdNmea:
        if (n != protocol::kOneByte) {
            m_settings.sentences =
                MaskOf(protocol::Unpacked<protocol::NmeaSetting>(p, n, protocol::kNmeaSettingFields));
        }
        break;
    case protocol::CmdAcqLowPower:
        m_settings.acquisitionLowPower = LowPowerOn(frame);
        break;
    case protocol::CmdTrkLowPower:
        m_settings.trackingLowPower = LowPowerOn(frame);
        break;
    case protocol::CmdAntiJam: {
        const auto setting = protocol::Unpacked<protocol::AntiJamSetting>(p, n, protocol::kAntiJamFields);
        m_settings.antiJam = {{setting.on, setting.periodic, setting.fine}};
        break;
    }
    case protocol::CmdUpdateRate:
        m_settings.rateHz = kRates[p[0]];
        ScheduleEpoch(now);
        break;
    case protocol::CmdPps: {
        const auto setting = protocol::Unpacked<protocol::PpsSetting>(p, n, protocol::kPpsFields);
        m_settings.pps = setting.on == 1;
        m_settings.ppsWidth = setting.width;
        break;
    }
    case protocol::CmdReports: {
        const auto setting = protocol::Unpacked<protocol::ReportSetting>(p, n, protocol::kReportFields);
        m_settings.measurements = setting.measurements == 1;
        m_settings.solution = setting.solution == 1;
        break;
    }
    case protocol::CmdFixPriority:
        m_settings.priority = p[0];
        break;
    default:
        break;
    }
}

void Receiver::Assist(const protocol::FrameView& frame, Millis now)
{
    const std::uint8_t* p = frame.payload;
    const std::size_t n = frame.payloadLength;
    const Millis utc = UtcAt(now);
    Memory& memory = m_engine.Known();
    const auto injectTime = [&](Millis injected) {
        memory.timeKnown = memory.timeKnown || TimeHelps(injected, utc);
    };
    const auto injectPosition = [&](const Geodetic& place) {
        if (RoughDistance(place, TruthAt(now).place) <= kUsablePositionError) {
            memory.positionKnown = true;
            memory.position = place;
        }
    };
    switch (frame.id) {
    case protocol::CmdUtcTime:
        injectTime(
            FromFields(FieldsOf(protocol::Unpacked<protocol::UtcTimeRecord>(p, n, protocol::kUtcTimeFields))));
        break;
    case protocol::CmdPgnssTime: {
        const auto time = protocol::Unpacked<protocol::ReferenceTimeRecord>(p, n, protocol::kReferenceTimeFields);
        constexpr Millis week = protocol::kSecondsPerWeek * Millis{1000};
        constexpr Millis rollover = protocol::kWeeksPerTurn * week;
        const Millis inRollover = time.week * week + time.timeOfWeek * Millis{1000};
        // The week number has ten bits: it is meant in the present turn of 1024 weeks.
        injectTime(kGpsEpoch + (utc - kGpsEpoch) / rollover * rollover + inRollover);
        break;
    }
    case protocol::CmdAgnssPosition: {
        const auto place =
            protocol::Unpacked<protocol::ReferencePositionRecord>(p, n, protocol::kReferencePositionFields);
        injectPosition({place.latitude * protocol::kLatitudeUnit / kDegree * (place.southern == 1 ? -1.0 : 1.0),
                        place.longitude * protocol::kLongitudeUnit / kDegree,
                        place.altitude * (place.belowSeaLevel == 1 ? -1.0 : 1.0)});
        break;
    }
    case protocol::CmdPgnssPosition: {
        const auto scene = protocol::Unpacked<protocol::ScenePositionRecord>(p, n, protocol::kScenePositionFields);
        Geodetic place;
        place.longitude = scene.longitude;
        place.latitude = scene.latitude;
        injectPosition(place);
        break;
    }
    default:
        if (const protocol::AssistForm* form = protocol::FindAssistForm(frame.id)) {
            TakeAssistance(*form, p, frame.payloadLength, utc, memory);
        }
        break;
    }
    if (m_running) {
        m_engine.KnowledgeGrew(utc, ViewsAt(now));
    }
}

void Receiver::SendHistory(Millis now)
{
    const std::string block = PackHistory(m_engine.Known(), UtcAt(now));
    const std::size_t parts = (block.size() + kHistoryPart - 1) / kHistoryPart;
    for (std::size_t part = 0; part < parts; ++part) {
        const std::string_view piece = std::string_view(block).substr(part * kHistoryPart, kHistoryPart);
        SendFrame(MakeFrame(protocol::RptHistory, static_cast<std::uint16_t>(part),
                            static_cast<std::uint16_t>(parts), piece.data(), piece.size()),
                  now);
    }
}

} // namespace receiver
