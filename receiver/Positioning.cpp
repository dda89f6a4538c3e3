// SPDX-License-Identifier: MIT
#include "receiver/Positioning.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

constexpr double kNoFixAttenuation = 21.0;
constexpr double kSpeedForCourse = 0.3;
constexpr Millis kKeptEphemeris = 3600000;

// The share of a cold start's time that the priority settings cost, and by how much they spoil the first
// fixes: a quick fix is a rough one.
constexpr double kPriorityTime[] = {0.95, 0.85, 1.0};
constexpr double kPriorityError[] = {1.3, 2.0, 1.0};
constexpr Millis kRoughFixTime = 20000;

} // namespace

Positioning::Positioning(const ReceiverOptions& options, const Configuration& settings)
    : m_options(options), m_settings(settings), m_sky(Seeded(options.seed, BranchSky)),
      m_engine(Seeded(options.seed, BranchEngine), options.times),
      m_wander(Seeded(options.seed, BranchWander), options.errorMetres)
{
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
}

std::vector<SatelliteView> Positioning::ViewsAt(Millis now) const
{
    return m_sky.Above(TruthAt(now).place, UtcAt(now), m_settings.systems);
}

void Positioning::ScheduleEpoch(Millis now)
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

void Positioning::Start(Millis now)
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

void Positioning::Stop()
{
    m_running = false;
    m_nextEpoch = kNever;
    m_engine.Stop();
}

Epoch Positioning::RunEpoch(Millis now)
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
    return epoch;
}

void Positioning::KnowledgeGrew(Millis now)
{
    if (m_running) {
        m_engine.KnowledgeGrew(UtcAt(now), ViewsAt(now));
    }
}

} // namespace receiver
