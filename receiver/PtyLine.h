// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Utc.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

struct pollfd;

namespace receiver {

/// The receiver's end of a pseudo-terminal. Whoever opens the other end may come and go: while nobody has it
/// open, output is dropped and nothing waits for the next one. A slow reader costs the oldest messages, whole
/// ones, and never the receiver's time.
class PtyLine {
public:
    PtyLine() = default;
    ~PtyLine();
    PtyLine(const PtyLine&) = delete;
    PtyLine& operator=(const PtyLine&) = delete;

    /// Makes the pseudo-terminal, raw from the start, and the symbolic link to it unless `link` is empty.
    bool Open(const std::string& link, std::string& error);
    /// Pulls the plug: the other end sees its line hang up, and the link goes.
    void Unplug();

    bool Plugged() const { return m_master >= 0; }
    /// Somebody has the other end open.
    bool InUse() const { return m_inUse; }
    /// Since when, by the `now` of Service.
    Millis InUseSince() const { return m_inUseSince; }

    const std::string& Path() const { return m_path; }

    /// Queues a whole message; drops it while the line is not in use.
    void Send(std::string message);
    /// Bytes that Send takes without dropping anything.
    std::size_t Room() const;

    /// Fills in what to poll for: at most two entries. Returns their number.
    std::size_t FillPoll(pollfd* entries) const;
    /// How long a poll may last, in milliseconds.
    int LongestPoll() const;

    /// After each poll: notices opening and closing, reads and writes without waiting.
    void Service(Millis now);

    std::function<void(std::string_view)> onReceived;
    std::function<void(std::string_view)> onSent;

    std::uint64_t DroppedMessages() const { return m_dropped; }

private:
    bool Create(std::string& error);
    bool PointLink(std::string& error);
    void RemoveLink();
    void ReadAll();
    void WriteQueued();
    void Release();
    bool Quieten();

    int m_master = -1;
    int m_watch = -1;
    std::string m_path;
    std::string m_link;
    bool m_inUse = false;
    Millis m_inUseSince = 0;
    std::deque<std::string> m_queue;
    std::size_t m_queued = 0;
    std::size_t m_frontSent = 0;
    std::uint64_t m_dropped = 0;
};

} // namespace receiver
