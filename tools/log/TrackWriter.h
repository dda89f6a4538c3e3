// SPDX-License-Identifier: MIT
#pragma once

#include "tools/log/LogOutput.h"
#include "tools/log/TrackCollector.h"

#include <memory>
#include <string>

namespace tools {

/// Writes a track in one format, point by point; the memory it needs does not grow with the track. What it
/// writes is well-formed also when there was no point.
class TrackWriter {
public:
    explicit TrackWriter(LogOutput& output) : m_output(output) {}
    virtual ~TrackWriter() = default;
    TrackWriter(const TrackWriter&) = delete;
    TrackWriter& operator=(const TrackWriter&) = delete;

    /// `name` is what the track is called: the input's name.
    virtual void Begin(const std::string& name) = 0;
    virtual void Point(const TrackPoint& point) = 0;
    virtual void End() = 0;

protected:
    LogOutput& m_output;
};

std::unique_ptr<TrackWriter> MakeCsvWriter(LogOutput& output);
std::unique_ptr<TrackWriter> MakeGpxWriter(LogOutput& output);
std::unique_ptr<TrackWriter> MakeKmlWriter(LogOutput& output);
std::unique_ptr<TrackWriter> MakeGeoJsonWriter(LogOutput& output);

// Decimals of the written numbers.
constexpr int kDegreeDecimals = 8; ///< about a millimetre
constexpr int kAltitudeDecimals = 3;
constexpr int kSpeedDecimals = 3;
constexpr int kCourseDecimals = 2;
constexpr int kDopDecimals = 2;

} // namespace tools
