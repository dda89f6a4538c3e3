// SPDX-License-Identifier: MIT
#include "receiver/Loader.h"

#include "protocol/LoaderMessages.h"
#include "receiver/FaultyOutput.h"

#include <algorithm>

namespace receiver {

namespace {

constexpr Millis kBootTime = 200;
// Without a word for so long the loader gives up and boots what is there.
constexpr Millis kWatchdog = 10000;
// A message that stops for so long is not going to end.
constexpr Millis kGiveUp = 500;

bool MayBecome(std::string_view bytes, std::string_view beginning)
{
    const std::size_t known = std::min(bytes.size(), beginning.size());
    return bytes.substr(0, known) == beginning.substr(0, known);
}

bool IsVersion(std::string_view text)
{
    return !text.empty() && text.size() <= protocol::kLongestFirmwareVersion &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return c >= 0x20 && c <= 0x7E && c != '$' && c != '*' && c != ','; });
}

} // namespace

void Loader::Enter(Millis now)
{
    m_active = true;
    m_booted = false;
    m_buffer.clear();
    m_pieces.clear();
    m_answers = 0;
    m_begun = false;
    m_complete = false;
    m_firmware.clear();
    m_version.clear();
    m_lastByte = now;
    m_leaving = false;
    m_rebootAt = now + kWatchdog;
}

void Loader::Receive(std::string_view bytes, Millis now)
{
    if (bytes.empty() || m_leaving) {
        return;
    }
    if (now - m_lastByte > kGiveUp) {
        m_buffer.clear();
    }
    m_lastByte = now;
    m_rebootAt = now + kWatchdog;
    m_buffer += bytes;
    while (TakeOne(now)) {
    }
}

bool Loader::TakeOne(Millis now)
{
    if (m_buffer.empty()) {
        return false;
    }
    const std::string_view bytes(m_buffer);
    if (MayBecome(bytes, protocol::kLoaderQuit)) {
        if (bytes.size() >= protocol::kLoaderQuit.size()) {
            m_buffer.clear();
            m_leaving = true;
            m_rebootAt = now + kBootTime;
        }
        return false;
    }
    if (!MayBecome(bytes, protocol::kLoaderMagic)) {
        m_buffer.clear();
        Answer(protocol::kAnswerRefused, now);
        return false;
    }
    if (bytes.size() < protocol::kLoaderHeaderSize) {
        return false;
    }
    const std::size_t payload = protocol::ReadLoaderHeader(bytes).length;
    const std::size_t length = protocol::kLoaderHeaderSize + payload + protocol::kLoaderCheckSize;
    if (bytes.size() < length) {
        return false;
    }
    Answer(Judge(bytes.substr(0, length)), now);
    m_buffer.erase(0, length);
    return true;
}

/// Takes a whole message in, and gives the answer to it.
std::string_view Loader::Judge(std::string_view message)
{
    const std::size_t covered = message.size() - protocol::kLoaderCheckSize;
    if (covered < protocol::kLoaderHeaderSize + protocol::kLoaderFieldSize ||
        protocol::U32At(message, covered) != protocol::Crc32(message.substr(0, covered))) {
        return protocol::kAnswerRefused;
    }
    const std::uint32_t number = protocol::U32At(message, protocol::kLoaderHeaderSize);
    const std::string_view rest =
        message.substr(protocol::kLoaderHeaderSize + protocol::kLoaderFieldSize,
                       covered - protocol::kLoaderHeaderSize - protocol::kLoaderFieldSize);
    switch (protocol::ReadLoaderHeader(message).kind) {
    case protocol::LoaderMessage::Begin:
        m_begun = IsVersion(rest);
        m_complete = false;
        m_size = number;
        m_firmware.clear();
        m_version = rest;
        return m_begun ? protocol::kAnswerBegin : protocol::kAnswerRefused;
    case protocol::LoaderMessage::Data:
        if (!m_begun || number != m_firmware.size() || rest.size() > m_size - m_firmware.size()) {
            return protocol::kAnswerRefused;
        }
        m_firmware += rest;
        return protocol::kAnswerData;
    case protocol::LoaderMessage::End:
        m_complete = m_begun && m_firmware.size() == m_size && number == protocol::Crc32(m_firmware);
        return m_complete ? protocol::kAnswerEnd : protocol::kAnswerRefused;
    }
    return protocol::kAnswerRefused;
}

void Loader::Answer(std::string_view answer, Millis now)
{
    ++m_answers;
    if (m_faults.loaderMute > 0 && m_answers >= m_faults.loaderMute) {
        return;
    }
    if (m_answers == m_faults.loaderWrong) {
        answer = protocol::kAnswerRefused;
    }
    const Millis at = now + m_faults.loaderLateMillis;
    if (m_faults.loaderSplitMillis > 0) {
        m_pieces.push_back({at, std::string(answer.substr(0, 1))});
        m_pieces.push_back({at + m_faults.loaderSplitMillis, std::string(answer.substr(1))});
    } else {
        m_pieces.push_back({at, std::string(answer)});
    }
}

Millis Loader::NextEvent() const
{
    Millis next = m_active ? m_rebootAt : kNever;
    for (const Piece& piece : m_pieces) {
        next = std::min(next, piece.at);
    }
    return next;
}

std::vector<std::string> Loader::Advance(Millis now)
{
    std::vector<std::string> due;
    // In the order of their times; equal ones in the order of the answers.
    std::stable_sort(m_pieces.begin(), m_pieces.end(), [](const Piece& a, const Piece& b) { return a.at < b.at; });
    while (!m_pieces.empty() && m_pieces.front().at <= now) {
        due.push_back(std::move(m_pieces.front().bytes));
        m_pieces.erase(m_pieces.begin());
    }
    if (m_active && m_rebootAt <= now) {
        m_active = false;
        m_booted = true;
    }
    return due;
}

bool Loader::TakeReboot(std::string& version)
{
    if (!m_booted) {
        return false;
    }
    m_booted = false;
    if (m_complete) {
        version = m_version;
    }
    m_firmware.clear();
    return true;
}

} // namespace receiver
