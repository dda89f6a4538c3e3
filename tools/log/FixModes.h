// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"

namespace tools {

struct FixModeName {
    const char* name; ///< as written to all formats
    const char* gpx;  ///< the nearest of the values that GPX allows
};

/// By fix mode; every value from 0 to 8 has one.
constexpr FixModeName kFixModes[] = {
    {"invalid", "none"},   {"autonomous", "3d"},  {"differential", "dgps"},
    {"pps", "pps"},        {"rtk-fixed", "dgps"}, {"rtk-float", "dgps"},
    {"estimated", "none"}, {"manual", "none"},    {"simulated", "none"},
};
constexpr std::size_t kFixModeCount = sizeof kFixModes / sizeof kFixModes[0];
static_assert(kFixModeCount == protocol::FixSimulated + 1);

inline const FixModeName& NameOfFixMode(std::uint8_t mode)
{
    return kFixModes[mode < kFixModeCount ? mode : 0];
}

} // namespace tools
