#include "tools/log/Run.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    gnsslog::Options options;
    std::string text;
    switch (gnsslog::ParseOptions(arguments, options, text)) {
    case gnsslog::OptionsResult::Told:
        return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? gnsslog::kDone
                                                                                 : gnsslog::kOutputFailed;
    case gnsslog::OptionsResult::Bad:
        std::fprintf(stderr, "gnss-log: %s (--help tells more)\n", text.c_str());
        return gnsslog::kUsage;
    case gnsslog::OptionsResult::Run:
        break;
    }
    return gnsslog::Run(options);
}
