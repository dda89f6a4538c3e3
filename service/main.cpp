// SPDX-License-Identifier: MIT
#include "service/AssistServer.h"
#include "service/Options.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int kUsageError = 2;

int Fail(const std::string& text)
{
    std::fprintf(stderr, "assist-service: %s\n", text.c_str());
    return kUsageError;
}

} // namespace

int main(int argc, char** argv)
{
    const pid_t parent = ::getppid();
    service::Options options;
    std::string text;
    switch (service::ParseOptions(std::vector<std::string>(argv + 1, argv + argc), options, text)) {
    case service::OptionsResult::Told:
        std::fputs(text.c_str(), stdout);
        return 0;
    case service::OptionsResult::Bad:
        return Fail(text);
    case service::OptionsResult::Run:
        break;
    }

    // Blocked before any thread exists, so that all of them inherit it and only the wait below takes them.
    sigset_t stops;
    sigemptyset(&stops);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        sigaddset(&stops, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &stops, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    if (options.dieWithParent) {
        ::prctl(PR_SET_PDEATHSIG, SIGTERM);
        if (::getppid() != parent) {
            return 0;
        }
    }

    std::error_code error;
    std::filesystem::create_directories(options.folder, error);
    service::ServerSettings settings;
    settings.faults = options.faults;
    settings.port = options.port;
    text = service::EnsureCertificate(options.folder, settings.certificate);
    if (text.empty()) {
        text = service::LoadCredentials(options.folder, settings.credentials);
    }
    if (!text.empty()) {
        return Fail(text);
    }
    service::AssistServer server(settings);
    server.log = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
    text = server.Listen();
    if (!text.empty()) {
        return Fail(text);
    }
    std::printf("ready https://127.0.0.1:%d\n", server.Port());
    std::fflush(stdout);
    std::thread serving([&server] { server.Run(); });
    int signal = 0;
    ::sigwait(&stops, &signal);
    server.Stop();
    serving.join();
    return 0;
}
