// SPDX-License-Identifier: MIT
#include "receiver/FixEngine.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

constexpr double kAcquireCn0 = 19.0;
constexpr double kLoseCn0 = 16.0;
constexpr double kUseCn0 = 22.0;
constexpr double kUseElevation = 5.0;
constexpr int kMostUsedPerSystem = 12;
constexpr std::size_t kEphemeridesForHot = 5;
constexpr Millis kEphemerisReadTime = 30000;
constexpr Millis kAlmanacReadTime = 750000;
constexpr double kShortestSearch = 0.1;

// Between hot (0) and cold (1).
constexpr double kWarmShare = 0.8;
constexpr double kAssistedShare = 0.12;

} // namespace

const char* NameOf(StartKind kind)
{
    switch (kind) {
    case StartKind::Hot:
        return "HOT";
    case StartKind::Assisted:
        return "ASSISTED";
    case StartKind::Warm:
        return "WARM";
    case StartKind::Cold:
        break;
    }
    return "COLD";
}

StartKind FixEngine::Judge(Millis utc, const std::vector<SatelliteView>& views) const
{
    std::size_t ephemerides = 0;
    for (const SatelliteView& view : views) {
        if (view.look.elevation >= kUseElevation && m_memory.HasEphemeris(view.index, utc)) {
            ++ephemerides;
        }
    }
    if (ephemerides >= kEphemeridesForHot) {
        return m_memory.timeKnown && m_memory.positionKnown ? StartKind::Hot : StartKind::Assisted;
    }
    if (m_memory.positionKnown && (m_memory.timeKnown || m_memory.almanacKnown)) {
        return StartKind::Warm;
    }
    return StartKind::Cold;
}

Distribution FixEngine::TimesOf(StartKind kind) const
{
    double share = 1.0;
    switch (kind) {
    case StartKind::Hot:
        share = 0.0;
        break;
    case StartKind::Assisted:
        share = kAssistedShare;
        break;
    case StartKind::Warm:
        share = kWarmShare;
        break;
    case StartKind::Cold:
        break;
    }
    const double factor = share * m_coldFactor;
    return {m_times.hot.mean + factor * (m_times.cold.mean - m_times.hot.mean),
            m_times.hot.deviation + share * (m_times.cold.deviation - m_times.hot.deviation)};
}

void FixEngine::Start(Millis utc, const std::vector<SatelliteView>& views, double coldFactor)
{
    Stop();
    ++m_starts;
    m_coldFactor = coldFactor;
    m_startedAt = utc;
    m_draw = m_random.Gaussian();
    m_kind = Judge(utc, views);
    const Distribution times = TimesOf(m_kind);
    m_fixDue = utc + std::llround(std::max(times.mean + m_draw * times.deviation, kShortestSearch) * 1000.0);
}

void FixEngine::Stop()
{
    m_firstFix = -1;
    std::fill(m_channels.begin(), m_channels.end(), Channel());
}

void FixEngine::KnowledgeGrew(Millis utc, const std::vector<SatelliteView>& views)
{
    const StartKind kind = Judge(utc, views);
    if (Fixed() || static_cast<int>(kind) <= static_cast<int>(m_kind)) {
        return;
    }
    m_kind = kind;
    const Distribution times = TimesOf(kind);
    const Millis due =
        utc + std::llround(std::max(times.mean + m_draw * times.deviation, kShortestSearch) * 1000.0);
    m_fixDue = std::min(m_fixDue, due);
    for (Channel& channel : m_channels) {
        if (channel.trackedSince < 0) {
            channel.acquireAt = -1;
        }
    }
}

void FixEngine::LearnFrom(Millis utc, const std::vector<EpochSatellite>& satellites, bool all)
{
    for (const EpochSatellite& satellite : satellites) {
        const Channel& channel = m_channels[satellite.view.index];
        if (satellite.tracked && (all || utc - channel.trackedSince >= kEphemerisReadTime)) {
            m_memory.ephemerisUntil[satellite.view.index] = utc + EphemerisLife(satellite.view.orbit->system);
        }
    }
}

void FixEngine::Step(Millis utc, const std::vector<SatelliteView>& views, Epoch& epoch)
{
    const Millis search = std::max<Millis>(m_fixDue - m_startedAt, 1);
    epoch.satellites.clear();
    epoch.satellites.reserve(views.size());
    for (const SatelliteView& view : views) {
        Channel& channel = m_channels[view.index];
        const double strongest = std::max(view.cn0[0], view.cn0[1]);
        if (channel.acquireAt < 0) {
            // Before the first fix the channels lock one after the other; later a rising satellite is found
            // within seconds.
            const double share = UnitFromBits(MixKeys(m_seed, m_starts, view.index));
            channel.acquireAt = Fixed() ? utc + static_cast<Millis>(1000 + 7000 * share)
                                        : m_startedAt + static_cast<Millis>((0.05 + 0.8 * share * share) *
                                                                            static_cast<double>(search));
        }
        if (channel.trackedSince < 0 && strongest >= kAcquireCn0 && utc >= channel.acquireAt) {
            channel.trackedSince = utc;
        } else if (channel.trackedSince >= 0 && strongest < kLoseCn0) {
            channel = Channel();
        }
        EpochSatellite satellite;
        satellite.view = view;
        satellite.tracked = channel.trackedSince >= 0;
        epoch.satellites.push_back(satellite);
    }
    // A satellite that set and comes back is searched anew.
    std::size_t next = 0;
    for (std::size_t i = 0; i < m_channels.size(); ++i) {
        if (next < views.size() && views[next].index == i) {
            ++next;
        } else {
            m_channels[i] = Channel();
        }
    }

    const bool due = utc >= m_fixDue && !m_blocked;
    if (!m_memory.timeKnown && (due || utc >= m_startedAt + search / 2) && !m_blocked) {
        m_memory.timeKnown = true;
    }
    if (due && !Fixed()) {
        // What the search had to read before it could fix at all.
        LearnFrom(utc, epoch.satellites, true);
    }
    if (!m_blocked) {
        LearnFrom(utc, epoch.satellites, false);
    }

    for (std::size_t s = 0; s < kSystems; ++s) {
        std::vector<EpochSatellite*> usable;
        for (EpochSatellite& satellite : epoch.satellites) {
            if (static_cast<std::size_t>(satellite.view.orbit->system) == s && satellite.tracked &&
                satellite.view.look.elevation >= kUseElevation &&
                std::max(satellite.view.cn0[0], satellite.view.cn0[1]) >= kUseCn0 &&
                m_memory.HasEphemeris(satellite.view.index, utc)) {
                usable.push_back(&satellite);
            }
        }
        std::stable_sort(usable.begin(), usable.end(), [](const EpochSatellite* a, const EpochSatellite* b) {
            return a->view.look.elevation > b->view.look.elevation;
        });
        for (std::size_t i = 0; i < usable.size() && i < kMostUsedPerSystem; ++i) {
            usable[i]->used = due;
        }
    }
    epoch.fixed = due && ComputeDilution(epoch.satellites, epoch.pdop, epoch.hdop, epoch.vdop);
    if (epoch.fixed && !Fixed()) {
        m_firstFix = utc;
        for (Channel& channel : m_channels) {
            if (channel.trackedSince < 0) {
                channel.acquireAt = -1;
            }
        }
    }
    if (Fixed() && utc - m_firstFix >= kAlmanacReadTime) {
        m_memory.almanacKnown = true;
    }
    for (EpochSatellite& satellite : epoch.satellites) {
        if (!epoch.fixed) {
            satellite.used = false;
        }
        satellite.located = m_memory.timeKnown && (m_memory.positionKnown || epoch.fixed) &&
                            (m_memory.almanacKnown || m_memory.HasEphemeris(satellite.view.index, utc));
        epoch.usedCount += satellite.used ? 1 : 0;
        epoch.trackedCount += satellite.tracked ? 1 : 0;
    }
    epoch.timeKnown = m_memory.timeKnown;
    epoch.startKind = NameOf(m_kind);
    if (Fixed()) {
        epoch.timeToFirstFix = static_cast<double>(m_firstFix - m_startedAt) / 1000.0;
    }
}

} // namespace receiver
