// SPDX-License-Identifier: MIT
#pragma once

#include "seeds/SeedErrors.h"

#include <string>

namespace seeds {

/// Writes the sample scene library into an existing directory: sence.json and a folder for each scene.
SeedError WriteSampleScenes(const std::string& directory);

} // namespace seeds
