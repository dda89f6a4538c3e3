// SPDX-License-Identifier: MIT
#include "receiver/FaultyOutput.h"

#include <algorithm>

namespace receiver {

namespace {

constexpr Millis kGarbageStep = 100;
constexpr Millis kReleaseStep = 10;
constexpr std::size_t kMostHeld = 65536;

bool IsSentence(const std::string& message)
{
    return message.size() > 5 && message[0] == '$' && message[message.size() - 5] == '*';
}

} // namespace

FaultyOutput::FaultyOutput(const Faults& faults, std::uint64_t seed) : m_faults(faults), m_random(seed) {}

void FaultyOutput::Put(Millis now, std::string message)
{
    if (m_faults.silence && static_cast<double>(now) >= m_faults.silenceFrom * 1000.0) {
        return;
    }
    if (m_faults.badChecksumPercent > 0 && IsSentence(message) &&
        m_random.Uniform() * 100.0 < m_faults.badChecksumPercent) {
        char& digit = message[message.size() - 3];
        digit = digit == '0' ? '1' : '0';
    }
    if (m_faults.cutPercent > 0 && m_random.Uniform() * 100.0 < m_faults.cutPercent) {
        message.resize(1 + static_cast<std::size_t>(m_random.Uniform() * static_cast<double>(message.size() - 1)));
    }
    if (m_faults.bytesPerSecond == 0) {
        m_ready.push_back(std::move(message));
        return;
    }
    Release(now);
    m_heldBytes += message.size();
    m_held.push_back(std::move(message));
    while (m_heldBytes > kMostHeld && m_held.size() > 2) {
        // The front may be on its way already, so the one behind it goes.
        const auto victim = m_held.begin() + (m_frontBegun ? 1 : 0);
        m_heldBytes -= victim->size();
        m_held.erase(victim);
        ++m_dropped;
    }
}

void FaultyOutput::Release(Millis now)
{
    if (m_faults.bytesPerSecond == 0) {
        return;
    }
    m_credit += (now - m_releasedAt) * m_faults.bytesPerSecond;
    m_releasedAt = now;
    if (m_held.empty()) {
        // An idle line does not save up.
        m_credit = std::min<std::int64_t>(m_credit, 1000);
        return;
    }
    while (!m_held.empty() && m_credit >= 1000) {
        std::string& front = m_held.front();
        const std::size_t count = std::min(front.size(), static_cast<std::size_t>(m_credit / 1000));
        m_credit -= static_cast<std::int64_t>(count) * 1000;
        m_heldBytes -= count;
        m_ready.push_back(front.substr(0, count));
        front.erase(0, count);
        m_frontBegun = !front.empty();
        if (front.empty()) {
            m_held.pop_front();
        }
    }
}

void FaultyOutput::Advance(Millis now)
{
    if (m_faults.garbageRate > 0) {
        while (m_nextGarbage <= now) {
            const Millis at = m_nextGarbage;
            m_nextGarbage += kGarbageStep;
            const std::int64_t due = at * m_faults.garbageRate / 1000;
            const std::int64_t before = (at - kGarbageStep) * m_faults.garbageRate / 1000;
            std::string noise;
            for (std::int64_t i = at == 0 ? due : before; i < due; ++i) {
                noise.push_back(static_cast<char>(m_random.Bits() & 0xFF));
            }
            if (!noise.empty()) {
                Put(at, std::move(noise));
            }
        }
    }
    Release(now);
}

Millis FaultyOutput::NextEvent() const
{
    Millis next = kNever;
    if (m_faults.garbageRate > 0) {
        next = m_nextGarbage;
    }
    if (!m_held.empty()) {
        next = std::min(next, m_releasedAt + kReleaseStep);
    }
    return next;
}

std::vector<std::string> FaultyOutput::Take()
{
    std::vector<std::string> ready;
    ready.swap(m_ready);
    return ready;
}

} // namespace receiver
