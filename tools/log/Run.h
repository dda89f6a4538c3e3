// SPDX-License-Identifier: MIT
#pragma once

#include "tools/log/ExitCode.h"
#include "tools/log/Options.h"

namespace tools {

/// Carries out a command; messages go to standard error, one line each, "gnss-log: WHAT: WHY".
ExitCode Run(const Options& options);

} // namespace tools
