// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"

namespace codec {

/// Sends the records that one fix gives, wherever it comes from.
class FixOutput {
public:
    /// The next valid fix is the first one since a start.
    void Arm() { m_firstFixArmed = true; }

    /// `fix.fixMode` 0 = no fix: then neither the first fix nor the record of the performance test comes.
    /// Without a position no PositionRecord goes out: a point at 0, 0 would spoil a track.
    /// `compassHeading` in degrees.
    void Send(RecordSink& sink, const protocol::FixRecord& fix, bool havePosition, float compassHeading);

private:
    bool m_firstFixArmed = true;
};

} // namespace codec
