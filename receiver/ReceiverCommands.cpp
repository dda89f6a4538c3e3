// SPDX-License-Identifier: MIT
#include "receiver/ReceiverCommands.h"

#include "protocol/CommandTable.h"
#include "receiver/Assistance.h"
#include "receiver/CommandRules.h"

#include <cstring>

namespace receiver {

namespace {

// What is injected helps only when it is about right.
constexpr double kUsablePositionError = 300000.0;

constexpr int kRates[] = {1, 5, 10};

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
    switch (frame.id) {
    case protocol::CmdConstellations:
        if (frame.word1 == protocol::kNmeaMaskWord) {
            m_settings.sentences = p[4];
        } else if (frame.word1 == protocol::kHotStartWord || frame.word1 == protocol::kColdStartWord) {
            // The frame says how the next start begins; a receiver that runs starts over at once.
            if (p[4] == 1) {
                m_engine.Known().Forget();
            }
            if (m_positioning.Running()) {
                m_positioning.Start(now);
            }
        } else {
            for (std::size_t i = 0; i < kSystems; ++i) {
                m_settings.systems[i] = p[i] != 0;
            }
        }
        break;
    case protocol::CmdStartMode:
        m_settings.coldAtEveryStart = p[0] == 1;
        break;
    case protocol::CmdNmea:
        if (frame.payloadLength == 8) {
            m_settings.sentences = 0;
            for (std::size_t i = 0; i < 8; ++i) {
                m_settings.sentences = static_cast<std::uint8_t>(m_settings.sentences | (p[i] << i));
            }
        }
        break;
    case protocol::CmdAcqLowPower:
        m_settings.acquisitionLowPower = p[0] != 0;
        break;
    case protocol::CmdTrkLowPower:
        m_settings.trackingLowPower = p[0] != 0;
        break;
    case protocol::CmdAntiJam:
        m_settings.antiJam = {{p[0], p[1], p[2]}};
        break;
    case protocol::CmdUpdateRate:
        m_settings.rateHz = kRates[p[0]];
        m_positioning.ScheduleEpoch(now);
        break;
    case protocol::CmdPps:
        m_settings.pps = p[0] == 1;
        m_settings.ppsWidth = p[1];
        break;
    case protocol::CmdReports:
        m_settings.measurements = p[0] == 1;
        m_settings.solution = p[1] == 1;
        break;
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
        injectTime(FromFields({protocol::ReadU16(p), p[2], p[3], p[4], p[5], p[6], protocol::ReadU16(p + 8)}));
        break;
    case protocol::CmdPgnssTime: {
        std::uint32_t timeOfWeek = 0;
        std::memcpy(&timeOfWeek, p + 2, sizeof timeOfWeek);
        constexpr Millis week = 604800000;
        constexpr Millis rollover = 1024 * week;
        const Millis inRollover = protocol::ReadU16(p) * week + timeOfWeek * Millis{1000};
        // The week number has ten bits: it is meant in the present turn of 1024 weeks.
        injectTime(kGpsEpoch + (utc - kGpsEpoch) / rollover * rollover + inRollover);
        break;
    }
    case protocol::CmdAgnssPosition: {
        std::uint32_t latitude = 0;
        std::int32_t longitude = 0;
        std::memcpy(&latitude, p, sizeof latitude);
        std::memcpy(&longitude, p + 4, sizeof longitude);
        const double altitude = protocol::ReadU16(p + 12);
        injectPosition({latitude * kLatitudeUnit / kDegree * (p[14] == 1 ? -1.0 : 1.0),
                        longitude * kLongitudeUnit / kDegree, altitude * (p[15] == 1 ? -1.0 : 1.0)});
        break;
    }
    case protocol::CmdPgnssPosition: {
        Geodetic place;
        std::memcpy(&place.longitude, p, sizeof place.longitude);
        std::memcpy(&place.latitude, p + 8, sizeof place.latitude);
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
