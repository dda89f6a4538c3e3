// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/CommandTable.h"
#include "receiver/Utc.h"

namespace receiver {

/// Judges a command's id, first parameter word, payload length and values. A history block is judged by its
/// length only.
protocol::AckStatus JudgeCommand(const protocol::FrameView& frame);

UtcFields FieldsOf(const protocol::UtcTimeRecord& record);

} // namespace receiver
