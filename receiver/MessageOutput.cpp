// SPDX-License-Identifier: MIT
#include "receiver/MessageOutput.h"

#include "protocol/LinkFrame.h"
#include "receiver/ReportWriter.h"
#include "receiver/TextNumbers.h"

#include <algorithm>

namespace receiver {

void MessageOutput::Advance(Millis now)
{
    m_output.Advance(now);
    for (std::size_t i = 0; i < m_later.size();) {
        if (m_later[i].at <= now) {
            SendFrame(std::move(m_later[i].message), now);
            m_later.erase(m_later.begin() + static_cast<std::ptrdiff_t>(i));
        } else {
            ++i;
        }
    }
}

Millis MessageOutput::NextEvent() const
{
    Millis next = m_output.NextEvent();
    for (const Later& later : m_later) {
        next = std::min(next, later.at);
    }
    return next;
}

void MessageOutput::SendAck(std::uint16_t commandId, std::uint16_t status, Millis now)
{
    if (m_faults.ackLost < 0 || m_acksLost < m_faults.ackLost) {
        ++m_acksLost;
        return;
    }
    const std::uint16_t named = m_faults.ackOther >= 0 ? static_cast<std::uint16_t>(m_faults.ackOther) : commandId;
    for (int i = 0; i < (m_faults.ackDouble ? 2 : 1); ++i) {
        if (m_faults.ackLateMillis > 0) {
            m_later.push_back({now + m_faults.ackLateMillis, MakeAck(named, status)});
        } else {
            SendFrame(MakeAck(named, status), now);
        }
    }
}

void MessageOutput::SendFrame(std::string frame, Millis now)
{
    if (m_product == protocol::kAtProduct) {
        std::string line(protocol::kAtHexReport);
        for (const char c : frame) {
            AppendHexByte(line, static_cast<std::uint8_t>(c), false);
        }
        line += "\r\n";
        frame.swap(line);
    }
    m_output.Put(now, std::move(frame));
}

void MessageOutput::SendText(std::string text, Millis now)
{
    m_output.Put(now, std::move(text));
}

} // namespace receiver
