// SPDX-License-Identifier: MIT
#pragma once

#include "seeds/Expansion.h"

#include <cstdint>
#include <string>

// Files by their UTF-8 paths.

namespace seeds {

SeedError ReadSeedFile(const std::string& path, Seed& seed);

/// Writes one file as a whole, in the place of a link of that name too; false, with no file left, when that fails.
bool WriteWholeFile(const std::string& path, const std::vector<std::uint8_t>& bytes);

/// Writes files into a directory, in the place of files of the same names. After a failure none of them is left.
SeedError WriteFiles(const std::string& directory, const std::vector<OutputFile>& files);

} // namespace seeds
