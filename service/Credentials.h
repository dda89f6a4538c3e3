// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace service {

/// What a client proves itself with.
struct Credentials {
    std::string appid; ///< 9 characters
    std::string key;   ///< 64 upper-case hexadecimal digits, used as they stand
};

/// Reads client.conf of a folder, or makes a key of its own and writes the file, readable by its owner only.
/// Empty on success, else what is wrong.
std::string LoadCredentials(const std::string& folder, Credentials& credentials);

} // namespace service
