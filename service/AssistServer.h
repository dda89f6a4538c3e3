// SPDX-License-Identifier: MIT
#pragma once

#include "service/Certificate.h"
#include "service/Credentials.h"
#include "service/ServiceFaults.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace service {

struct ServerSettings {
    CertificateFiles certificate;
    Credentials credentials;
    ServiceFaults faults;
    std::uint16_t port = 0; ///< 0: any that is free
};

/// The HTTPS server on the loopback address. Each connection gets one answer and is closed: the client's
/// authorization ends in a line end of its own, so what it sends behind that looks like a second request.
class AssistServer {
public:
    explicit AssistServer(const ServerSettings& settings);
    ~AssistServer();
    AssistServer(const AssistServer&) = delete;
    AssistServer& operator=(const AssistServer&) = delete;

    /// Milliseconds since 1970, UTC; the system's clock unless it is set before Listen.
    std::function<std::int64_t()> clock;

    /// Is told one line for each answer, from any thread. Keys and signatures are not in it.
    std::function<void(const std::string&)> log;

    /// Takes the port. Empty on success, else what is wrong.
    std::string Listen();
    /// The port that was taken.
    int Port() const;

    /// Serves until Stop; from the thread that calls it.
    void Run();
    /// From any thread; also ends the answers that are slow or silent.
    void Stop();

private:
    struct Inside;
    std::unique_ptr<Inside> m_inside;
};

} // namespace service
