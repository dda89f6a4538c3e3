// SPDX-License-Identifier: MIT
#include "tools/log/Run.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    tools::Options options;
    std::string text;
    switch (tools::ParseOptions(arguments, options, text)) {
    case tools::OptionsResult::Told:
        return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? tools::kDone
                                                                                 : tools::kOutputFailed;
    case tools::OptionsResult::Bad:
        std::fprintf(stderr, "gnss-log: %s (--help tells more)\n", text.c_str());
        return tools::kUsage;
    case tools::OptionsResult::Run:
        break;
    }
    return tools::Run(options);
}
