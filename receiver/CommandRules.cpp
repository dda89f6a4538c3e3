// SPDX-License-Identifier: MIT
#include "receiver/CommandRules.h"

#include "receiver/Assistance.h"
#include "receiver/Utc.h"

#include <cmath>
#include <cstring>

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

bool LowPower(Bytes p, std::size_t)
{
    return (p[0] == 0 && p[1] == 0) || (p[0] == kLowPowerOn[0] && p[1] == kLowPowerOn[1]);
}

bool Pps(Bytes p, std::size_t)
{
    return p[0] <= 1;
}

// An item of its own: tag, length and one byte, for the start with or without the memory.
bool StartItem(Bytes p, std::size_t)
{
    return protocol::ReadU16(p) == 1 && protocol::ReadU16(p + 2) == 1 && p[4] <= 1;
}

bool NmeaMaskItem(Bytes p, std::size_t)
{
    return protocol::ReadU16(p) == 3 && protocol::ReadU16(p + 2) == 2;
}

// One byte only asks for a sign of life.
bool NmeaSetting(Bytes p, std::size_t n)
{
    return n == 1 || Flags(p, n);
}

bool GpsTime(Bytes p, std::size_t)
{
    std::uint32_t timeOfWeek = 0;
    std::memcpy(&timeOfWeek, p + 2, sizeof timeOfWeek);
    return protocol::ReadU16(p) < 1024 && timeOfWeek < 604800;
}

bool UtcTime(Bytes p, std::size_t)
{
    return FieldsValid({protocol::ReadU16(p), p[2], p[3], p[4], p[5], p[6], protocol::ReadU16(p + 8)});
}

bool AgnssPosition(Bytes p, std::size_t)
{
    std::uint32_t latitude = 0;
    std::int32_t longitude = 0;
    std::memcpy(&latitude, p, sizeof latitude);
    std::memcpy(&longitude, p + 4, sizeof longitude);
    // A right angle is 2^23 units of latitude, half a turn 2^23 units of longitude.
    return latitude <= (1u << 23) && longitude <= (1 << 23) && longitude >= -(1 << 23) && p[14] <= 1 && p[15] <= 1;
}

bool PgnssPosition(Bytes p, std::size_t)
{
    double longitude = 0.0;
    double latitude = 0.0;
    std::memcpy(&longitude, p, sizeof longitude);
    std::memcpy(&latitude, p + 8, sizeof latitude);
    // Written so that not-a-number fails too.
    return std::abs(longitude) <= 180.0 && std::abs(latitude) <= 90.0;
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
