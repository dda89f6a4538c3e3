// SPDX-License-Identifier: MIT
#include "tools/log/Options.h"

#include <algorithm>
#include <iterator>

namespace tools {

namespace {

using cli::Bad;
using cli::Told;
using cli::Verdict;

struct CommandText {
    Command command;
    const char* name;
    const char* summary;
    const char* details;
};

constexpr CommandText kCommands[] = {
    {Command::Info, "info", "tells what a capture holds",
     R"(Span, rate, sentences by type, checksum errors, fixes, first fix, satellites and
C/N0 per constellation, and gaps.

  --json              one JSON object in the place of the text
)"},
    {Command::Nmea, "nmea", "pulls the NMEA sentences out of a capture",
     R"(A sentence begins with '$', holds no second '$', ends in '*', two bytes, CR and LF
and has 10 to 127 bytes. The checksum is not compared, and sentences come out
byte for byte as they went in.
)"},
    {Command::Csv, "csv", "writes the fixes as comma-separated values",
     R"(One line per fix: time, latitude, longitude, altitude, fixmode, speed (m/s), course,
pdop, hdop, vdop, sat. A value that the capture does not tell is left empty.
)"},
    {Command::Gpx, "gpx", "writes the fixes as a GPX 1.1 track",
     "A new segment begins after each loss of the fix and each gap of more than a minute.\n"},
    {Command::Kml, "kml", "writes the fixes as a KML 2.2 track",
     "A new track begins after each loss of the fix and each gap of more than a minute.\n"},
    {Command::GeoJson, "geojson", "writes the fixes as GeoJSON points",
     "One feature per fix, with time, altitude, fixmode and the rest as properties.\n"},
};

constexpr char kCommonOptions[] =
    R"(  -o, --output FILE   writes there and not to standard output
      --no-progress   shows no progress bar on a terminal
  -h, --help          this text
)";

constexpr char kExitCodes[] = R"(Exit status: 0 done, 1 nothing found, 2 wrong usage, 3 the input cannot be read,
4 the output cannot be written.
)";

const CommandText* Find(const std::string& name)
{
    const auto* found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                     [&](const CommandText& entry) { return name == entry.name; });
    return found != std::end(kCommands) ? found : nullptr;
}

std::string GeneralHelp()
{
    std::string text = "gnss-log: what captures of GNSS receivers hold\n\n"
                       "usage: gnss-log COMMAND [OPTION]... [FILE]\n\n";
    for (const CommandText& entry : kCommands) {
        text += std::string("  ") + entry.name + std::string(9 - std::string(entry.name).size(), ' ') +
                entry.summary + "\n";
    }
    text += "\nWithout FILE, or with -, standard input is read.\n"
            "gnss-log COMMAND --help tells more, gnss-log --version the version.\n\n";
    return text + kExitCodes;
}

std::string CommandHelp(const CommandText& entry)
{
    return std::string("gnss-log ") + entry.name + ": " + entry.summary + "\n\nusage: gnss-log " + entry.name +
           " [OPTION]... [FILE]\n\n" + entry.details + (entry.command == Command::Info ? "" : "\n") +
           kCommonOptions + "\nWithout FILE, or with -, standard input is read.\n" + kExitCodes;
}

Verdict HelpFor(const std::string& name)
{
    if (name.empty()) {
        return Told(GeneralHelp());
    }
    const CommandText* command = Find(name);
    return command != nullptr ? Told(CommandHelp(*command)) : Bad("unknown command " + name);
}

bool TakeOutput(const std::string& path, Options& options, std::string& error)
{
    if (path.empty() || !options.output.empty()) {
        error = path.empty() ? "-o needs a file" : "more than one output given";
        return false;
    }
    options.output = path;
    return true;
}

Verdict TakeInput(const std::string& path, Options& options)
{
    if (options.inputGiven) {
        return Bad("more than one file given");
    }
    if (path.empty()) {
        return Bad("the name of the file is empty");
    }
    options.inputGiven = true;
    options.input = path;
    return {};
}

Verdict TakeCommand(const std::string& name, const CommandText*& command, Options& options)
{
    command = Find(name);
    if (command == nullptr) {
        return Bad("unknown command " + name);
    }
    options.command = command->command;
    return {};
}

} // namespace

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text)
{
    const CommandText* command = nullptr;
    cli::Parser line("unknown option ", "");
    line.AddAnswer("-h,--help", [&] { return command != nullptr ? CommandHelp(*command) : GeneralHelp(); });
    line.AddAnswer("--version", [] { return "gnss-log " GNSS_VERSION "\n"; });
    line.AddFlag("--json", options.json);
    line.AddFlag("--no-progress", options.progress, false);
    line.AddOption("-o,--output", "a file",
                   [&](const std::string& path, std::string& error) { return TakeOutput(path, options, error); });
    line.AddWords([&](const std::string& word, const std::string& next) {
        if (command != nullptr) {
            return TakeInput(word, options);
        }
        return word == "help" ? HelpFor(next) : TakeCommand(word, command, options);
    });
    const OptionsResult result = line.Read(arguments, text);
    if (result != OptionsResult::Run) {
        return result;
    }
    if (command == nullptr) {
        text = "no command given";
        return OptionsResult::Bad;
    }
    if (options.json && options.command != Command::Info) {
        text = "--json belongs to info";
        return OptionsResult::Bad;
    }
    return OptionsResult::Run;
}

} // namespace tools
