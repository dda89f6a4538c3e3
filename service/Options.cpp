// SPDX-License-Identifier: MIT
#include "service/Options.h"

#include "receiver/TextNumbers.h"

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
    cli::Parser line("unknown option \"", "\" (--help lists them)");
    line.RefuseJoined();
    const auto add = [&line](const std::string& name, const cli::Parser::TakeValue& take) {
        line.AddOption(name, "a value", [name, take](const std::string& value, std::string& error) {
            error = name + " needs a value";
            return !value.empty() && take(value, error);
        });
    };
    line.AddAnswer("--help", [] { return kHelp; });
    line.AddAnswer("--list-faults", ServiceFaults::List);
    line.AddFlag("--die-with-parent", options.dieWithParent);
    add("--folder", [&](const std::string& value, std::string&) {
        options.folder = value;
        return true;
    });
    add("--port", [&](const std::string& value, std::string& error) {
        std::uint64_t port = 0;
        const bool good = receiver::ParseUnsigned64(value, port) && port <= 65535;
        options.port = static_cast<std::uint16_t>(port);
        error = "--port: no such port";
        return good;
    });
    add("--fault", [&](const std::string& value, std::string& error) { return options.faults.Add(value, error); });
    return line.Read(arguments, text);
}

} // namespace service
