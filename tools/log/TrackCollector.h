// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "tools/log/FixTime.h"

#include <cstdint>
#include <functional>

namespace tools {

/// One fix of a track.
struct TrackPoint {
    protocol::FixRecord fix{};
    FixTime time;
    int satellites = -1;       ///< used in the fix; -1 unknown
    bool hasAltitude = false;  ///< the capture has told an altitude so far
    bool beginsSegment = true; ///< the track is interrupted before this point
};

/// Makes track points of a codec's records. A point goes out when the next fix comes, since what belongs to
/// it may follow it.
class TrackCollector final : public codec::RecordSink {
public:
    static constexpr std::int64_t kLongestStepMs = 60000; ///< a longer one interrupts the track

    using Take = std::function<void(const TrackPoint&)>;
    explicit TrackCollector(Take take) : m_take(std::move(take)) {}

    void OnFix(const protocol::FixRecord& record) override;
    void OnMessage(std::uint32_t msgType, const std::uint8_t* record, std::size_t payloadLength) override;

    /// Gives out the last point, after the codec's end of input.
    void Finish();
    std::uint64_t Points() const { return m_points; }

private:
    Take m_take;
    TrackPoint m_point;
    bool m_pending = false;
    bool m_altitudeTold = false;
    bool m_interrupted = true;
    bool m_lost = false; ///< an epoch without a fix was the last
    FixTime m_lostTime;
    std::uint64_t m_points = 0;
};

} // namespace tools
