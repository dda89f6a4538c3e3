// SPDX-License-Identifier: MIT
#pragma once

namespace tools {

/// What the program tells its caller. Scripts go by these numbers.
enum ExitCode {
    kDone = 0,
    kNothingFound = 1, ///< the input was read to its end and holds nothing of what was asked for
    kUsage = 2,
    kInputFailed = 3,
    kOutputFailed = 4,
};

} // namespace tools
