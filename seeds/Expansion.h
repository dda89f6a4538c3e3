// SPDX-License-Identifier: MIT
#pragma once

#include "seeds/Seed.h"

#include <string>
#include <vector>

namespace seeds {

/// A file of the decoder's output: the payload of one assistance item.
struct OutputFile {
    std::string name;
    std::vector<std::uint8_t> bytes;
};

/// Seconds for which an ephemeris serves before and after its own moment; ephemerides are made at whole
/// multiples of it.
std::uint16_t EphemerisFit(protocol::AssistSystem system);

/// The system's name in file names.
const char* FilePrefix(protocol::AssistSystem system);

/// The satellites of a system, with elements that hold at `toe`. Outside the validity the nearest set is taken.
std::vector<protocol::AssistOrbit> OrbitsAt(const Seed& seed, protocol::AssistSystem system, std::uint32_t toe);

/// Frequency channels and carriers of a system's satellites at a moment.
std::vector<protocol::AssistChannel> ChannelsAt(const Seed& seed, protocol::AssistSystem system,
                                                std::uint32_t time);

/// All files for a moment: of each system the ephemerides of the multiple of its fit that is nearest behind
/// `time` (GLONASS: nearest at all) and of its two neighbours, then the seven data files.
SeedError ExpandSeed(const Seed& seed, std::uint32_t time, std::vector<OutputFile>& files);

} // namespace seeds
