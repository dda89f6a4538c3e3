// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/AssistPayloads.h"
#include "seeds/SeedErrors.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

// A seed's content and its file image; docs/seed-format.md has the layout. Times are Unix seconds, UTC.

namespace seeds {

constexpr std::array<std::uint8_t, 8> kSeedMagic = {{0x89, 'G', 'W', 'S', 0x0D, 0x0A, 0x1A, 0x0A}};
constexpr std::uint16_t kSeedVersion = 1;
constexpr std::size_t kSeedHeaderSize = 32;
constexpr std::size_t kSeedSectionHeaderSize = 8;
constexpr std::size_t kSeedCheckSize = 4;
constexpr std::size_t kMaxSeedSize = 16u << 20;

/// File names tell times in ten digits, and items are made for up to four hours beside the validity.
constexpr std::uint32_t kEarliestSeedTime = 1000000000u + 14400u;
constexpr std::uint32_t kLatestSeedTime = 0xFFFFFFFFu - 14400u;
constexpr std::uint32_t kLongestSeedSpan = 60u * 86400u;

/// One satellite's elements; node and argument hold at the epoch of their set.
struct SeedOrbit {
    std::uint8_t number = 0; ///< in its system, from 1
    std::uint8_t health = 0;
    std::int8_t channel = 0;
    std::uint8_t carriers = 1;
    double radius = 0.0;
    double inclination = 0.0;
    double node = 0.0;
    double argument = 0.0;
};

/// The satellites of a system for a part of the validity.
struct SeedOrbitSet {
    std::uint32_t epoch = 0;
    std::uint32_t from = 0;  ///< inclusive
    std::uint32_t until = 0; ///< exclusive
    std::vector<SeedOrbit> orbits;
};

struct SeedSystem {
    std::vector<SeedOrbitSet> sets; ///< in order of time, without gaps
    std::optional<protocol::AssistIntegrity> integrity;
};

struct Seed {
    std::uint32_t issued = 0;
    std::uint32_t validStart = 0;
    std::uint32_t validEnd = 0;
    std::array<SeedSystem, protocol::kAssistSystems> systems;
    std::optional<protocol::AssistUtc> utc;
    std::optional<protocol::AssistIonosphere> ionosphere;
};

std::vector<std::uint8_t> PackSeed(const Seed& seed);

/// Reads an image of any content. `seed` is undefined when the result is not None. Throws std::bad_alloc only.
SeedError ParseSeed(const std::uint8_t* bytes, std::size_t length, Seed& seed);

} // namespace seeds
