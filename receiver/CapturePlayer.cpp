// SPDX-License-Identifier: MIT
#include "receiver/CapturePlayer.h"

#include "receiver/FaultyOutput.h"
#include "receiver/TextNumbers.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

constexpr double kDefaultEpoch = 1000.0;
constexpr double kLongestEpoch = 5000.0;
constexpr double kDay = 86400000.0;
constexpr double kBytesPerMilli = 1.0;
constexpr Millis kStep = 10;
// Without a line end in sight so many bytes go out all the same.
constexpr std::size_t kPatience = 512;
constexpr std::size_t kLongestSentence = 256;

std::string_view Field(std::string_view sentence, std::size_t index)
{
    for (; index > 0; --index) {
        const std::size_t comma = sentence.find(',');
        if (comma == std::string_view::npos) {
            return {};
        }
        sentence.remove_prefix(comma + 1);
    }
    return sentence.substr(0, sentence.find_first_of(",*\r\n"));
}

bool ChecksumHolds(std::string_view sentence)
{
    const std::size_t star = sentence.find('*');
    if (star == std::string_view::npos || star + 3 > sentence.size()) {
        return false;
    }
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < star; ++i) {
        sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(sentence[i]));
    }
    std::string expected;
    AppendHexByte(expected, sum, true);
    return sentence.substr(star + 1, 2) == expected;
}

// The field that holds the time, or 0 for a sentence without one.
std::size_t TimeField(std::string_view formatter)
{
    if (formatter == "GLL") {
        return 5;
    }
    return formatter == "GGA" || formatter == "RMC" || formatter == "GNS" || formatter == "ZDA" ? 1 : 0;
}

bool ParseTimeOfDay(std::string_view text, double& millis)
{
    double value = 0.0;
    if (text.size() < 6 || !ParseDouble(text, value) || value < 0.0 || value >= 240000.0) {
        return false;
    }
    const auto whole = static_cast<std::int64_t>(value);
    const std::int64_t minutes = whole / 100; // and hours, as digits
    const std::int64_t wholeSeconds = minutes / 100 * 3600 + minutes % 100 * 60;
    const std::int64_t cut = minutes * 100;
    const double seconds = value - static_cast<double>(cut);
    millis = static_cast<double>(wholeSeconds) * 1000.0 + seconds * 1000.0;
    return true;
}

} // namespace

std::vector<CaptureMark> CapturePace(std::string_view bytes)
{
    std::vector<CaptureMark> marks{{0, 0.0}};
    double elapsed = 0.0;
    double epochTime = -1.0;
    std::string timelessLeader;
    bool anySentence = false;
    const auto begin = [&](std::size_t offset, double previousLasted) {
        elapsed += previousLasted;
        marks.push_back({offset, elapsed});
    };
    for (std::size_t at = bytes.find('$'); at != std::string_view::npos; at = bytes.find('$', at + 1)) {
        std::string_view sentence = bytes.substr(at, kLongestSentence);
        sentence = sentence.substr(0, sentence.find('\n'));
        if (sentence.size() < 7 || sentence[6] != ',') {
            continue;
        }
        const std::string_view formatter = sentence.substr(3, 3);
        const std::size_t field = TimeField(formatter);
        if (field == 0 || !ChecksumHolds(sentence)) {
            continue;
        }
        anySentence = true;
        double time = 0.0;
        if (!ParseTimeOfDay(Field(sentence, field), time)) {
            // Before the time is known the epochs show by their first sentence coming round again.
            if (epochTime < 0.0) {
                if (timelessLeader.empty()) {
                    timelessLeader = formatter;
                } else if (timelessLeader == formatter) {
                    begin(at, kDefaultEpoch);
                }
            }
            continue;
        }
        if (epochTime < 0.0) {
            if (!timelessLeader.empty()) {
                begin(at, kDefaultEpoch);
            }
            epochTime = time;
            continue;
        }
        double step = time - epochTime;
        step -= kDay * std::floor(step / kDay + 0.5);
        if (step <= 0.0 && step >= -kLongestEpoch) {
            continue; // a sentence that lags behind its neighbours
        }
        begin(at, step > 0.0 && step <= kLongestEpoch ? step : kDefaultEpoch);
        epochTime = time;
    }
    elapsed += anySentence ? kDefaultEpoch : static_cast<double>(bytes.size()) / kBytesPerMilli;
    marks.push_back({bytes.size(), elapsed});
    return marks;
}

CapturePlayer::CapturePlayer(std::string bytes, double speed, bool repeat)
    : m_bytes(std::move(bytes)), m_marks(CapturePace(m_bytes)), m_speed(speed),
      m_repeat(repeat && !m_bytes.empty())
{
}

void CapturePlayer::Pass(Millis now)
{
    if (m_playing) {
        m_position += static_cast<double>(now - m_passedAt) * m_speed;
    }
    m_passedAt = now;
}

void CapturePlayer::Play(Millis now)
{
    Pass(now);
    m_playing = true;
}

void CapturePlayer::Pause(Millis now)
{
    Pass(now);
    m_playing = false;
}

std::size_t CapturePlayer::DueOffset() const
{
    if (m_speed <= 0.0 || m_position >= m_marks.back().at) {
        return m_bytes.size();
    }
    const auto after =
        std::upper_bound(m_marks.begin(), m_marks.end(), m_position,
                         [](double position, const CaptureMark& mark) { return position < mark.at; });
    const CaptureMark& a = *(after - 1);
    const CaptureMark& b = *after;
    const double share = (m_position - a.at) / (b.at - a.at);
    return a.offset + static_cast<std::size_t>(share * static_cast<double>(b.offset - a.offset));
}

std::string CapturePlayer::Take(Millis now, std::size_t room)
{
    Pass(now);
    if (!m_playing) {
        return {};
    }
    if (m_sent == m_bytes.size() && m_repeat) {
        m_sent = 0;
        m_position = std::max(0.0, m_position - m_marks.back().at);
    }
    const std::size_t due = std::max(DueOffset(), m_sent);
    std::size_t count = std::min(due - m_sent, room);
    if (count == 0) {
        return {};
    }
    if (m_sent + count < m_bytes.size()) {
        const std::size_t lineEnd = std::string_view(m_bytes).substr(m_sent, count).rfind('\n');
        if (lineEnd != std::string_view::npos) {
            count = lineEnd + 1;
        } else if (count < kPatience && count < room) {
            return {};
        }
    }
    std::string taken = m_bytes.substr(m_sent, count);
    m_sent += count;
    return taken;
}

Millis CapturePlayer::NextEvent(Millis now) const
{
    return !m_playing || Finished() ? kNever : AsFastAsTaken() ? now : now + kStep;
}

} // namespace receiver
