// SPDX-License-Identifier: MIT
#include "receiver/ReportWriter.h"

#include "protocol/Records.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace receiver {

namespace {

constexpr Millis kRateStep = 500;

double RangeTo(const Vector3& a, const Vector3& b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

double MetresPerCycle(double megahertz)
{
    return kLightSpeed / (megahertz * 1e6);
}

/// The number of a system in the shared list.
std::uint8_t ListIndexOf(System system)
{
    return static_cast<std::uint8_t>(protocol::IndexOf(protocol::ConstellationOf(system)));
}

// Zeroed with its padding, so that the same epoch always gives the same bytes.
template <typename Message> Message Blank()
{
    Message message;
    std::memset(static_cast<void*>(&message), 0, sizeof message);
    return message;
}

} // namespace

std::string MakeFrame(std::uint16_t id, std::uint16_t word1, std::uint16_t word2, const void* payload,
                      std::size_t length)
{
    std::string frame(protocol::kFrameOverhead + length, '\0');
    frame.resize(protocol::WriteFrame(reinterpret_cast<std::uint8_t*>(frame.data()), frame.size(), id, word1,
                                      word2, payload, length));
    return frame;
}

std::string MakeAck(std::uint16_t commandId, std::uint16_t status)
{
    const std::vector<std::uint8_t> payload =
        protocol::Packed(protocol::CbRecvAckType{commandId, status}, protocol::kAckFields);
    return MakeFrame(protocol::RptAck, 0, 0, payload.data(), payload.size());
}

std::string MakeSleepNotice(protocol::SleepNotice notice)
{
    return MakeFrame(protocol::RptSleep, 0, 0, &notice, sizeof notice);
}

protocol::MsgLoc MakeLoc(const Epoch& epoch)
{
    auto loc = Blank<protocol::MsgLoc>();
    if (epoch.timeKnown) {
        loc.validMask |= LocTimeValid;
        loc.timestamp = static_cast<std::uint64_t>(epoch.utc - kGpsEpoch + kLeapMillis);
    }
    if (epoch.fixed) {
        loc.validMask |= LocPositionValid | LocClockValid | LocSpeedValid;
        loc.latitude = epoch.position.latitude;
        loc.longitude = epoch.position.longitude;
        loc.altitude = static_cast<float>(epoch.position.altitude);
        loc.clkBias = epoch.clockBias;
        loc.clkDrift = epoch.clockDrift;
        loc.speede = epoch.speed * std::sin(epoch.heading * kDegree);
        loc.speedn = epoch.speed * std::cos(epoch.heading * kDegree);
        loc.speedu = epoch.climb;
        loc.heading = epoch.headingKnown ? static_cast<float>(std::fmod(epoch.heading, 360.0)) : 0.0f;
        loc.posAcc = static_cast<float>(epoch.accuracy);
        loc.speedAcc = 0.1f;
    }
    return loc;
}

protocol::MsgMeas MakeMeas(const Epoch& epoch)
{
    auto meas = Blank<protocol::MsgMeas>();
    const Vector3 here = ToEcef(epoch.position);
    std::size_t row = 0;
    for (std::size_t signal = 0; signal < 2; ++signal) {
        for (const EpochSatellite& satellite : epoch.satellites) {
            const SatelliteView& view = satellite.view;
            if (!satellite.tracked || signal >= view.signals || row == protocol::kMeasEntries) {
                continue;
            }
            const Vector3 before = PositionAt(*view.orbit, epoch.utc - kRateStep);
            const Vector3 after = PositionAt(*view.orbit, epoch.utc + kRateStep);
            const double frequency = Sky::Frequency(*view.orbit, signal);
            protocol::MeasEntry& entry = meas.entry[row++];
            entry.svid = view.orbit->svid;
            entry.constellation = ListIndexOf(view.orbit->system);
            entry.cn0 = static_cast<std::uint8_t>(std::lround(view.cn0[signal]));
            entry.inuseFlag = satellite.used ? 1 : 0;
            entry.satFlag = satellite.located ? 1 : 0;
            entry.carrierFreq = frequency;
            entry.satPosX = view.position.x;
            entry.satPosY = view.position.y;
            entry.satPosZ = view.position.z;
            entry.satSpeedX = after.x - before.x;
            entry.satSpeedY = after.y - before.y;
            entry.satSpeedZ = after.z - before.z;
            if (epoch.fixed) {
                const double rangeRate = RangeTo(after, here) - RangeTo(before, here);
                entry.psr = RangeTo(view.position, here) + epoch.clockBias;
                entry.doppler = -(rangeRate + epoch.clockDrift) / MetresPerCycle(frequency);
                entry.carrierPhase = entry.psr / MetresPerCycle(frequency);
            }
        }
    }
    return meas;
}

protocol::MsgPdrComm MakePdrComm(const Epoch& epoch, double deltaTime)
{
    auto message = Blank<protocol::MsgPdrComm>();
    message.deltaTime = deltaTime;
    message.isStatic = epoch.speed < 0.3 ? 1 : 0;
    message.pvtState = epoch.fixed ? 1 : 0;
    message.inuseNum = static_cast<std::uint16_t>(epoch.usedCount);
    message.qop = static_cast<float>(epoch.accuracy);
    message.hdop = static_cast<float>(epoch.hdop);
    message.ems = static_cast<float>(epoch.accuracy * epoch.accuracy);
    return message;
}

protocol::MsgPdrMeas MakePdrMeas(const Epoch& epoch)
{
    auto message = Blank<protocol::MsgPdrMeas>();
    std::size_t row = 0;
    for (const EpochSatellite& satellite : epoch.satellites) {
        if (!satellite.tracked || row == protocol::kMeasEntries) {
            continue;
        }
        protocol::PdrMeasEntry& entry = message.entry[row++];
        entry.svid = satellite.view.orbit->svid;
        entry.gnssType = ListIndexOf(satellite.view.orbit->system);
        entry.inuseFlag = satellite.used ? 1 : 0;
        entry.psrNs = static_cast<float>(satellite.view.look.range / kLightSpeed * 1e9);
    }
    return message;
}

protocol::MsgPdrLs MakePdrLs(const Epoch& epoch)
{
    auto message = Blank<protocol::MsgPdrLs>();
    message.inuseNum = static_cast<std::uint16_t>(epoch.usedCount);
    if (epoch.fixed) {
        message.latitude = epoch.position.latitude;
        message.longitude = epoch.position.longitude;
        message.altitude = static_cast<float>(epoch.position.altitude);
        message.speede = epoch.speed * std::sin(epoch.heading * kDegree);
        message.speedn = epoch.speed * std::cos(epoch.heading * kDegree);
        message.speedu = epoch.climb;
        message.qop = static_cast<float>(epoch.accuracy);
        message.hdop = static_cast<float>(epoch.hdop);
        message.ems = static_cast<float>(epoch.accuracy * epoch.accuracy);
        message.isLsFix = 1;
        message.isRaimSucc = epoch.usedCount > 5 ? 1 : 0;
    }
    return message;
}

protocol::MsgFtmCn0 MakeFtmCn0(const Epoch& epoch)
{
    auto message = Blank<protocol::MsgFtmCn0>();
    double best = 0.0;
    for (const EpochSatellite& satellite : epoch.satellites) {
        if (satellite.tracked) {
            best = std::max(best, satellite.view.cn0[0]);
        }
    }
    message.testStatus = best > 0.0 ? 1 : 0;
    message.satCn0 = static_cast<std::int32_t>(std::lround(best));
    message.freqBias = static_cast<std::int32_t>(epoch.clockDrift / kLightSpeed * 1575.42e6);
    return message;
}

} // namespace receiver
