// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Faults.h"
#include "receiver/FixEngine.h"
#include "receiver/Motion.h"
#include "receiver/Random.h"

#include <cstdint>

namespace receiver {

enum class ReportPolicy {
    None,    ///< only what the host asks for
    Changes, ///< also the settings' messages, when a setting changes
    All,     ///< every message type, once a second
};

struct ReceiverOptions {
    std::uint64_t seed = 1;
    int product = 0;
    int rateHz = 1;
    Geodetic place{47.3977, 8.5456, 408.0};
    Motion motion = Motion::Still({47.3977, 8.5456, 408.0});
    Millis utcAtPowerOn = 0;
    FixTimes times;
    double errorMetres = 1.5; ///< median horizontal error
    bool idle = false;        ///< waits for a start command
    bool memoryKept = false;  ///< knows at power-on what it would have kept from a session just before
    bool ownOutput = true;    ///< false: commands are answered, but no epoch is ever sent
    ReportPolicy reports = ReportPolicy::Changes;
    Faults faults;
};

/// The seed's branches, so that one part's draws never shift another's.
enum Branch : std::uint64_t { BranchSky = 1, BranchEngine, BranchWander, BranchLine, BranchMotion, BranchClock };

inline std::uint64_t Seeded(std::uint64_t seed, Branch branch)
{
    return MixKeys(seed, branch);
}

} // namespace receiver
