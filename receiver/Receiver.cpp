// SPDX-License-Identifier: MIT
#include "receiver/Receiver.h"

#include "receiver/ReportWriter.h"
#include "receiver/TextNumbers.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

// The seed's branches, so that one part's draws never shift another's.
enum Branch : std::uint64_t { BranchSky = 1, BranchEngine, BranchWander, BranchLine, BranchMotion, BranchClock };

constexpr double kNoFixAttenuation = 21.0;
constexpr double kSpeedForCourse = 0.3;
constexpr Millis kKeptEphemeris = 3600000;

// The share of a cold start's time that the priority settings cost, and by how much they spoil the first
// fixes: a quick fix is a rough one.
constexpr double kPriorityTime[] = {0.95, 0.85, 1.0};
constexpr double kPriorityError[] = {1.3, 2.0, 1.0};
constexpr Millis kRoughFixTime = 20000;

std::uint64_t Seeded(std::uint64_t seed, Branch branch)
{
    return MixKeys(seed, branch);
}

} // namespace

Receiver::Receiver(const ReceiverOptions& options)
    : m_options(options), m_sky(Seeded(options.seed, BranchSky)),
      m_engine(Seeded(options.seed, BranchEngine), options.times),
      m_wander(Seeded(options.seed, BranchWander), options.errorMetres),
      m_output(options.faults, Seeded(options.seed, BranchLine)), m_loader(options.faults)
{
    m_settings.rateHz = options.rateHz;
    if (options.faults.noFix) {
        m_engine.Block(true);
        m_sky.SetAttenuation(kNoFixAttenuation);
    }
    if (options.memoryKept) {
        Memory& memory = m_engine.Known();
        memory.timeKnown = true;
        memory.positionKnown = true;
        memory.almanacKnown = true;
        memory.position = TruthAt(0).place;
        for (const SatelliteView& view : ViewsAt(0)) {
            memory.ephemerisUntil[view.index] = UtcAt(0) + kKeptEphemeris;
        }
    }
    SendText(VersionSentence(m_version), 0);
    if (!options.idle) {
        Start(0);
    }
}

std::vector<SatelliteView> Receiver::ViewsAt(Millis now) const
{
    return m_sky.Above(TruthAt(now).place, UtcAt(now), m_settings.systems);
}

Millis Receiver::SleepAt() const
{
    return m_options.faults.sleepAt < 0.0 || m_hasSlept ? kNever
                                                        : static_cast<Millis>(m_options.faults.sleepAt * 1000.0);
}

Millis Receiver::NextEvent() const
{
    Millis next = std::min({m_nextEpoch, m_output.NextEvent(), SleepAt(), m_wakeRequestAt, m_loader.NextEvent()});
    for (const Later& later : m_later) {
        next = std::min(next, later.at);
    }
    return next;
}

void Receiver::Advance(Millis now)
{
    for (Millis next = NextEvent(); next <= now; next = NextEvent()) {
        m_now = std::max(m_now, next);
        m_output.Advance(m_now);
        for (std::size_t i = 0; i < m_later.size();) {
            if (m_later[i].at <= m_now) {
                SendFrame(std::move(m_later[i].message), m_now);
                m_later.erase(m_later.begin() + static_cast<std::ptrdiff_t>(i));
            } else {
                ++i;
            }
        }
        if (m_now >= SleepAt()) {
            SendFrame(MakeSleepNotice(protocol::SleepComing), m_now);
            m_hasSlept = true;
            m_asleep = true;
            if (m_options.faults.wakeRequestAfter > 0.0) {
                m_wakeRequestAt = m_now + static_cast<Millis>(m_options.faults.wakeRequestAfter * 1000.0);
            }
        }
        if (m_now >= m_wakeRequestAt) {
            SendFrame(MakeSleepNotice(protocol::SleepWakeMe), m_now);
            m_wakeRequestAt = kNever;
        }
        RunLoader(m_now);
        if (m_now >= m_nextEpoch) {
            RunEpoch(m_now);
            ScheduleEpoch(m_now);
        }
    }
    m_now = std::max(m_now, now);
    m_output.Advance(m_now);
}

void Receiver::ScheduleEpoch(Millis now)
{
    if (!m_running) {
        m_nextEpoch = kNever;
        return;
    }
    // Epochs lie on the whole second and its even parts.
    const Millis period = 1000 / m_settings.rateHz;
    const Millis utc = UtcAt(now);
    m_nextEpoch = now + period - ((utc % period) + period) % period;
}

void Receiver::Start(Millis now)
{
    if (m_settings.coldAtEveryStart) {
        m_engine.Known().Forget();
    }
    m_running = true;
    m_wander.Restart();
    m_lastEpoch = now;
    m_engine.Start(UtcAt(now), ViewsAt(now), kPriorityTime[m_settings.priority]);
    ScheduleEpoch(now);
}

void Receiver::Stop()
{
    m_running = false;
    m_nextEpoch = kNever;
    m_engine.Stop();
}

void Receiver::EnterLoader(Millis now)
{
    Stop();
    m_later.clear();
    m_loader.Enter(now);
}

void Receiver::RunLoader(Millis now)
{
    for (std::string& piece : m_loader.Advance(now)) {
        m_output.Put(now, std::move(piece));
    }
    if (m_loader.TakeReboot(m_version)) {
        // It boots with nothing in its memory and waits for a start command, so that the line with its version
        // stands alone.
        m_settings = Configuration();
        m_settings.rateHz = m_options.rateHz;
        m_engine.Known().Forget();
        m_stream.Clear();
        SendText(VersionSentence(m_version), now);
    }
}

void Receiver::RunEpoch(Millis now)
{
    const Millis utc = UtcAt(now);
    const MotionState truth = TruthAt(now);
    const double seconds = static_cast<double>(utc) / 1000.0;
    Epoch epoch;
    epoch.utc = utc;
    m_engine.Step(utc, m_sky.Above(truth.place, utc, m_settings.systems), epoch);
    m_wander.Step(static_cast<double>(now - m_lastEpoch) / 1000.0);
    m_lastEpoch = now;

    double rough = 1.0;
    if (m_engine.Kind() != StartKind::Hot && utc - m_engine.FixDue() < kRoughFixTime) {
        rough = kPriorityError[m_settings.priority];
    }
    epoch.position = Moved(truth.place, rough * m_wander.East(), rough * m_wander.North(), rough * m_wander.Up());
    const std::uint64_t motionKey = Seeded(m_options.seed, BranchMotion);
    epoch.speed = std::abs(truth.speed + 0.03 * SmoothNoise(motionKey, seconds, 2.0));
    epoch.headingKnown = epoch.speed >= kSpeedForCourse;
    epoch.heading = truth.heading;
    if (epoch.headingKnown) {
        epoch.heading += std::min(5.0, 2.0 / epoch.speed) * SmoothNoise(motionKey ^ 1u, seconds, 3.0);
        epoch.heading = std::fmod(epoch.heading + 360.0, 360.0);
    }
    epoch.climb = truth.climb + 0.04 * SmoothNoise(motionKey ^ 2u, seconds, 2.0);
    epoch.accuracy = std::max(0.5, m_options.errorMetres) * rough * std::max(1.0, epoch.hdop);
    const std::uint64_t clockKey = Seeded(m_options.seed, BranchClock);
    epoch.temperature = 34.0 + 3.0 * SmoothNoise(clockKey, seconds, 300.0);
    epoch.clockDrift = 40.0 + 3.0 * SmoothNoise(clockKey ^ 1u, seconds, 60.0);
    epoch.clockBias = std::fmod(40.0 * static_cast<double>(now) / 1000.0, kLightSpeed / 1000.0);
    if (epoch.fixed) {
        m_engine.Known().positionKnown = true;
        m_engine.Known().position = epoch.position;
    }
    if (m_asleep || !m_options.ownOutput) {
        return;
    }
    std::vector<std::string> sentences;
    WriteSentences(epoch, m_settings.sentences, sentences);
    for (std::string& sentence : sentences) {
        SendText(std::move(sentence), now);
    }
    RunReports(now, epoch);
}

void Receiver::RunReports(Millis now, const Epoch& epoch)
{
    const bool all = m_options.reports == ReportPolicy::All && epoch.utc % 1000 == 0;
    if (m_settings.solution || all) {
        SendFrame(MakeMessage(protocol::MsgTypeLoc, MakeLoc(epoch)), now);
    }
    if (m_settings.measurements || all) {
        SendFrame(MakeMessage(protocol::MsgTypeMeas, MakeMeas(epoch)), now);
    }
    if (!all) {
        return;
    }
    SendFrame(MakeMessage(protocol::MsgTypePdrComm, MakePdrComm(epoch, 1.0)), now);
    SendFrame(MakeMessage(protocol::MsgTypePdrMeas, MakePdrMeas(epoch)), now);
    SendFrame(MakeMessage(protocol::MsgTypePdrLs, MakePdrLs(epoch)), now);
    for (const std::uint16_t id : {protocol::CmdPps, protocol::CmdConstellations, protocol::CmdNmea}) {
        ReportChange(id, now);
    }
    const protocol::MsgTsensor sensor{static_cast<std::int16_t>(std::lround(epoch.temperature))};
    SendFrame(MakeMessage(protocol::MsgTypeTsensor, sensor), now);
    SendFrame(MakeMessage(protocol::MsgTypeFtmCn0, MakeFtmCn0(epoch)), now);
}

void Receiver::ReportChange(std::uint16_t commandId, Millis now)
{
    if (commandId == protocol::CmdPps) {
        SendFrame(
            MakeMessage(protocol::MsgTypePpsSts, protocol::MsgPpsSts{static_cast<std::uint8_t>(m_settings.pps)}),
            now);
    } else if (commandId == protocol::CmdConstellations) {
        protocol::MsgFixMode mode{0};
        for (std::size_t i = 0; i < kSystems; ++i) {
            mode.modeMask |= m_settings.systems[i] ? 1u << i : 0u;
        }
        SendFrame(MakeMessage(protocol::MsgTypeFixMode, mode), now);
    } else if (commandId == protocol::CmdNmea) {
        SendFrame(MakeMessage(protocol::MsgTypeNmeaMode, protocol::MsgNmeaMode{m_settings.sentences}), now);
    }
}

void Receiver::SendAck(std::uint16_t commandId, std::uint16_t status, Millis now)
{
    const Faults& faults = m_options.faults;
    if (faults.ackLost < 0 || m_acksLost < faults.ackLost) {
        ++m_acksLost;
        return;
    }
    const std::uint16_t named = faults.ackOther >= 0 ? static_cast<std::uint16_t>(faults.ackOther) : commandId;
    for (int i = 0; i < (faults.ackDouble ? 2 : 1); ++i) {
        if (faults.ackLateMillis > 0) {
            m_later.push_back({now + faults.ackLateMillis, MakeAck(named, status)});
        } else {
            SendFrame(MakeAck(named, status), now);
        }
    }
}

void Receiver::SendFrame(std::string frame, Millis now)
{
    if (m_options.product == protocol::kAtProduct) {
        std::string line(protocol::kAtHexReport);
        for (const char c : frame) {
            AppendHexByte(line, static_cast<std::uint8_t>(c), false);
        }
        line += "\r\n";
        frame.swap(line);
    }
    m_output.Put(now, std::move(frame));
}

void Receiver::SendText(std::string text, Millis now)
{
    m_output.Put(now, std::move(text));
}

} // namespace receiver
