// SPDX-License-Identifier: MIT
#include "receiver/Session.h"

#include <algorithm>
#include <ctime>
#include <poll.h>

namespace receiver {

namespace {

// Programs that look for ports open and close each one; a capture begins only for somebody who stays.
constexpr Millis kSettled = 300;
constexpr std::size_t kCapturePiece = 8192;
constexpr std::size_t kReserve = 16384;

std::int64_t MonotonicMillis()
{
    timespec now;
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * std::int64_t{1000} + now.tv_nsec / 1000000;
}

Millis After(double seconds)
{
    return seconds < 0.0 ? kNever : static_cast<Millis>(seconds * 1000.0);
}

} // namespace

Session::Session(const Options& options)
    : m_options(options), m_unplugAt(After(options.receiver.faults.unplugAt)),
      m_replugAt(m_unplugAt == kNever || options.receiver.faults.replugAfter < 0.0
                     ? kNever
                     : m_unplugAt + After(options.receiver.faults.replugAfter))
{
}

Millis Session::Now() const
{
    return MonotonicMillis() - m_powerOn;
}

bool Session::Open(std::string& error)
{
    if (!m_options.transcript.empty() && !m_transcript.Open(m_options.transcript)) {
        error = m_options.transcript + " cannot be written";
        return false;
    }
    if (!m_options.capture.empty()) {
        std::string bytes;
        if (!ReadWholeFile(m_options.capture, bytes)) {
            error = m_options.capture + " cannot be read";
            return false;
        }
        m_player = std::make_unique<CapturePlayer>(std::move(bytes), m_options.speed, m_options.repeat);
        m_options.receiver.ownOutput = false;
    }
    if (!m_line.Open(m_options.link, error)) {
        return false;
    }
    m_line.onReceived = [this](std::string_view bytes) {
        const Millis now = Now();
        m_transcript.Write(now, '>', bytes);
        m_receiver->Receive(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size(), now);
        Forward();
        m_heard = true;
    };
    m_line.onSent = [this](std::string_view bytes) { m_transcript.Write(Now(), '<', bytes); };
    m_powerOn = MonotonicMillis();
    if (!m_options.timeGiven) {
        timespec now;
        ::clock_gettime(CLOCK_REALTIME, &now);
        m_options.receiver.utcAtPowerOn = now.tv_sec * Millis{1000} + now.tv_nsec / 1000000;
    }
    m_receiver = std::make_unique<Receiver>(m_options.receiver);
    return true;
}

std::string Session::Path() const
{
    return m_options.link.empty() ? m_line.Path() : m_options.link;
}

void Session::PlugOrUnplug(Millis now)
{
    if (now >= m_unplugAt) {
        m_line.Unplug();
        m_unplugAt = kNever;
    }
    if (now >= m_replugAt) {
        std::string error;
        m_line.Open(m_options.link, error);
        m_replugAt = kNever;
    }
}

void Session::Forward()
{
    for (std::string& message : m_receiver->TakeOutput()) {
        m_line.Send(std::move(message));
    }
}

void Session::Produce(Millis now)
{
    m_receiver->Advance(now);
    Forward();
    if (!m_player) {
        return;
    }
    if (!m_line.InUse() || now - m_line.InUseSince() < kSettled || !m_receiver->Running() ||
        m_receiver->Asleep()) {
        m_player->Pause(now);
        return;
    }
    m_player->Play(now);
    for (std::size_t room = CaptureRoom(); room > 0; room = CaptureRoom()) {
        std::string piece = m_player->Take(now, room);
        if (piece.empty()) {
            break;
        }
        m_line.Send(std::move(piece));
    }
}

std::size_t Session::CaptureRoom() const
{
    // Some room stays free for acknowledgements, so that they never push out a piece of the capture.
    return m_line.Room() > kReserve ? std::min(m_line.Room() - kReserve, kCapturePiece) : 0;
}

Millis Session::NextEvent(Millis now) const
{
    Millis next = std::min({m_receiver->NextEvent(), m_unplugAt, m_replugAt, now + m_line.LongestPoll()});
    if (m_player && m_line.InUse()) {
        if (CaptureRoom() > 0) {
            next = std::min(next, m_player->NextEvent(now));
        }
        if (now - m_line.InUseSince() < kSettled) {
            next = std::min(next, m_line.InUseSince() + kSettled);
        }
    }
    return next;
}

void Session::Run(const volatile std::sig_atomic_t& stop, const sigset_t& waitMask)
{
    while (stop == 0) {
        Millis now = Now();
        PlugOrUnplug(now);
        Produce(now);
        m_line.Service(now);
        now = Now();
        // A command may have started or stopped something.
        const Millis wait = m_heard ? 0 : std::clamp<Millis>(NextEvent(now) - now, 0, 60000);
        m_heard = false;
        timespec timeout{static_cast<std::time_t>(wait / 1000), static_cast<long>(wait % 1000 * 1000000)};
        pollfd entries[2];
        const std::size_t count = m_line.FillPoll(entries);
        ::ppoll(entries, count, &timeout, &waitMask);
    }
}

} // namespace receiver
