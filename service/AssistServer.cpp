// SPDX-License-Identifier: MIT
#include "service/AssistServer.h"

#include "service/Replies.h"
#include "service/RequestCheck.h"

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace service {

namespace {

constexpr char kAddress[] = "127.0.0.1";
constexpr char kBinary[] = "application/octet-stream";
constexpr char kText[] = "text/plain; charset=utf-8";
constexpr std::size_t kThreads = 16;
constexpr std::chrono::minutes kLongestSilence(30);
constexpr std::size_t kLongestRequest = 65536;

std::int64_t SystemMillis()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

} // namespace

struct AssistServer::Inside {
    explicit Inside(const ServerSettings& what)
        : settings(what), server(what.certificate.certificate.c_str(), what.certificate.key.c_str())
    {
    }

    void Answer(AssistServer& outside, const httplib::Request& request, httplib::Response& response);
    void Send(httplib::Response& response, std::string body);
    /// False when the server was stopped meanwhile.
    bool Wait(std::chrono::milliseconds time)
    {
        std::unique_lock<std::mutex> lock(mutex);
        return !stopped.wait_for(lock, time, [this] { return stopping; });
    }

    ServerSettings settings;
    httplib::SSLServer server;
    int port = -1;
    std::mutex mutex;
    std::condition_variable stopped;
    bool stopping = false;
    bool serving = false;
};

void AssistServer::Inside::Send(httplib::Response& response, std::string body)
{
    const ServiceFaults& faults = settings.faults;
    if (body.empty() || (!faults.cut && faults.bytesPerSecond == 0)) {
        response.set_content(body, kBinary);
        return;
    }
    const std::size_t length = body.size();
    std::size_t sent = length;
    if (faults.cut) {
        sent = faults.cutAfter < 0 ? length / 2 : std::min(length - 1, static_cast<std::size_t>(faults.cutAfter));
    }
    response.set_content_provider(
        length, kBinary,
        [this, sent, content = std::move(body)](std::size_t offset, std::size_t, httplib::DataSink& sink) {
            if (offset >= sent) {
                return false; // ends the connection
            }
            std::size_t piece = sent - offset;
            if (settings.faults.bytesPerSecond > 0) {
                constexpr std::int64_t slices = 10; // a second
                piece = std::min(piece, static_cast<std::size_t>(
                                            std::max<std::int64_t>(1, settings.faults.bytesPerSecond / slices)));
                const auto millis = static_cast<std::int64_t>(piece) * 1000 / settings.faults.bytesPerSecond;
                if (!Wait(std::chrono::milliseconds(millis))) {
                    return false;
                }
            }
            return sink.write(content.data() + offset, piece);
        });
}

void AssistServer::Inside::Answer(AssistServer& outside, const httplib::Request& request,
                                  httplib::Response& response)
{
    const ServiceFaults& faults = settings.faults;
    ClientRequest asked;
    asked.method = request.method;
    const std::size_t mark = request.target.find('?');
    asked.path = request.target.substr(0, mark);
    asked.query = mark == std::string::npos ? std::string() : request.target.substr(mark + 1);
    asked.authorized = request.has_header("Authorization");
    asked.authorization = request.get_header_value("Authorization");
    const std::int64_t now = outside.clock();
    const Verdict verdict = CheckRequest(asked, settings.credentials, now);
    response.status = verdict.status;
    std::string note = verdict.problem;
    if (verdict.status != 200) {
        response.set_content(verdict.problem + "\n", kText);
    } else if (faults.silent) {
        note = "no answer";
    } else if (faults.slowMillis == 0 || Wait(std::chrono::milliseconds(faults.slowMillis))) {
        if (faults.status > 0) {
            response.status = static_cast<int>(faults.status);
            response.set_content("this is a fault that was asked for\n", kText);
        } else if (faults.redirect) {
            response.status = 302;
            response.set_header("Location", "/moved");
            response.set_content("moved\n", kText);
        } else {
            std::string body = MakeBody(verdict, faults, now);
            note = std::to_string(body.size()) + " bytes";
            Send(response, std::move(body));
        }
    }
    if (outside.log) {
        outside.log(request.method + ' ' + request.target + ' ' + std::to_string(response.status) + ' ' + note);
    }
    if (verdict.status == 200 && faults.silent) {
        Wait(kLongestSilence);
    }
}

AssistServer::AssistServer(const ServerSettings& settings)
    : clock(SystemMillis), m_inside(std::make_unique<Inside>(settings))
{
    httplib::SSLServer& server = m_inside->server;
    server.set_keep_alive_max_count(1);
    server.set_payload_max_length(kLongestRequest);
    server.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    server.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
        m_inside->Answer(*this, request, response);
        return httplib::Server::HandlerResponse::Handled;
    });
    // What the library refuses by itself gets a body too.
    server.set_error_handler([](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty() && response.status != 302) {
            response.set_content("the request cannot be served\n", kText);
        }
    });
}

AssistServer::~AssistServer()
{
    Stop();
}

std::string AssistServer::Listen()
{
    httplib::SSLServer& server = m_inside->server;
    if (!server.is_valid()) {
        return "the certificate cannot be used";
    }
    const int asked = m_inside->settings.port;
    if (asked == 0) {
        m_inside->port = server.bind_to_any_port(kAddress);
    } else if (server.bind_to_port(kAddress, asked)) {
        m_inside->port = asked;
    }
    if (m_inside->port <= 0) {
        return "port " + std::to_string(asked) + " cannot be had";
    }
    return {};
}

int AssistServer::Port() const
{
    return m_inside->port;
}

void AssistServer::Run()
{
    {
        const std::lock_guard<std::mutex> lock(m_inside->mutex);
        if (m_inside->stopping) {
            return;
        }
        m_inside->serving = true;
    }
    m_inside->server.listen_after_bind();
    const std::lock_guard<std::mutex> lock(m_inside->mutex);
    m_inside->serving = false;
}

void AssistServer::Stop()
{
    std::unique_lock<std::mutex> lock(m_inside->mutex);
    m_inside->stopping = true;
    m_inside->stopped.notify_all();
    // A stop before the library has begun to serve would be lost.
    while (m_inside->serving && !m_inside->server.is_running()) {
        lock.unlock();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        lock.lock();
    }
    lock.unlock();
    m_inside->server.stop();
}

} // namespace service
