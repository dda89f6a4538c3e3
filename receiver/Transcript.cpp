// SPDX-License-Identifier: MIT
#include "receiver/Transcript.h"

#include "receiver/TextNumbers.h"

namespace receiver {

Transcript::~Transcript()
{
    if (m_file != nullptr) {
        std::fclose(m_file);
    }
}

bool Transcript::Open(const std::string& path)
{
    m_file = std::fopen(path.c_str(), "we");
    return m_file != nullptr;
}

void Transcript::Write(Millis now, char direction, std::string_view bytes)
{
    if (m_file == nullptr) {
        return;
    }
    std::string line;
    AppendInteger(line, now / 1000);
    line.push_back('.');
    AppendInteger(line, now % 1000, 3);
    line.push_back(' ');
    line.push_back(direction);
    line.push_back(' ');
    AppendInteger(line, static_cast<std::int64_t>(bytes.size()));
    line.push_back(' ');
    for (const char c : bytes) {
        AppendHexByte(line, static_cast<std::uint8_t>(c), false);
    }
    line += " |";
    for (const char c : bytes) {
        line.push_back(c >= ' ' && c <= '~' ? c : '.');
    }
    line += "|\n";
    std::fwrite(line.data(), 1, line.size(), m_file);
    std::fflush(m_file);
}

} // namespace receiver
