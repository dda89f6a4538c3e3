// SPDX-License-Identifier: MIT
#pragma once

#include "cli/CommandLine.h"
#include "receiver/Receiver.h"

#include <string>
#include <vector>

namespace receiver {

struct Options {
    ReceiverOptions receiver;
    bool timeGiven = false; ///< otherwise the receiver's time is the system's
    std::string link;
    std::string capture;
    double speed = 1.0; ///< 0: as fast as the line takes it
    bool repeat = false;
    std::string transcript;
    bool dieWithParent = false;
};

using OptionsResult = cli::Result;

/// `arguments` without the program's name. Reads the track file, if one is named.
OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

bool ReadWholeFile(const std::string& path, std::string& content);

} // namespace receiver
