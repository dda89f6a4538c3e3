// SPDX-License-Identifier: MIT
#include "service/Options.h"

#include <charconv>

namespace service {

namespace {

constexpr char kHelp[] =
    R"(assist-service: a local assistance service over HTTPS, for the virtual receiver's sky

usage: assist-service [OPTION]...

  --folder DIR          where its certificate and the client's id and key are kept; they are
                        made there on first use (the current folder)
  --port N              TCP port on the loopback address (any that is free)
  --die-with-parent     ends when the program that started it ends
  --fault NAME[=VALUE]  shows a fault; may be given several times
  --list-faults         tells them all
  --help                this text

Prints "ready https://127.0.0.1:PORT" when it can be asked. DIR/certificate.pem is the authority that a
client must trust, DIR/client.conf holds the application id and the key.
)";

} // namespace

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text)
{
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        std::string value;
        bool given = false;
        if (name == "--help" || name == "--list-faults") {
            text = name == "--help" ? kHelp : ServiceFaults::List();
            return OptionsResult::Told;
        }
        if (name == "--die-with-parent") {
            options.dieWithParent = true;
            continue;
        }
        if (name != "--folder" && name != "--port" && name != "--fault") {
            text = "unknown option \"" + name + "\" (--help lists them)";
            return OptionsResult::Bad;
        }
        if (i + 1 < arguments.size()) {
            value = arguments[++i];
            given = !value.empty();
        }
        if (!given) {
            text = name + " needs a value";
            return OptionsResult::Bad;
        }
        if (name == "--folder") {
            options.folder = value;
        } else if (name == "--port") {
            const char* end = value.data() + value.size();
            const auto result = std::from_chars(value.data(), end, options.port);
            if (result.ec != std::errc() || result.ptr != end) {
                text = "--port: no such port";
                return OptionsResult::Bad;
            }
        } else if (!options.faults.Add(value, text)) {
            return OptionsResult::Bad;
        }
    }
    return OptionsResult::Run;
}

} // namespace service
