// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace service {

/// The whole of a regular file; false when it cannot be read.
bool ReadFile(const std::string& path, std::string& text);

/// Writes a file that only its owner may read, in one step: whoever reads the path finds the old file or the
/// whole new one.
bool WritePrivateFile(const std::string& path, const std::string& text);

} // namespace service
