#pragma once

#include "receiver/Receiver.h"
#include "tools/cli/CommandLine.h"

#include <string>
#include <vector>

namespace vrx {

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

using OptionsResult = commandline::Result;

/// `arguments` without the program's name. Reads the track file, if one is named.
OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text);

bool ReadWholeFile(const std::string& path, std::string& content);

} // namespace vrx
