#include "receiver/CommandRules.h"

#include "receiver/Assistance.h"
#include "receiver/Utc.h"

#include <cmath>
#include <cstring>

namespace vrx {

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
    return gnss::ReadU16(p) == 1 && gnss::ReadU16(p + 2) == 1 && p[4] <= 1;
}

bool NmeaMaskItem(Bytes p, std::size_t)
{
    return gnss::ReadU16(p) == 3 && gnss::ReadU16(p + 2) == 2;
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
    return gnss::ReadU16(p) < 1024 && timeOfWeek < 604800;
}

bool UtcTime(Bytes p, std::size_t)
{
    return FieldsValid({gnss::ReadU16(p), p[2], p[3], p[4], p[5], p[6], gnss::ReadU16(p + 8)});
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
    {gnss::CmdConstellations, 0, Flags},
    {gnss::CmdConstellations, gnss::kHotStartWord, StartItem},
    {gnss::CmdConstellations, gnss::kColdStartWord, StartItem},
    {gnss::CmdConstellations, gnss::kNmeaMaskWord, NmeaMaskItem},
    {gnss::CmdStartMode, 0, Flags},
    {gnss::CmdNmea, 0, NmeaSetting},
    {gnss::CmdAcqLowPower, 0, LowPower},
    {gnss::CmdTrkLowPower, 0, LowPower},
    {gnss::CmdAntiJam, 0, Flags},
    {gnss::CmdUpdateRate, 0, UpToTwo},
    {gnss::CmdPps, 0, Pps},
    {gnss::CmdReports, 0, Flags},
    {gnss::CmdFixPriority, 0, UpToTwo},
    {gnss::CmdPgnssTime, 0, GpsTime},
    {gnss::CmdPgnssPosition, 0, PgnssPosition},
    {gnss::CmdAgnssPosition, 0, AgnssPosition},
    {gnss::CmdUtcTime, 0, UtcTime},
};

} // namespace

gnss::AckStatus JudgeCommand(const gnss::FrameView& frame)
{
    switch (gnss::CheckCommand(frame.id, frame.word1, frame.payloadLength)) {
    case gnss::CommandCheck::Unknown:
        return gnss::AckRefused;
    case gnss::CommandCheck::BadLength:
        return gnss::AckBadLength;
    case gnss::CommandCheck::Accepted:
        break;
    }
    if (const gnss::AssistForm* form = gnss::FindAssistForm(frame.id)) {
        return AssistanceValid(*form, frame.payload, frame.payloadLength) ? gnss::AckAccepted
                                                                          : gnss::AckBadParameter;
    }
    bool (*valid)(Bytes, std::size_t) = Any;
    for (const Rule& rule : kRules) {
        if (rule.id == frame.id && rule.word1 == frame.word1) {
            valid = rule.valuesValid;
        }
    }
    return valid(frame.payload, frame.payloadLength) ? gnss::AckAccepted : gnss::AckBadParameter;
}

} // namespace vrx
