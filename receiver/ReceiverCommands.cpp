// SPDX-License-Identifier: MIT
#include "receiver/ReceiverCommands.h"

#include "protocol/CommandFrames.h"
#include "receiver/Assistance.h"
#include "receiver/CommandRules.h"

#include <cstring>

namespace receiver {

namespace {

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

protocol::AckStatus ReceiverCommands::CarryOut(const protocol::FrameView& frame, Millis now)
{
    switch (frame.id) {
    case protocol::CmdStart:
        // A second start changes nothing: the receiver is at it already.
        if (!m_positioning.Running()) {
            m_positioning.Start(now);
        }
        return protocol::AckAccepted;
    case protocol::CmdStop:
        m_positioning.Stop();
        return protocol::AckAccepted;
    case protocol::CmdInjectHistory: {
        const std::string_view block(reinterpret_cast<const char*>(frame.payload), frame.payloadLength);
        if (!UnpackHistory(block, m_engine.Known())) {
            return protocol::AckBadParameter;
        }
        m_positioning.KnowledgeGrew(now);
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

void ReceiverCommands::Configure(const protocol::FrameView& frame, Millis now)
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
            if (m_positioning.Running()) {
                m_positioning.Start(now);
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
        m_positioning.ScheduleEpoch(now);
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

void ReceiverCommands::Assist(const protocol::FrameView& frame, Millis now)
{
    const std::uint8_t* p = frame.payload;
    const std::size_t n = frame.payloadLength;
    const Millis utc = m_positioning.UtcAt(now);
    Memory& memory = m_engine.Known();
    const auto injectTime = [&](Millis injected) {
        memory.timeKnown = memory.timeKnown || TimeHelps(injected, utc);
    };
    const auto injectPosition = [&](const Geodetic& place) {
        if (RoughDistance(place, m_positioning.TruthAt(now).place) <= kUsablePositionError) {
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
    m_positioning.KnowledgeGrew(now);
}

} // namespace receiver
