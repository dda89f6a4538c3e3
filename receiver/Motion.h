// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Geodesy.h"
#include "receiver/Random.h"

#include <string>
#include <string_view>
#include <vector>

namespace receiver {

/// Where the antenna truly is and how it moves.
struct MotionState {
    Geodetic place;
    double speed = 0.0;   ///< metres a second over ground
    double heading = 0.0; ///< degrees clockwise from north
    double climb = 0.0;   ///< metres a second
};

struct TrackPoint {
    double seconds = 0.0;
    Geodetic place;
};

/// The antenna's way: at rest, on a circle, or along the points of a file, on which it starts at power-on and
/// at whose last point it stays.
class Motion {
public:
    static Motion Still(const Geodetic& place);
    static Motion Circle(const Geodetic& centre, double radius, double speed);
    /// Needs at least one point, in order of time.
    static Motion Along(std::vector<TrackPoint> points);

    MotionState At(double seconds) const;

private:
    enum class Kind { Still, Circle, Points };
    Kind m_kind = Kind::Still;
    Geodetic m_place;
    double m_radius = 0.0;
    double m_speed = 0.0;
    std::vector<TrackPoint> m_points;
};

/// Reads lines `seconds,lat,lon,alt`; separators are comma, semicolon or blanks, the altitude may be missing,
/// lines that begin with a letter or '#' are passed over. On failure `error` says which line is wrong and why.
bool ParseTrack(std::string_view text, std::vector<TrackPoint>& points, std::string& error);

/// The wander of the reported position around the true one: slow, with a little noise on top.
class PositionWander {
public:
    /// `median` is the median horizontal error in metres.
    PositionWander(std::uint64_t seed, double median);

    /// A new draw, as after a start.
    void Restart();
    void Step(double seconds);

    double East() const { return m_value[0]; }
    double North() const { return m_value[1]; }
    double Up() const { return m_value[2]; }

private:
    Random m_random;
    double m_sigma;
    double m_slow[3] = {0, 0, 0};
    double m_value[3] = {0, 0, 0};
};

} // namespace receiver
