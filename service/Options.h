#pragma once

#include "service/ServiceFaults.h"
#include "tools/cli/CommandLine.h"

#include <string>
#include <vector>

namespace assistance {

struct Options {
    std::string folder = "."; ///< where certificate and credentials are kept
    std::uint16_t port = 0;
    bool dieWithParent = false;
    ServiceFaults faults;
};

using OptionsResult = commandline::Result;

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

} // namespace assistance
