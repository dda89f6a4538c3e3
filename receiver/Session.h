// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/CapturePlayer.h"
#include "receiver/Options.h"
#include "receiver/PtyLine.h"
#include "receiver/Transcript.h"

#include <csignal>
#include <memory>
#include <string>

namespace receiver {

/// Joins the receiver, or the capture, to the line and lets real time pass.
class Session {
public:
    explicit Session(const Options& options);

    bool Open(std::string& error);
    /// The path for whoever wants to open the line.
    std::string Path() const;
    /// Runs until `stop` becomes non-zero. `waitMask` is the signal mask while waiting.
    void Run(const volatile std::sig_atomic_t& stop, const sigset_t& waitMask);

private:
    Millis Now() const;
    void PlugOrUnplug(Millis now);
    void Forward();
    void Produce(Millis now);
    Millis NextEvent(Millis now) const;
    std::size_t CaptureRoom() const;

    Options m_options;
    PtyLine m_line;
    Transcript m_transcript;
    std::unique_ptr<Receiver> m_receiver;
    std::unique_ptr<CapturePlayer> m_player;
    std::int64_t m_powerOn = 0;
    bool m_heard = false;
    Millis m_unplugAt;
    Millis m_replugAt;
};

} // namespace receiver
