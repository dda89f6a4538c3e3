// SPDX-License-Identifier: MIT
#include "receiver/Session.h"

#include <csignal>
#include <cstdio>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

volatile std::sig_atomic_t g_stop = 0;

void OnStop(int)
{
    g_stop = 1;
}

} // namespace

int main(int argc, char** argv)
{
    const pid_t parent = ::getppid();
    receiver::Options options;
    std::string text;
    switch (receiver::ParseOptions(std::vector<std::string>(argv + 1, argv + argc), options, text)) {
    case receiver::OptionsResult::Told:
        std::fputs(text.c_str(), stdout);
        return 0;
    case receiver::OptionsResult::Bad:
        std::fprintf(stderr, "gnss-receiver: %s\n", text.c_str());
        return 2;
    case receiver::OptionsResult::Run:
        break;
    }

    // The stop signals come only while the program waits, so none is missed between the test and the wait.
    sigset_t stops;
    sigset_t waitMask;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
    sigaddset(&stops, SIGHUP);
    ::sigprocmask(SIG_BLOCK, &stops, &waitMask);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigdelset(&waitMask, signal);
        struct sigaction action = {};
        action.sa_handler = OnStop;
        ::sigaction(signal, &action, nullptr);
    }
    std::signal(SIGPIPE, SIG_IGN);
    if (options.dieWithParent) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) {
            return 0;
        }
    }

    receiver::Session session(options);
    if (!session.Open(text)) {
        std::fprintf(stderr, "gnss-receiver: %s\n", text.c_str());
        return 2;
    }
    std::printf("ready %s\n", session.Path().c_str());
    std::fflush(stdout);
    session.Run(g_stop, waitMask);
    return 0;
}
