// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Utc.h"

#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// A moment of a capture: the bytes before `offset` are over by `at` milliseconds.
struct CaptureMark {
    std::size_t offset;
    double at;
};

/// Reads a capture's pace out of the times in its sentences. The marks begin at offset 0 and end at its size.
/// An epoch lasts as long as its times say, or one second where they are missing or jump; a capture without
/// any sentence that tells time runs at 1000 bytes a second.
std::vector<CaptureMark> CapturePace(std::string_view bytes);

/// Plays a capture at its own pace or by a factor of it. Every byte goes out once and in order, cut behind
/// line ends where there are any, so that something else can be said between.
class CapturePlayer {
public:
    /// A `speed` of 0 is as fast as the bytes are taken.
    CapturePlayer(std::string bytes, double speed, bool repeat);

    void Play(Millis now);
    void Pause(Millis now);

    /// The bytes that are due by now, no more than `room`.
    std::string Take(Millis now, std::size_t room);

    /// When Take is worth calling again.
    Millis NextEvent(Millis now) const;

    bool AsFastAsTaken() const { return m_speed <= 0.0; }
    bool Finished() const { return m_sent == m_bytes.size() && !m_repeat; }
    double DurationMillis() const { return m_marks.back().at; }

private:
    std::size_t DueOffset() const;
    void Pass(Millis now);

    std::string m_bytes;
    std::vector<CaptureMark> m_marks;
    double m_speed;
    bool m_repeat;
    bool m_playing = false;
    Millis m_passedAt = 0;
    double m_position = 0.0; ///< milliseconds into the capture
    std::size_t m_sent = 0;
};

} // namespace receiver
