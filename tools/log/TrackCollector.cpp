// SPDX-License-Identifier: MIT
#include "tools/log/TrackCollector.h"

#include <cstring>

namespace tools {

void TrackCollector::OnFix(const protocol::FixRecord& record)
{
    Finish();
    TrackPoint point;
    point.fix = record;
    point.time = FixTime(record);
    // One epoch may come without a fix first and then, when a later sentence has it, with one.
    m_interrupted = m_interrupted || (m_lost && !point.time.IsSame(m_lostTime));
    m_lost = record.fixMode == protocol::FixInvalid;
    if (m_lost) {
        m_lostTime = point.time;
        return;
    }
    if (m_points > 0 && point.time.Known() && m_point.time.Known()) {
        const std::int64_t step = point.time.MillisecondsSince(m_point.time);
        m_interrupted = m_interrupted || step < 0 || step > kLongestStepMs;
    }
    point.beginsSegment = m_interrupted;
    m_interrupted = false;
    m_point = point;
    m_pending = true;
    ++m_points;
}

void TrackCollector::OnMessage(std::uint32_t msgType, const std::uint8_t* record, std::size_t payloadLength)
{
    if (msgType == protocol::MsgTypeGga && payloadLength == sizeof(protocol::MsgGga) && m_pending) {
        protocol::MsgGga gga;
        std::memcpy(&gga, record + protocol::kMessageHeaderSize, sizeof gga);
        m_point.satellites = gga.svNumInUse;
        // A record without an altitude holds 0, which may also be one.
        m_altitudeTold = m_altitudeTold || (gga.valid != 0 && gga.altitudeUnits == 'M');
    }
}

void TrackCollector::Finish()
{
    if (m_pending) {
        m_pending = false;
        m_altitudeTold = m_altitudeTold || m_point.fix.altitude != 0.0;
        m_point.hasAltitude = m_altitudeTold;
        m_take(m_point);
    }
}

} // namespace tools
