// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Configuration.h"
#include "receiver/HostStream.h"
#include "receiver/Loader.h"
#include "receiver/MessageOutput.h"
#include "receiver/Positioning.h"
#include "receiver/ReceiverCommands.h"
#include "receiver/ReceiverOptions.h"

#include <string>
#include <vector>

namespace receiver {

/// The chip. It has no clock and no line of its own: the caller says how many milliseconds have passed since
/// power-on, hands in what the host sent and takes away what goes to the line. The same options, calls and
/// bytes give the same bytes.
class Receiver {
public:
    explicit Receiver(const ReceiverOptions& options);
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    /// Lets everything happen that is due up to now. Time never runs back.
    void Advance(Millis now);
    /// The next moment at which Advance has something to do.
    Millis NextEvent() const;

    void Receive(const std::uint8_t* bytes, std::size_t length, Millis now);

    /// The messages that have become ready, in order; each is whole unless a fault cut it.
    std::vector<std::string> TakeOutput() { return m_output.Take(); }

    bool Running() const { return m_positioning.Running(); }
    bool Asleep() const { return m_asleep; }
    const Configuration& Settings() const { return m_settings; }
    const FixEngine& Engine() const { return m_positioning.Engine(); }
    Millis UtcAt(Millis now) const { return m_positioning.UtcAt(now); }
    /// Where the antenna truly is.
    MotionState TruthAt(Millis now) const { return m_positioning.TruthAt(now); }

private:
    void RunEpoch(Millis now);
    void RunReports(Millis now, const Epoch& epoch);

    void EnterLoader(Millis now);
    void RunLoader(Millis now);

    void HandleItem(const HostStream::Item& item, Millis now);
    void HandleFrame(const protocol::FrameView& frame, Millis now);
    void ReportChange(std::uint16_t commandId, Millis now);
    void SendHistory(Millis now);

    Millis SleepAt() const;

    ReceiverOptions m_options;
    Configuration m_settings;
    Positioning m_positioning;
    ReceiverCommands m_commands;
    HostStream m_stream;
    MessageOutput m_output;
    Loader m_loader;
    std::string m_version = "VRX 1.0";
    bool m_asleep = false;
    bool m_hasSlept = false;
    Millis m_wakeRequestAt = kNever;
    Millis m_now = 0;
};

} // namespace receiver
