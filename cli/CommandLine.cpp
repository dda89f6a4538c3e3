// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>

namespace cli {

namespace {

void End(const Verdict& verdict)
{
    switch (verdict.result) {
    case Result::Told:
        throw CLI::Success(verdict.text, CLI::ExitCodes::Success);
    case Result::Bad:
        throw CLI::ValidationError(verdict.text);
    case Result::Run:
        break;
    }
}

std::string Decoded(std::string argument)
{
    argument.erase(std::remove(argument.begin(), argument.end(), '\0'), argument.end());
    return argument;
}

} // namespace

Parser::Parser(const char* before, const char* behind)
    : m_app(std::make_unique<CLI::App>()), m_before(before), m_behind(behind)
{
    m_app->set_help_flag();
    // A word ends the library's reading, so that words and options are judged in the order in which they stand.
    m_app->prefix_command();
}

Parser::~Parser() = default;

void Parser::AddFlag(const std::string& names, bool& flag, bool value)
{
    const auto found = [this, &flag, value] {
        RefuseUnknown();
        flag = value;
    };
    m_app->add_flag_callback(names, found)->trigger_on_parse();
}

void Parser::AddAnswer(const std::string& names, const std::function<std::string()>& tell)
{
    const auto found = [this, tell] {
        RefuseUnknown();
        End(Told(tell()));
    };
    m_app->add_flag_callback(names, found)->trigger_on_parse();
}

void Parser::AddOption(const std::string& names, const std::string& needs, const TakeValue& take)
{
    const CLI::callback_t found = [this, take](const CLI::results_t& values) {
        RefuseUnknown();
        std::string error;
        if (!take(Decoded(values.front()), error)) {
            End(Bad(error));
        }
        return true;
    };
    m_app->add_option(names, found, needs)->trigger_on_parse();
}

Result Parser::Read(const Arguments& arguments, std::string& text)
{
    try {
        ReadAll(arguments);
    } catch (const CLI::Success& told) {
        text = told.what();
        return Result::Told;
    } catch (const CLI::ParseError& wrong) {
        text = wrong.what();
        return Result::Bad;
    }
    return Result::Run;
}

/// The library takes "--name=" for "--name", and "--flag=text" and "-ftext" for the flag. A NUL, which no argument
/// holds, keeps an empty value a value, and makes unknown what has no value.
std::string Parser::Encoded(std::string argument) const
{
    const bool isLong = argument.compare(0, 2, "--") == 0;
    const std::size_t nameEnd = isLong ? argument.find('=') : 2;
    if (argument.compare(0, 1, "-") != 0 || nameEnd >= argument.size()) {
        return argument;
    }
    const CLI::Option* option = m_app->get_option_no_throw(argument.substr(0, nameEnd));
    const bool takesValue = m_joined && option != nullptr && option->get_items_expected_max() > 0;
    const std::size_t valueAt = isLong ? nameEnd + 1 : nameEnd;
    argument.insert(takesValue ? valueAt : isLong ? 2 : 1, 1, '\0');
    return argument;
}

void Parser::ReadAll(const Arguments& arguments)
{
    Arguments rest; // the first is at the end, as the library has it
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(rest),
                   [this](const std::string& argument) { return Encoded(argument); });
    bool onlyWords = false;
    while (!rest.empty()) {
        if (!onlyWords) {
            ReadOptions(rest, arguments.back());
        }
        if (rest.empty()) {
            return;
        }
        const std::string word = Decoded(rest.back());
        rest.pop_back();
        if (m_takeWord && !onlyWords && word == "--") {
            onlyWords = true;
        } else if (m_takeWord && (onlyWords || word.size() < 2 || word[0] != '-')) {
            End(m_takeWord(word, rest.empty() ? std::string() : Decoded(rest.back())));
        } else {
            Refuse(word);
        }
    }
}

/// Leaves what is no option of the program. Only the last argument can lack its value.
void Parser::ReadOptions(Arguments& rest, const std::string& last)
{
    try {
        m_app->parse(rest);
    } catch (const CLI::ArgumentMismatch&) {
        RefuseUnknown();
        CLI::Option* option = m_app->get_option(last);
        if (option->get_description().empty()) {
            option->add_result(std::string())->run_callback();
        }
        End(Bad(last + " needs " + option->get_description()));
    }
}

/// The library only puts aside what it does not know.
void Parser::RefuseUnknown() const
{
    const Arguments unknown = m_app->remaining();
    if (!unknown.empty()) {
        Refuse(Decoded(unknown.front()));
    }
}

void Parser::Refuse(const std::string& argument) const
{
    End(Bad(m_before + argument + m_behind));
}

int RunCommand(const char* help, int usage, const std::vector<Command>& commands, int argc, char** argv)
{
    const Arguments arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (arguments == Arguments{"--help"}) {
        std::fputs(help, stdout);
        return 0;
    }
    int status = usage;
    Arguments words;
    CLI::App app;
    app.set_help_flag();
    app.require_subcommand(1);
    for (const Command& command : commands) {
        CLI::App* chosen = app.add_subcommand(command.name);
        const CLI::callback_t take = [&words](const CLI::results_t& values) {
            words.push_back(values.front());
            return true;
        };
        for (int i = 0; i < command.most; ++i) {
            chosen->add_option("word" + std::to_string(i), take)->required(i < command.least);
        }
        chosen->final_callback([&status, &words, &command] { status = command.run(words); });
    }
    Arguments rest(arguments.rbegin(), arguments.rend());
    if (rest.size() > 1) {
        rest.insert(rest.end() - 1, "--");
    }
    try {
        app.parse(rest);
    } catch (const CLI::ParseError&) {
        status = usage;
    }
    if (status == usage) {
        std::fputs(help, stderr);
    }
    return status;
}

} // namespace cli
