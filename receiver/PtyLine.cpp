// SPDX-License-Identifier: MIT
#include "receiver/PtyLine.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

namespace receiver {

namespace {

constexpr std::size_t kMostQueued = 65536;
constexpr std::size_t kMostReadAtOnce = 65536;
// While the line is closed its opening is told by a watch on the device; this is for systems that do not.
constexpr int kClosedPoll = 100;

std::string Failure(const char* what)
{
    return std::string(what) + ": " + std::strerror(errno);
}

} // namespace

PtyLine::~PtyLine()
{
    Unplug();
}

bool PtyLine::Open(const std::string& link, std::string& error)
{
    m_link = link;
    return Create(error) && PointLink(error);
}

bool PtyLine::Create(std::string& error)
{
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0 || ::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        error = Failure("no pseudo-terminal");
        Release();
        return false;
    }
    char name[PATH_MAX];
    if (::ptsname_r(m_master, name, sizeof name) != 0) {
        error = Failure("no pseudo-terminal");
        Release();
        return false;
    }
    m_path = name;
    // Opening and closing it once also makes the master report "closed" from now on.
    if (!Quieten()) {
        error = Failure("the line cannot be set up");
        Release();
        return false;
    }
    m_watch = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (m_watch >= 0) {
        ::inotify_add_watch(m_watch, m_path.c_str(), IN_OPEN | IN_CLOSE);
    }
    return true;
}

// Raw mode, so that the line never echoes our output back at us, and nothing unread for the next user.
bool PtyLine::Quieten()
{
    const int slave = ::open(m_path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (slave < 0) {
        return false;
    }
    termios settings;
    if (::tcgetattr(slave, &settings) == 0) {
        ::cfmakeraw(&settings);
        ::cfsetspeed(&settings, B115200);
        ::tcsetattr(slave, TCSANOW, &settings);
    }
    ::tcflush(slave, TCIFLUSH);
    ::close(slave);
    return true;
}

bool PtyLine::PointLink(std::string& error)
{
    if (m_link.empty()) {
        return true;
    }
    struct stat existing;
    if (::lstat(m_link.c_str(), &existing) == 0 && !S_ISLNK(existing.st_mode)) {
        error = m_link + ": exists and is no link";
        return false;
    }
    const std::string temporary = m_link + "." + std::to_string(::getpid());
    ::unlink(temporary.c_str());
    if (::symlink(m_path.c_str(), temporary.c_str()) != 0 || ::rename(temporary.c_str(), m_link.c_str()) != 0) {
        error = Failure(m_link.c_str());
        ::unlink(temporary.c_str());
        return false;
    }
    return true;
}

void PtyLine::RemoveLink()
{
    // Another receiver may have taken the link over.
    char target[PATH_MAX];
    const ssize_t length = m_link.empty() ? -1 : ::readlink(m_link.c_str(), target, sizeof target);
    if (length > 0 && std::string_view(target, static_cast<std::size_t>(length)) == m_path) {
        ::unlink(m_link.c_str());
    }
}

void PtyLine::Release()
{
    for (int* descriptor : {&m_master, &m_watch}) {
        if (*descriptor >= 0) {
            ::close(*descriptor);
        }
        *descriptor = -1;
    }
    m_inUse = false;
    m_queue.clear();
    m_queued = 0;
    m_frontSent = 0;
}

void PtyLine::Unplug()
{
    if (Plugged()) {
        RemoveLink();
    }
    Release();
}

void PtyLine::Send(std::string message)
{
    if (!m_inUse || message.empty()) {
        return;
    }
    m_queued += message.size();
    m_queue.push_back(std::move(message));
    while (m_queued > kMostQueued && m_queue.size() > 2) {
        // A message whose beginning is out already is finished.
        const auto victim = m_queue.begin() + (m_frontSent > 0 ? 1 : 0);
        m_queued -= victim->size();
        m_queue.erase(victim);
        ++m_dropped;
    }
}

std::size_t PtyLine::Room() const
{
    return m_queued < kMostQueued ? kMostQueued - m_queued : 0;
}

std::size_t PtyLine::FillPoll(pollfd* entries) const
{
    std::size_t count = 0;
    // A closed line would report its hang-up without end, so it is left out then.
    if (m_inUse) {
        entries[count].fd = m_master;
        entries[count].events = static_cast<short>(POLLIN | (m_queue.empty() ? 0 : POLLOUT));
        entries[count].revents = 0;
        ++count;
    }
    if (m_watch >= 0) {
        entries[count].fd = m_watch;
        entries[count].events = POLLIN;
        entries[count].revents = 0;
        ++count;
    }
    return count;
}

int PtyLine::LongestPoll() const
{
    return Plugged() && !m_inUse ? kClosedPoll : INT_MAX;
}

void PtyLine::ReadAll()
{
    char bytes[4096];
    // A host that never stops talking must not keep us from everything else.
    for (std::size_t total = 0; total < kMostReadAtOnce;) {
        const ssize_t count = ::read(m_master, bytes, sizeof bytes);
        if (count > 0) {
            total += static_cast<std::size_t>(count);
            if (onReceived) {
                onReceived(std::string_view(bytes, static_cast<std::size_t>(count)));
            }
        } else if (count == 0 || errno != EINTR) {
            return;
        }
    }
}

void PtyLine::WriteQueued()
{
    while (!m_queue.empty()) {
        const std::string& front = m_queue.front();
        const ssize_t count = ::write(m_master, front.data() + m_frontSent, front.size() - m_frontSent);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return;
        }
        if (onSent) {
            onSent(std::string_view(front).substr(m_frontSent, static_cast<std::size_t>(count)));
        }
        m_frontSent += static_cast<std::size_t>(count);
        m_queued -= static_cast<std::size_t>(count);
        if (m_frontSent == front.size()) {
            m_queue.pop_front();
            m_frontSent = 0;
        }
    }
}

void PtyLine::Service(Millis now)
{
    if (!Plugged()) {
        return;
    }
    if (m_watch >= 0) {
        char events[1024];
        while (::read(m_watch, events, sizeof events) > 0) {
        }
    }
    pollfd master{m_master, POLLIN, 0};
    ::poll(&master, 1, 0);
    const bool inUse = (master.revents & (POLLHUP | POLLERR)) == 0;
    if (inUse && !m_inUse) {
        m_inUse = true;
        m_inUseSince = now;
    }
    // What was written by somebody who has gone again still counts.
    if ((master.revents & POLLIN) != 0) {
        ReadAll();
    }
    if (inUse) {
        WriteQueued();
        return;
    }
    if (m_inUse) {
        m_inUse = false;
        m_queue.clear();
        m_queued = 0;
        m_frontSent = 0;
        std::string error;
        if (!Quieten() && errno == EBUSY) {
            // Its last user was killed while it held the line for itself alone, which would lock it for good.
            RemoveLink();
            Release();
            if (Create(error)) {
                PointLink(error);
            }
        }
    }
}

} // namespace receiver
