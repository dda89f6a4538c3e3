// SPDX-License-Identifier: MIT
#include "receiver/CommandRules.h"

#include "receiver/Assistance.h"
#include "receiver/Utc.h"

#include <cmath>

namespace receiver {

namespace {

using Bytes = const std::uint8_t*;

bool Any(Bytes, std::size_t)
{
    return true;
}

bool Flags(Bytes p, std::size_t n)
{
    for (std::size_t i = 0; i < n; ++i) {
        if (p[i] > 1) {
            return false;
        }
    }
    return true;
}

bool UpToTwo(Bytes p, std::size_t)
{
    return p[0] <= 2;
}

bool LowPower(Bytes p, std::size_t n)
{
    const auto setting = protocol::Unpacked<protocol::LowPowerSetting>(p, n, protocol::kLowPowerFields);
    return setting.power == protocol::LowPower::Off || setting.power == protocol::LowPower::On;
}

bool Pps(Bytes p, std::size_t n)
{
    return protocol::Unpacked<protocol::PpsSetting>(p, n, protocol::kPpsFields).on <= 1;
}

bool StartItem(Bytes p, std::size_t n)
{
    const auto item = protocol::Unpacked<protocol::StartItem>(p, n, protocol::kStartItemFields);
    const protocol::StartItem right;
    return item.tag == right.tag && item.length == right.length && item.cold <= 1;
}

bool NmeaMaskItem(Bytes p, std::size_t n)
{
    const auto item = protocol::Unpacked<protocol::NmeaMaskItem>(p, n, protocol::kNmeaMaskFields);
    const protocol::NmeaMaskItem right;
    return item.tag == right.tag && item.length == right.length;
}

// One byte only asks for a sign of life.
bool NmeaSetting(Bytes p, std::size_t n)
{
    return n == protocol::kOneByte || Flags(p, n);
}

bool GpsTime(Bytes p, std::size_t n)
{
    const auto time = protocol::Unpacked<protocol::ReferenceTimeRecord>(p, n, protocol::kReferenceTimeFields);
    return time.week < protocol::kWeeksPerTurn && time.timeOfWeek < protocol::kSecondsPerWeek;
}

bool UtcTime(Bytes p, std::size_t n)
{
    return FieldsValid(FieldsOf(protocol::Unpacked<protocol::UtcTimeRecord>(p, n, protocol::kUtcTimeFields)));
}

bool AgnssPosition(Bytes p, std::size_t n)
{
    const auto place =
        protocol::Unpacked<protocol::ReferencePositionRecord>(p, n, protocol::kReferencePositionFields);
    // A right angle is 2^23 units of latitude, half a turn 2^23 units of longitude.
    return place.latitude <= (1u << 23) && place.longitude <= (1 << 23) && place.longitude >= -(1 << 23) &&
           place.southern <= 1 && place.belowSeaLevel <= 1;
}

bool PgnssPosition(Bytes p, std::size_t n)
{
    const auto place = protocol::Unpacked<protocol::ScenePositionRecord>(p, n, protocol::kScenePositionFields);
    // Written so that not-a-number fails too.
    return std::abs(place.longitude) <= 180.0 && std::abs(place.latitude) <= 90.0;
}

struct Rule {
    std::uint16_t id;
    std::uint16_t word1;
    bool (*valuesValid)(Bytes, std::size_t);
};

// Commands that are not listed take any values: the start's numbers are free, a stop has none. The assistance
// items have rules of their own.
constexpr Rule kRules[] = {
    {protocol::CmdConstellations, 0, Flags},
    {protocol::CmdConstellations, protocol::kHotStartWord, StartItem},
    {protocol::CmdConstellations, protocol::kColdStartWord, StartItem},
    {protocol::CmdConstellations, protocol::kNmeaMaskWord, NmeaMaskItem},
    {protocol::CmdStartMode, 0, Flags},
    {protocol::CmdNmea, 0, NmeaSetting},
    {protocol::CmdAcqLowPower, 0, LowPower},
    {protocol::CmdTrkLowPower, 0, LowPower},
    {protocol::CmdAntiJam, 0, Flags},
    {protocol::CmdUpdateRate, 0, UpToTwo},
    {protocol::CmdPps, 0, Pps},
    {protocol::CmdReports, 0, Flags},
    {protocol::CmdFixPriority, 0, UpToTwo},
    {protocol::CmdPgnssTime, 0, GpsTime},
    {protocol::CmdPgnssPosition, 0, PgnssPosition},
    {protocol::CmdAgnssPosition, 0, AgnssPosition},
    {protocol::CmdUtcTime, 0, UtcTime},
};

} // namespace

UtcFields FieldsOf(const protocol::UtcTimeRecord& record)
{
    return {record.year, record.month, record.day, record.hour, record.minute, record.second, record.millisecond};
}

protocol::AckStatus JudgeCommand(const protocol::FrameView& frame)
{
    switch (protocol::CheckCommand(frame.id, frame.word1, frame.payloadLength)) {
    case protocol::CommandCheck::Unknown:
        return protocol::AckRefused;
    case protocol::CommandCheck::BadLength:
        return protocol::AckBadLength;
    case protocol::CommandCheck::Accepted:
        break;
    }
    if (const protocol::AssistForm* form = protocol::FindAssistForm(frame.id)) {
        return AssistanceValid(*form, frame.payload, frame.payloadLength) ? protocol::AckAccepted
                                                                          : protocol::AckBadParameter;
    }
    bool (*valid)(Bytes, std::size_t) = Any;
    for (const Rule& rule : kRules) {
        if (rule.id == frame.id && rule.word1 == frame.word1) {
            valid = rule.valuesValid;
        }
    }
    return valid(frame.payload, frame.payloadLength) ? protocol::AckAccepted : protocol::AckBadParameter;
}

} // namespace receiver
