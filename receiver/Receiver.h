// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/FaultyOutput.h"
#include "receiver/FixEngine.h"
#include "receiver/HostStream.h"
#include "receiver/Loader.h"
#include "receiver/Motion.h"
#include "receiver/NmeaWriter.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace receiver {

enum class ReportPolicy {
    None,    ///< only what the host asks for
    Changes, ///< also the settings' messages, when a setting changes
    All,     ///< every message type, once a second
};

struct ReceiverOptions {
    std::uint64_t seed = 1;
    int product = 0;
    int rateHz = 1;
    Geodetic place{47.3977, 8.5456, 408.0};
    Motion motion = Motion::Still({47.3977, 8.5456, 408.0});
    Millis utcAtPowerOn = 0;
    FixTimes times;
    double errorMetres = 1.5; ///< median horizontal error
    bool idle = false;        ///< waits for a start command
    bool memoryKept = false;  ///< knows at power-on what it would have kept from a session just before
    bool ownOutput = true;    ///< false: commands are answered, but no epoch is ever sent
    ReportPolicy reports = ReportPolicy::Changes;
    Faults faults;
};

/// The settings that the ten configuration commands write.
struct Configuration {
    std::array<bool, kSystems> systems{{true, true, true, true, true}};
    bool coldAtEveryStart = false;
    std::uint8_t sentences = kAllSentences;
    bool acquisitionLowPower = false;
    bool trackingLowPower = false;
    std::array<std::uint8_t, 3> antiJam{{1, 1, 0}};
    int rateHz = 1;
    bool pps = false;
    std::uint8_t ppsWidth = 0; ///< milliseconds
    bool measurements = false;
    bool solution = false;
    std::uint8_t priority = 2; ///< 0 automatic, 1 time to first fix, 2 accuracy
};

/// The chip. It has no clock and no line of its own: the caller says how many milliseconds have passed since
/// power-on, hands in what the host sent and takes away what goes to the line. The same options, calls and
/// bytes give the same bytes.
class Receiver {
public:
    explicit Receiver(const ReceiverOptions& options);

    /// Lets everything happen that is due up to now. Time never runs back.
    void Advance(Millis now);
    /// The next moment at which Advance has something to do.
    Millis NextEvent() const;

    void Receive(const std::uint8_t* bytes, std::size_t length, Millis now);

    /// The messages that have become ready, in order; each is whole unless a fault cut it.
    std::vector<std::string> TakeOutput() { return m_output.Take(); }

    bool Running() const { return m_running; }
    bool Asleep() const { return m_asleep; }
    const Configuration& Settings() const { return m_settings; }
    const FixEngine& Engine() const { return m_engine; }
    Millis UtcAt(Millis now) const { return m_options.utcAtPowerOn + now; }
    /// Where the antenna truly is.
    MotionState TruthAt(Millis now) const { return m_options.motion.At(static_cast<double>(now) / 1000.0); }

private:
    struct Later {
        Millis at;
        std::string message;
    };

    void Start(Millis now);
    void Stop();
    void ScheduleEpoch(Millis now);
    void RunEpoch(Millis now);
    void RunReports(Millis now, const Epoch& epoch);

    void EnterLoader(Millis now);
    void RunLoader(Millis now);

    void HandleItem(const HostStream::Item& item, Millis now);
    void HandleFrame(const protocol::FrameView& frame, Millis now);
    void HandleAtLine(const std::string& line, Millis now);
    protocol::AckStatus CarryOut(const protocol::FrameView& frame, Millis now);
    void Configure(const protocol::FrameView& frame, Millis now);
    void Assist(const protocol::FrameView& frame, Millis now);
    void ReportChange(std::uint16_t commandId, Millis now);
    void SendHistory(Millis now);

    void SendAck(std::uint16_t commandId, std::uint16_t status, Millis now);
    void SendFrame(std::string frame, Millis now);
    void SendText(std::string text, Millis now);

    std::vector<SatelliteView> ViewsAt(Millis now) const;
    Millis SleepAt() const;

    ReceiverOptions m_options;
    Configuration m_settings;
    Sky m_sky;
    FixEngine m_engine;
    PositionWander m_wander;
    HostStream m_stream;
    FaultyOutput m_output;
    Loader m_loader;
    std::string m_version = "VRX 1.0";
    std::vector<Later> m_later;
    bool m_running = false;
    bool m_asleep = false;
    bool m_hasSlept = false;
    Millis m_wakeRequestAt = kNever;
    Millis m_now = 0;
    Millis m_nextEpoch = kNever;
    Millis m_lastEpoch = 0;
    std::int64_t m_acksLost = 0;
};

} // namespace receiver
