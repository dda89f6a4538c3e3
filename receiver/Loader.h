// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Faults.h"
#include "receiver/Utc.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// The chip's loader. It takes a firmware message by message, answers each, and reboots on the terminating one.
/// No clock of its own. What it receives in the place of a message it refuses at once.
class Loader {
public:
    explicit Loader(const Faults& faults) : m_faults(faults) {}

    bool Active() const { return m_active; }
    /// The chip has left its firmware for the loader.
    void Enter(Millis now);

    void Receive(std::string_view bytes, Millis now);

    /// The answers that are due, each in as many pieces as it comes in.
    std::vector<std::string> Advance(Millis now);
    Millis NextEvent() const;

    /// True once after the end of the loader: the chip boots now. `version` is changed when it boots a firmware
    /// that was loaded whole and right, otherwise it boots the old one.
    bool TakeReboot(std::string& version);

private:
    struct Piece {
        Millis at;
        std::string bytes;
    };

    bool TakeOne(Millis now);
    std::string_view Judge(std::string_view message);
    void Answer(std::string_view answer, Millis now);

    Faults m_faults;
    bool m_active = false;
    bool m_leaving = false; ///< the terminating message has come
    bool m_booted = false;
    std::string m_buffer;
    Millis m_lastByte = 0;
    Millis m_rebootAt = 0;
    std::vector<Piece> m_pieces;
    std::int64_t m_answers = 0; ///< since the last power-on or reboot

    // The firmware so far
    bool m_begun = false;
    bool m_complete = false;
    std::uint32_t m_size = 0;
    std::string m_firmware;
    std::string m_version;
};

} // namespace receiver
