// SPDX-License-Identifier: MIT
#include "host/app/StopSignals.h"

#include <QSocketNotifier>

#ifdef Q_OS_UNIX

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};
int ends[2] = {-1, -1};

void Handle(int)
{
    // Only write() may be called here; a full pipe already holds the message.
    const char byte = 1;
    const ssize_t written = ::write(ends[1], &byte, 1);
    (void)written;
}

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    if (::pipe2(ends, O_NONBLOCK | O_CLOEXEC) != 0) {
        return;
    }
    auto* notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        // A second one ends the program at once.
        for (const int number : kSignals) {
            std::signal(number, SIG_DFL);
        }
        emit Stopped();
    });
    struct sigaction action = {};
    action.sa_handler = Handle;
    action.sa_flags = SA_RESTART;
    for (const int number : kSignals) {
        ::sigaction(number, &action, nullptr);
    }
}

StopSignals::~StopSignals()
{
    for (const int number : kSignals) {
        std::signal(number, SIG_DFL);
    }
    for (int& end : ends) {
        if (end >= 0) {
            ::close(end);
        }
        end = -1;
    }
}

#else

StopSignals::StopSignals(QObject* parent) : QObject(parent) {}

StopSignals::~StopSignals() = default;

#endif
