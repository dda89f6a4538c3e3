// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The command lines of the programs without Qt. Values are texts that each program judges by its own rules.

namespace CLI {
class App;
}

namespace cli {

using Arguments = std::vector<std::string>;

enum class Result {
    Run,
    Told, ///< the text is the answer that was asked for
    Bad,  ///< the text says what is wrong
};

/// What a program makes of a word. `Run` reads on.
struct Verdict {
    Result result = Result::Run;
    std::string text;
};

inline Verdict Told(std::string text)
{
    return {Result::Told, std::move(text)};
}

inline Verdict Bad(std::string text)
{
    return {Result::Bad, std::move(text)};
}

/// Arguments are judged one after the other: the last of repeated options counts, and the first answer or error
/// ends the reading.
class Parser {
public:
    /// Keeps a good value. On failure `error` says what is wrong.
    using TakeValue = std::function<bool(const std::string& value, std::string& error)>;
    using TakeWord = std::function<Verdict(const std::string& word, const std::string& next)>;

    /// An unknown option is told between `before` and `behind`.
    Parser(const char* before, const char* behind);
    ~Parser();

    /// "--name=value" is unknown.
    void RefuseJoined() { m_joined = false; }

    /// Sets `flag` to `value`. `names` are all of an option's names, with commas between them.
    void AddFlag(const std::string& names, bool& flag, bool value = true);

    /// Ends the reading with what `tell` returns.
    void AddAnswer(const std::string& names, const std::function<std::string()>& tell);

    /// A missing value is told as "NAME needs NEEDS", or taken as an empty one where `needs` is empty.
    void AddOption(const std::string& names, const std::string& needs, const TakeValue& take);

    /// Words are arguments that do not begin with a dash, "-", and all that follows "--". Each is taken with the
    /// argument behind it, or an empty text. Without this they are unknown options.
    void AddWords(const TakeWord& take) { m_takeWord = take; }

    /// `text` is set unless the result is `Run`.
    Result Read(const Arguments& arguments, std::string& text);

private:
    std::string Encoded(std::string argument) const;
    void ReadAll(const Arguments& arguments);
    void ReadOptions(Arguments& rest, const std::string& last);
    void RefuseUnknown() const;
    void Refuse(const std::string& argument) const;

    std::unique_ptr<CLI::App> m_app;
    std::string m_before;
    std::string m_behind;
    bool m_joined = true;
    TakeWord m_takeWord;
};

/// A command with `least` to `most` words behind it, which may begin with a dash.
struct Command {
    const char* name;
    int least;
    int most;
    std::function<int(const Arguments& words)> run;
};

/// For programs that have a command and no options. Returns the command's exit status; `usage` where the arguments
/// fit none, or where it is what the command returns, and then the help goes to standard error.
int RunCommand(const char* help, int usage, const std::vector<Command>& commands, int argc, char** argv);

} // namespace cli
