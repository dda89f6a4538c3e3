// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"
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

using OptionsResult = cli::Result;

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

} // namespace service
