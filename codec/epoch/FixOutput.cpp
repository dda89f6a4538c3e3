// SPDX-License-Identifier: MIT
#include "codec/epoch/FixOutput.h"

#include <cstddef>
#include <cstring>

namespace codec {

void FixOutput::Send(RecordSink& sink, const protocol::FixRecord& fix, bool havePosition, float compassHeading)
{
    const bool valid = fix.fixMode != protocol::FixInvalid;
    if (valid && m_firstFixArmed) {
        // Before the fix itself, whose view shows the time that it took.
        m_firstFixArmed = false;
        sink.OnFirstFix();
    }
    sink.OnFix(fix);

    if (havePosition) {
        protocol::PositionRecord position{};
        position.latitude = fix.latitude;
        position.longitude = fix.longitude;
        position.altitude = fix.altitude;
        position.fixMode = fix.fixMode;
        sink.OnPosition(position);
    }

    protocol::CompassRecord compass{};
    compass.heading = compassHeading;
    compass.fixMode = fix.fixMode;
    sink.OnCompass(compass);

    if (valid) {
        protocol::KpiFixRecord kpi{};
        static_assert(offsetof(protocol::FixRecord, fixMode) == offsetof(protocol::KpiFixRecord, speed),
                      "a common beginning");
        std::memcpy(&kpi, &fix, offsetof(protocol::KpiFixRecord, speed));
        kpi.speed = fix.speed;
        kpi.heading = fix.heading;
        sink.OnKpiFix(kpi);
    }
}

} // namespace codec
