// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

#include <functional>
#include <string>

namespace receiver {

using AtFrameHandler = std::function<void(const protocol::FrameView& frame)>;
using AtAnswer = std::function<void(const char* text)>;

/// Takes a line of AT text, without its end: hands on the frame that it holds or means, and gives its answer in
/// text. A frame in hexadecimal digits has no such answer but its acknowledgement.
void CarryOutAtLine(const std::string& line, const AtFrameHandler& handleFrame, const AtAnswer& answer);

} // namespace receiver
