// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/CommandTable.h"

namespace receiver {

/// Judges a command's id, first parameter word, payload length and values. A history block is judged by its
/// length only.
protocol::AckStatus JudgeCommand(const protocol::FrameView& frame);

/// The low-power settings take exactly these two bytes for "on", and two zeros for "off".
constexpr std::uint8_t kLowPowerOn[2] = {0x01, 0x02};

constexpr double kLatitudeUnit = 1.87253514146196e-07;  ///< radians, pi / 2^24
constexpr double kLongitudeUnit = 3.74507028292392e-07; ///< radians, pi / 2^23

} // namespace receiver
