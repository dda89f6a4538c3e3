// SPDX-License-Identifier: MIT
#pragma once

#include "seeds/Seed.h"

// The virtual receiver's sky as assistance data.

namespace seeds {

/// A seed with the model's satellites, one set of orbits of each system for each day. The validity must lie in
/// the range of Seed.h.
Seed MakeModelSeed(std::uint32_t issued, std::uint32_t validStart, std::uint32_t validEnd);

/// A grid of electron content around a place, stronger at low latitudes and in its afternoon.
protocol::AssistGrid MakeModelGrid(double latitude, double longitude, std::uint32_t time);

} // namespace seeds
