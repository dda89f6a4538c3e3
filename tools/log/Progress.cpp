// SPDX-License-Identifier: MIT
#include "tools/log/Progress.h"

#include "tools/log/Numbers.h"

#include <algorithm>
#include <sys/ioctl.h>
#include <unistd.h>

namespace tools {

namespace {

constexpr auto kDelay = std::chrono::milliseconds(500);
constexpr auto kInterval = std::chrono::milliseconds(100);
constexpr int kUsualWidth = 80;
constexpr int kLongestBar = 50;
constexpr int kShortestBar = 5;
constexpr double kMega = 1e6;

int TerminalWidth()
{
    winsize size = {};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualWidth;
}

void Show(const std::string& text)
{
    // A terminal that does not take it is no reason to stop the work.
    const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
    static_cast<void>(written);
}

} // namespace

std::string ProgressText(std::uint64_t done, std::uint64_t total, double seconds, int width)
{
    std::string amount;
    AppendFixed(amount, static_cast<double>(done) / kMega, 0);
    if (total > 0) {
        amount += '/';
        AppendFixed(amount, static_cast<double>(std::max(done, total)) / kMega, 0);
    }
    amount += " MB";
    if (seconds > 0) {
        amount += "  ";
        AppendFixed(amount, static_cast<double>(done) / kMega / seconds, 0);
        amount += " MB/s";
    }
    std::string text = amount;
    if (total > 0) {
        const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(total));
        std::string percent = std::to_string(static_cast<int>(share * 100));
        percent = std::string(percent.size() < 3 ? 3 - percent.size() : 0, ' ') + percent + " %  ";
        const int room = width - static_cast<int>(percent.size() + amount.size()) - 4;
        std::string bar;
        if (room >= kShortestBar) {
            const auto length = static_cast<std::size_t>(std::min(room, kLongestBar));
            const auto full = static_cast<std::size_t>(share * static_cast<double>(length));
            bar = '[' + std::string(full, '#') + std::string(length - full, '.') + "] ";
        }
        text = bar + percent + amount;
    }
    return text.substr(0, static_cast<std::size_t>(std::max(0, width)));
}

Progress::Progress(bool allowed, std::uint64_t total, bool outputOnTerminal)
    : m_active(allowed && !outputOnTerminal && ::isatty(STDERR_FILENO) == 1), m_total(total),
      m_begin(Clock::now()), m_next(m_begin + kDelay)
{
}

Progress::~Progress()
{
    Clear();
}

void Progress::Update(std::uint64_t done)
{
    if (!m_active) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now < m_next) {
        return;
    }
    m_next = now + kInterval;
    m_shown = true;
    const double seconds = std::chrono::duration<double>(now - m_begin).count();
    // The last column stays free: a full line would make some terminals go on to the next.
    Show("\r" + ProgressText(done, m_total, seconds, TerminalWidth() - 1) + "\033[K");
}

void Progress::Clear()
{
    if (m_shown) {
        m_shown = false;
        Show("\r\033[K");
    }
}

} // namespace tools
