// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"
#include "receiver/Configuration.h"
#include "receiver/Positioning.h"

namespace receiver {

/// What commands do to the chip: its settings, its start and stop, and what it is told by assistance.
class ReceiverCommands {
public:
    ReceiverCommands(Configuration& settings, Positioning& positioning)
        : m_settings(settings), m_positioning(positioning), m_engine(positioning.Engine())
    {
    }

    /// Carries out a command that has been judged right.
    protocol::AckStatus CarryOut(const protocol::FrameView& frame, Millis now);

private:
    void Configure(const protocol::FrameView& frame, Millis now);
    void Assist(const protocol::FrameView& frame, Millis now);

    Configuration& m_settings;
    Positioning& m_positioning;
    FixEngine& m_engine;
};

} // namespace receiver
