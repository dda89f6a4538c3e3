#include "codec/epoch/FixOutput.h"

#include <cstddef>
#include <cstring>

namespace gnss {

void FixOutput::Send(RecordSink& sink, const FixRecord& fix, bool havePosition, float compassHeading)
{
    const bool valid = fix.fixMode != FixInvalid;
    if (valid && m_firstFixArmed) {
        // Before the fix itself, whose view shows the time that it took.
        m_firstFixArmed = false;
        sink.OnFirstFix();
    }
    sink.OnFix(fix);

    if (havePosition) {
        PositionRecord position{};
        position.latitude = fix.latitude;
        position.longitude = fix.longitude;
        position.altitude = fix.altitude;
        position.fixMode = fix.fixMode;
        sink.OnPosition(position);
    }

    CompassRecord compass{};
    compass.heading = compassHeading;
    compass.fixMode = fix.fixMode;
    sink.OnCompass(compass);

    if (valid) {
        KpiFixRecord kpi{};
        static_assert(offsetof(FixRecord, fixMode) == offsetof(KpiFixRecord, speed), "a common beginning");
        std::memcpy(&kpi, &fix, offsetof(KpiFixRecord, speed));
        kpi.speed = fix.speed;
        kpi.heading = fix.heading;
        sink.OnKpiFix(kpi);
    }
}

} // namespace gnss
