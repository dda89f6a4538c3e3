// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"

#include <string>
#include <vector>

namespace tools {

enum class Command { Info, Nmea, Csv, Gpx, Kml, GeoJson };

struct Options {
    Command command = Command::Info;
    std::string input = "-"; ///< path, or "-" for standard input
    bool inputGiven = false;
    std::string output; ///< path; empty for standard output
    bool json = false;
    bool progress = true; ///< allowed, where there is a terminal to show it on
};

using OptionsResult = cli::Result;

/// Reads what follows the program's name. Options and the file may stand in any order; "--" ends the options.
OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

} // namespace tools
