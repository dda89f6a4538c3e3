// SPDX-License-Identifier: MIT
#include "tools/log/Options.h"

#include <algorithm>
#include <iterator>

namespace tools {

namespace {

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

class Parser {
public:
    Parser(const std::vector<std::string>& arguments, Options& options, std::string& text)
        : m_arguments(arguments), m_options(options), m_text(text)
    {
    }

    OptionsResult Run();

private:
    OptionsResult Bad(const std::string& what)
    {
        m_text = what;
        return OptionsResult::Bad;
    }
    OptionsResult Told(const std::string& what)
    {
        m_text = what;
        return OptionsResult::Told;
    }
    OptionsResult TakeOption(const std::string& argument);
    OptionsResult TakeOutput(const std::string& path);
    OptionsResult TakeWord(const std::string& word);
    OptionsResult Help(const std::string& name);

    const std::vector<std::string>& m_arguments;
    Options& m_options;
    std::string& m_text;
    std::size_t m_next = 0;
    const CommandText* m_command = nullptr;
};

OptionsResult Parser::Run()
{
    bool onlyWords = false;
    while (m_next < m_arguments.size()) {
        const std::string& argument = m_arguments[m_next++];
        OptionsResult result = OptionsResult::Run;
        if (!onlyWords && argument == "--") {
            onlyWords = true;
        } else if (!onlyWords && argument.size() > 1 && argument[0] == '-') {
            result = TakeOption(argument);
        } else {
            result = TakeWord(argument);
        }
        if (result != OptionsResult::Run) {
            return result;
        }
    }
    if (m_command == nullptr) {
        return Bad("no command given");
    }
    if (m_options.json && m_options.command != Command::Info) {
        return Bad("--json belongs to info");
    }
    return OptionsResult::Run;
}

OptionsResult Parser::TakeOption(const std::string& argument)
{
    const std::string outputName = "--output=";
    if (argument == "-h" || argument == "--help") {
        return Told(m_command != nullptr ? CommandHelp(*m_command) : GeneralHelp());
    }
    if (argument == "--version") {
        return Told("gnss-log " GNSS_VERSION "\n");
    }
    if (argument == "--json") {
        m_options.json = true;
        return OptionsResult::Run;
    }
    if (argument == "--no-progress") {
        m_options.progress = false;
        return OptionsResult::Run;
    }
    if (argument == "-o" || argument == "--output") {
        if (m_next == m_arguments.size()) {
            return Bad(argument + " needs a file");
        }
        return TakeOutput(m_arguments[m_next++]);
    }
    if (argument.compare(0, outputName.size(), outputName) == 0) {
        return TakeOutput(argument.substr(outputName.size()));
    }
    if (argument.size() > 2 && argument[1] == 'o') {
        return TakeOutput(argument.substr(2));
    }
    return Bad("unknown option " + argument);
}

OptionsResult Parser::TakeOutput(const std::string& path)
{
    if (path.empty()) {
        return Bad("-o needs a file");
    }
    if (!m_options.output.empty()) {
        return Bad("more than one output given");
    }
    m_options.output = path;
    return OptionsResult::Run;
}

OptionsResult Parser::TakeWord(const std::string& word)
{
    if (m_command == nullptr) {
        if (word == "help") {
            return Help(m_next < m_arguments.size() ? m_arguments[m_next] : std::string());
        }
        m_command = Find(word);
        if (m_command == nullptr) {
            return Bad("unknown command " + word);
        }
        m_options.command = m_command->command;
        return OptionsResult::Run;
    }
    if (m_options.inputGiven) {
        return Bad("more than one file given");
    }
    if (word.empty()) {
        return Bad("the name of the file is empty");
    }
    m_options.inputGiven = true;
    m_options.input = word;
    return OptionsResult::Run;
}

OptionsResult Parser::Help(const std::string& name)
{
    if (name.empty()) {
        return Told(GeneralHelp());
    }
    const CommandText* command = Find(name);
    return command != nullptr ? Told(CommandHelp(*command)) : Bad("unknown command " + name);
}

} // namespace

OptionsResult ParseOptions(const std::vector<std::string>& arguments, Options& options, std::string& text)
{
    return Parser(arguments, options, text).Run();
}

} // namespace tools
