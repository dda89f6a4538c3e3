// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/NmeaWriter.h"

#include <array>
#include <cstdint>

namespace receiver {

/// The settings that the ten configuration commands write.
struct Configuration {
    std::array<bool, kSystems> systems{{true, true, true, true, true}};
    bool coldAtEveryStart = false;
    std::uint8_t sentences = kAllSentences;
    bool acquisitionLowPower = false;
    bool trackingLowPower = false;
    std::array<std::uint8_t, 3> antiJam{{1, 1, 0}};
    int rateHz = 1;
    bool pps = false;
    std::uint8_t ppsWidth = 0; ///< milliseconds
    bool measurements = false;
    bool solution = false;
    std::uint8_t priority = 2; ///< 0 automatic, 1 time to first fix, 2 accuracy
};

} // namespace receiver
