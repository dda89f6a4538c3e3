// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace receiver {

/// The faults that a run is asked to show. A fresh one shows none.
class Faults {
public:
    /// Takes "NAME" or "NAME=VALUE". On failure `error` says what is wrong.
    bool Add(std::string_view text, std::string& error);

    /// One line for each fault.
    static std::string List();

    bool silence = false;
    double silenceFrom = 0.0; ///< seconds
    std::int64_t ackLost = 0; ///< how many acknowledgements are lost; -1: all
    std::int64_t ackLateMillis = 0;
    bool ackDouble = false;
    int ackOther = -1;            ///< id to acknowledge in the place of the command's
    int refuse = -1;              ///< status that every command gets
    std::int64_t garbageRate = 0; ///< bytes a second
    int cutPercent = 0;
    int badChecksumPercent = 0;
    std::int64_t bytesPerSecond = 0; ///< 0: no limit
    double unplugAt = -1.0;          ///< seconds; below 0: never
    double replugAfter = -1.0;       ///< seconds
    double sleepAt = -1.0;           ///< seconds
    double wakeRequestAfter = 2.0;   ///< seconds; 0: none
    bool noFix = false;
    std::int64_t loaderWrong = 0;       ///< which of the loader's answers has a wrong byte; 0: none
    std::int64_t loaderMute = 0;        ///< from which on there is none; 0: never
    std::int64_t loaderLateMillis = 0;  ///< how much later they come
    std::int64_t loaderSplitMillis = 0; ///< how long after its first byte the rest of each comes; 0: with it
};

} // namespace receiver
