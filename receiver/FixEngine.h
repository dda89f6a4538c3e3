// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Epoch.h"
#include "receiver/Memory.h"
#include "receiver/Random.h"

namespace receiver {

struct Distribution {
    double mean = 0.0;
    double deviation = 0.0;
};

struct FixTimes {
    Distribution cold{28.0, 3.0};
    Distribution hot{1.2, 0.3};
};

enum class StartKind { Cold, Warm, Assisted, Hot };
const char* NameOf(StartKind kind);

/// Searching, tracking and the moment of the first fix. Its clock is the utc handed in.
class FixEngine {
public:
    FixEngine(std::uint64_t seed, const FixTimes& times) : m_random(seed), m_seed(seed), m_times(times) {}

    Memory& Known() { return m_memory; }
    const Memory& Known() const { return m_memory; }

    /// `views`: the satellites above now. `coldFactor` scales the time of a start that is not hot.
    void Start(Millis utc, const std::vector<SatelliteView>& views, double coldFactor);
    void Stop();

    /// What was injected may shorten a search that runs.
    void KnowledgeGrew(Millis utc, const std::vector<SatelliteView>& views);

    /// Never fixes while set.
    void Block(bool blocked) { m_blocked = blocked; }

    /// Fills the epoch's satellites, flags and dilutions; `views` in, tracking state out.
    void Step(Millis utc, const std::vector<SatelliteView>& views, Epoch& epoch);

    bool Fixed() const { return m_firstFix >= 0; }
    StartKind Kind() const { return m_kind; }
    Millis StartedAt() const { return m_startedAt; }
    /// When the first fix will be possible; the epoch that shows it is the first one from then on.
    Millis FixDue() const { return m_fixDue; }

private:
    struct Channel {
        Millis acquireAt = -1; ///< -1: not searched yet
        Millis trackedSince = -1;
    };

    StartKind Judge(Millis utc, const std::vector<SatelliteView>& views) const;
    Distribution TimesOf(StartKind kind) const;
    void LearnFrom(Millis utc, const std::vector<EpochSatellite>& satellites, bool all);

    Random m_random;
    std::uint64_t m_seed;
    FixTimes m_times;
    Memory m_memory;
    std::vector<Channel> m_channels = std::vector<Channel>(AllOrbits().size());
    StartKind m_kind = StartKind::Cold;
    bool m_blocked = false;
    std::uint64_t m_starts = 0;
    double m_draw = 0.0;
    double m_coldFactor = 1.0;
    Millis m_startedAt = 0;
    Millis m_fixDue = 0;
    Millis m_firstFix = -1;
};

} // namespace receiver
