// SPDX-License-Identifier: MIT
#pragma once

#include "service/ServiceFaults.h"

#include <string>
#include <vector>

namespace service {

struct Options {
    std::string folder = "."; ///< where certificate and credentials are kept
    std::uint16_t port = 0;
    bool dieWithParent = false;
    ServiceFaults faults;
};

enum class OptionsResult {
    Run,
    Told, ///< `text` is what was asked for
    Bad,  ///< `text` says what is wrong
};

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

} // namespace service
