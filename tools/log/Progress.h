// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace tools {

/// The line that tells how far a file has been read, `width` columns at most. `total` 0 means unknown.
std::string ProgressText(std::uint64_t done, std::uint64_t total, double seconds, int width);

/// Shows that line on the terminal at standard error, once the work takes long enough for someone to wonder.
class Progress {
public:
    /// Shows nothing unless `allowed`, standard error is a terminal and standard output is not a terminal
    /// that is written to.
    Progress(bool allowed, std::uint64_t total, bool outputOnTerminal);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Update(std::uint64_t done);
    /// Takes the line away, before anything else goes to the terminal.
    void Clear();

private:
    using Clock = std::chrono::steady_clock;

    bool m_active;
    bool m_shown = false;
    std::uint64_t m_total;
    Clock::time_point m_begin;
    Clock::time_point m_next;
};

} // namespace tools
