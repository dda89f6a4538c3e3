// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Configuration.h"
#include "receiver/FixEngine.h"
#include "receiver/Motion.h"
#include "receiver/ReceiverOptions.h"
#include "receiver/Sky.h"

#include <vector>

namespace receiver {

/// The positioning of the chip: what it receives of the sky, its start and stop, and an epoch at each even part of
/// the second. Options and settings are the receiver's and outlive it.
class Positioning {
public:
    Positioning(const ReceiverOptions& options, const Configuration& settings);
    Positioning(const Positioning&) = delete;
    Positioning& operator=(const Positioning&) = delete;

    void Start(Millis now);
    void Stop();
    bool Running() const { return m_running; }

    /// Finds the next epoch after `now`; a new update rate counts from here.
    void ScheduleEpoch(Millis now);
    Millis NextEpoch() const { return m_nextEpoch; }
    Epoch RunEpoch(Millis now);

    FixEngine& Engine() { return m_engine; }
    const FixEngine& Engine() const { return m_engine; }
    /// What was injected may shorten a search that runs.
    void KnowledgeGrew(Millis now);

    Millis UtcAt(Millis now) const { return m_options.utcAtPowerOn + now; }
    /// Where the antenna truly is.
    MotionState TruthAt(Millis now) const { return m_options.motion.At(static_cast<double>(now) / 1000.0); }

private:
    std::vector<SatelliteView> ViewsAt(Millis now) const;

    const ReceiverOptions& m_options;
    const Configuration& m_settings;
    Sky m_sky;
    FixEngine m_engine;
    PositionWander m_wander;
    bool m_running = false;
    Millis m_nextEpoch = kNever;
    Millis m_lastEpoch = 0;
};

} // namespace receiver
