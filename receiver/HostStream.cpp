// SPDX-License-Identifier: MIT
#include "receiver/HostStream.h"

#include "protocol/LoaderMessages.h"

#include <algorithm>

namespace receiver {

namespace {

// A frame or line that stops for so long is not going to end.
constexpr Millis kGiveUp = 500;
constexpr std::size_t kLongestLine = 2 * protocol::kMaxFrameLength + 64;

} // namespace

bool HostStream::TakeOne(std::vector<Item>& items)
{
    if (m_buffer.empty()) {
        return false;
    }
    const auto* p = reinterpret_cast<const std::uint8_t*>(m_buffer.data());
    if (p[0] == 0) {
        items.push_back({Item::Kind::Zero, std::string()});
        m_buffer.erase(0, 1);
        return true;
    }
    if (p[0] == protocol::kFrameFlag) {
        const std::size_t claimed = protocol::ClaimedFrameLength(p, m_buffer.size());
        if (claimed > m_buffer.size()) {
            return false;
        }
        protocol::FrameView frame;
        if (claimed > 0 && protocol::ReadFrame(p, claimed, frame)) {
            items.push_back({Item::Kind::Frame, m_buffer.substr(0, claimed)});
            m_buffer.erase(0, claimed);
        } else {
            m_buffer.erase(0, 1);
        }
        return true;
    }
    if (p[0] == 'A') {
        if (m_buffer.size() == 1) {
            return false;
        }
        if (p[1] == 'T') {
            const std::size_t end = m_buffer.find_first_of("\r\n");
            if (end != std::string::npos) {
                items.push_back({Item::Kind::AtLine, m_buffer.substr(0, end)});
                m_buffer.erase(0, end + 1);
                return true;
            }
            if (m_buffer.size() <= kLongestLine) {
                return false;
            }
        }
    }
    if (p[0] == protocol::kLoaderMagic.front()) {
        const std::size_t known = std::min(m_buffer.size(), protocol::kLoaderMagic.size());
        if (m_buffer.compare(0, known, protocol::kLoaderMagic, 0, known) == 0) {
            if (known < protocol::kLoaderMagic.size()) {
                return false;
            }
            items.push_back({Item::Kind::Loader, m_buffer});
            m_buffer.clear();
            return true;
        }
    }
    // Noise goes in one piece, up to the next byte that could begin something.
    std::size_t next = 1;
    while (next < m_buffer.size() && p[next] != 0 && p[next] != protocol::kFrameFlag && p[next] != 'A' &&
           p[next] != static_cast<std::uint8_t>(protocol::kLoaderMagic.front())) {
        ++next;
    }
    m_buffer.erase(0, next);
    return true;
}

std::vector<HostStream::Item> HostStream::Feed(const std::uint8_t* bytes, std::size_t length, Millis now)
{
    std::vector<Item> items;
    if (!m_buffer.empty() && now - m_lastByte > kGiveUp) {
        m_buffer.erase(0, 1);
        while (TakeOne(items)) {
        }
        // What is still incomplete waited as long as the byte before it.
        while (!m_buffer.empty()) {
            m_buffer.erase(0, 1);
            while (TakeOne(items)) {
            }
        }
    }
    m_lastByte = now;
    m_buffer.append(reinterpret_cast<const char*>(bytes), length);
    while (TakeOne(items)) {
    }
    return items;
}

} // namespace receiver
