// SPDX-License-Identifier: MIT
#include "tools/firmware/ImageDescription.h"

#include "protocol/LoaderMessages.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <random>

namespace {

constexpr std::string_view kUsualHeader = "VRXF";
constexpr std::size_t kHeaderSize = 4;
constexpr std::size_t kMostBytes = 64u << 20;
constexpr std::size_t kMostInMessage = protocol::kLongestLoaderMessage - protocol::kLoaderHeaderSize -
                                       protocol::kLoaderFieldSize - protocol::kLoaderCheckSize;

std::string RandomBytes(std::size_t count, std::uint64_t seed)
{
    // The engine's sequence is the same everywhere, unlike that of a distribution.
    std::mt19937_64 engine(seed);
    std::string bytes(count, '\0');
    std::generate(bytes.begin(), bytes.end(), [&engine] { return static_cast<char>(engine() & 0xFF); });
    return bytes;
}

/// Reads one line's words from left to right.
class Words {
public:
    explicit Words(std::string_view line) : m_rest(line) { SkipBlanks(); }

    bool AtEnd() const { return m_rest.empty(); }

    std::string_view Word()
    {
        const std::size_t end = std::min(m_rest.find_first_of(" \t"), m_rest.size());
        const std::string_view word = m_rest.substr(0, end);
        m_rest.remove_prefix(end);
        SkipBlanks();
        return word;
    }

    std::optional<std::uint64_t> Number()
    {
        const std::string_view word = Word();
        std::uint64_t value = 0;
        const auto result = std::from_chars(word.data(), word.data() + word.size(), value);
        if (word.empty() || result.ec != std::errc() || result.ptr != word.data() + word.size()) {
            return std::nullopt;
        }
        return value;
    }

    std::optional<std::string> Quoted()
    {
        const std::size_t end = m_rest.find('"', 1);
        if (m_rest.empty() || m_rest.front() != '"' || end == std::string_view::npos) {
            return std::nullopt;
        }
        std::string text(m_rest.substr(1, end - 1));
        m_rest.remove_prefix(end + 1);
        SkipBlanks();
        return text;
    }

    /// "text", hex DIGITS to the end of the line, or random COUNT SEED.
    std::optional<std::string> Value()
    {
        if (!m_rest.empty() && m_rest.front() == '"') {
            return Quoted();
        }
        const std::string_view kind = Word();
        if (kind == "hex") {
            return Hex();
        }
        if (kind == "random") {
            const auto count = Number();
            const auto seed = Number();
            if (count && seed && *count <= kMostBytes) {
                return RandomBytes(static_cast<std::size_t>(*count), *seed);
            }
        }
        return std::nullopt;
    }

private:
    std::optional<std::string> Hex()
    {
        std::string bytes;
        while (!AtEnd()) {
            const std::string_view word = Word();
            for (std::size_t i = 0; i < word.size(); i += 2) {
                unsigned value = 0;
                const std::string_view pair = word.substr(i, 2);
                const auto result = std::from_chars(pair.data(), pair.data() + pair.size(), value, 16);
                if (pair.size() != 2 || result.ptr != pair.data() + 2) {
                    return std::nullopt;
                }
                bytes.push_back(static_cast<char>(value));
            }
        }
        return bytes;
    }

    void SkipBlanks()
    {
        const std::size_t next = m_rest.find_first_not_of(" \t\r");
        m_rest.remove_prefix(std::min(next, m_rest.size()));
    }

    std::string_view m_rest;
};

class Maker {
public:
    /// Carries a line out; a text that is not empty says what is wrong.
    std::string Take(std::string_view line)
    {
        Words words(line);
        const std::string_view command = words.Word();
        for (const Command& known : kCommands) {
            if (known.name == command) {
                if (!(this->*known.carryOut)(words) || !words.AtEnd()) {
                    return std::string("expected: ") + known.form;
                }
                return m_image.size() > kMostBytes ? "the image becomes too large" : std::string();
            }
        }
        return "no such command: " + std::string(command);
    }

    std::string Finish()
    {
        BeginImage();
        if (m_cut && *m_cut < m_image.size()) {
            m_image.resize(*m_cut);
        }
        return std::move(m_image);
    }

private:
    struct Command {
        std::string_view name;
        const char* form;
        bool (Maker::*carryOut)(Words&);
    };
    static const Command kCommands[9];

    void BeginImage()
    {
        if (!m_begun) {
            m_image.insert(0, kUsualHeader);
            m_begun = true;
        }
    }

    bool Record(std::string_view message)
    {
        BeginImage();
        if (message.size() > protocol::kLongestLoaderMessage) {
            return false;
        }
        protocol::AppendU16(m_image, static_cast<std::uint16_t>(m_length.value_or(message.size())));
        m_length.reset();
        m_image += message;
        return true;
    }

    bool Header(Words& words)
    {
        const auto value = words.Value();
        if (m_begun || !value || value->size() != kHeaderSize) {
            return false;
        }
        m_image = *value;
        m_begun = true;
        return true;
    }

    bool RecordCommand(Words& words)
    {
        const auto value = words.Value();
        return value && Record(*value);
    }

    bool Empty(Words&) { return Record({}); }

    bool Quit(Words& words)
    {
        const std::optional<std::string> more = words.AtEnd() ? std::string() : words.Value();
        return more && Record(std::string(protocol::kLoaderQuit) + *more);
    }

    bool Length(Words& words)
    {
        m_length = words.Number();
        return m_length && *m_length <= protocol::kLongestLoaderMessage;
    }

    bool Raw(Words& words)
    {
        const auto value = words.Value();
        if (value) {
            BeginImage();
            m_image += *value;
        }
        return value.has_value();
    }

    bool Cut(Words& words)
    {
        m_cut = words.Number();
        return m_cut.has_value();
    }

    bool Message(Words& words)
    {
        const std::string_view kind = words.Word();
        const auto number = words.Number();
        const std::optional<std::string> rest = words.AtEnd() ? std::string() : words.Value();
        const bool begin = kind == "begin";
        const bool data = kind == "data";
        if ((!begin && !data && kind != "end") || !number || *number > UINT32_MAX || !rest ||
            rest->size() > kMostInMessage) {
            return false;
        }
        const protocol::LoaderMessage type = begin  ? protocol::LoaderMessage::Begin
                                             : data ? protocol::LoaderMessage::Data
                                                    : protocol::LoaderMessage::End;
        return Record(protocol::MakeLoaderMessage(type, static_cast<std::uint32_t>(*number), *rest));
    }

    bool Firmware(Words& words)
    {
        const auto version = words.Quoted();
        const auto size = words.Number();
        const auto piece = words.Number();
        const auto seed = words.AtEnd() ? std::optional<std::uint64_t>(1) : words.Number();
        if (!version || version->empty() || version->size() > protocol::kLongestFirmwareVersion || !size ||
            *size > kMostBytes || !piece || *piece == 0 || *piece > kMostInMessage || !seed) {
            return false;
        }
        const std::string firmware = RandomBytes(static_cast<std::size_t>(*size), *seed);
        Record(protocol::MakeLoaderMessage(protocol::LoaderMessage::Begin, static_cast<std::uint32_t>(*size),
                                           *version));
        for (std::size_t at = 0; at < firmware.size(); at += static_cast<std::size_t>(*piece)) {
            Record(protocol::MakeLoaderMessage(
                protocol::LoaderMessage::Data, static_cast<std::uint32_t>(at),
                std::string_view(firmware).substr(at, static_cast<std::size_t>(*piece))));
        }
        return Record(protocol::MakeLoaderMessage(protocol::LoaderMessage::End, protocol::Crc32(firmware)));
    }

    std::string m_image;
    bool m_begun = false;
    std::optional<std::uint64_t> m_length; ///< what the next record's length is written as
    std::optional<std::uint64_t> m_cut;
};

const Maker::Command Maker::kCommands[9] = {
    {"header", "header VALUE, four bytes and before all else", &Maker::Header},
    {"firmware", "firmware \"VERSION\" SIZE PIECE [SEED]", &Maker::Firmware},
    {"message", "message begin|data|end NUMBER [VALUE]", &Maker::Message},
    {"record", "record VALUE of up to 65535 bytes", &Maker::RecordCommand},
    {"empty", "empty", &Maker::Empty},
    {"quit", "quit [VALUE]", &Maker::Quit},
    {"length", "length NUMBER up to 65535", &Maker::Length},
    {"raw", "raw VALUE", &Maker::Raw},
    {"cut", "cut NUMBER", &Maker::Cut},
};

} // namespace

bool MakeImage(std::string_view description, std::string& image, std::string& error)
{
    Maker maker;
    for (int number = 1; !description.empty(); ++number) {
        const std::size_t end = std::min(description.find('\n'), description.size());
        const std::string_view line = description.substr(0, end);
        description.remove_prefix(std::min(end + 1, description.size()));
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first == std::string_view::npos || line[first] == '#') {
            continue;
        }
        const std::string problem = maker.Take(line);
        if (!problem.empty()) {
            error = "line " + std::to_string(number) + ": " + problem;
            return false;
        }
    }
    image = maker.Finish();
    return true;
}
