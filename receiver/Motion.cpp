// SPDX-License-Identifier: MIT
#include "receiver/Motion.h"

#include "receiver/TextNumbers.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

// The median of a Rayleigh distribution of deviation 1.
constexpr double kRayleighMedian = 1.1774100225154747;
constexpr double kWanderSeconds = 60.0;
// Shares of the variance; together they are 1.
constexpr double kSlowShare = 0.98;
constexpr double kQuickShare = 0.02;
constexpr double kVerticalFactor = 1.5;

double CourseOf(double east, double north)
{
    const double course = std::atan2(east, north) / kDegree;
    return course < 0.0 ? course + 360.0 : course;
}

} // namespace

Motion Motion::Still(const Geodetic& place)
{
    Motion motion;
    motion.m_place = place;
    return motion;
}

Motion Motion::Circle(const Geodetic& centre, double radius, double speed)
{
    Motion motion;
    motion.m_kind = Kind::Circle;
    motion.m_place = centre;
    motion.m_radius = radius;
    motion.m_speed = speed;
    return motion;
}

Motion Motion::Along(std::vector<TrackPoint> points)
{
    Motion motion;
    motion.m_kind = Kind::Points;
    motion.m_points = std::move(points);
    return motion;
}

MotionState Motion::At(double seconds) const
{
    MotionState state;
    if (m_kind == Kind::Still) {
        state.place = m_place;
        return state;
    }
    if (m_kind == Kind::Circle) {
        // Clockwise, beginning in the north.
        const double angle = m_speed / m_radius * seconds;
        state.place = Moved(m_place, m_radius * std::sin(angle), m_radius * std::cos(angle), 0.0);
        state.speed = m_speed;
        state.heading = std::fmod(angle / kDegree + 90.0, 360.0);
        return state;
    }
    const auto after = std::upper_bound(m_points.begin(), m_points.end(), seconds,
                                        [](double t, const TrackPoint& point) { return t < point.seconds; });
    if (after == m_points.begin() || after == m_points.end()) {
        state.place = after == m_points.end() ? m_points.back().place : m_points.front().place;
        return state;
    }
    const TrackPoint& a = *(after - 1);
    const TrackPoint& b = *after;
    const double span = b.seconds - a.seconds;
    const double share = (seconds - a.seconds) / span;
    double east = 0.0;
    double north = 0.0;
    OffsetBetween(a.place, b.place, east, north);
    const double up = b.place.altitude - a.place.altitude;
    state.place = Moved(a.place, east * share, north * share, up * share);
    state.speed = std::hypot(east, north) / span;
    state.heading = CourseOf(east, north);
    state.climb = up / span;
    return state;
}

bool ParseTrack(std::string_view text, std::vector<TrackPoint>& points, std::string& error)
{
    points.clear();
    std::int64_t line = 0;
    bool good = true;
    const auto fail = [&](const char* what) {
        error = "line ";
        AppendInteger(error, line);
        error += ": ";
        error += what;
        good = false;
    };
    Split(text, '\n', [&](std::string_view raw) {
        ++line;
        if (!good) {
            return;
        }
        std::string cleaned(raw);
        for (char& c : cleaned) {
            if (c == ',' || c == ';' || c == '\t' || c == '\r') {
                c = ' ';
            }
        }
        const std::size_t first = cleaned.find_first_not_of(' ');
        if (first == std::string::npos || cleaned[first] == '#' ||
            std::string_view("+-.0123456789").find(cleaned[first]) == std::string_view::npos) {
            return;
        }
        double values[4] = {0, 0, 0, 0};
        std::size_t count = 0;
        Split(cleaned, ' ', [&](std::string_view word) {
            if (word.empty() || !good) {
                return;
            }
            if (count == 4 || !ParseDouble(word, values[count])) {
                fail("expected seconds,lat,lon,alt");
                return;
            }
            ++count;
        });
        if (!good) {
            return;
        }
        if (count < 3) {
            fail("expected seconds,lat,lon,alt");
        } else if (std::abs(values[1]) > 90.0 || std::abs(values[2]) > 180.0) {
            fail("no such place");
        } else if (!points.empty() && values[0] <= points.back().seconds) {
            fail("the seconds do not grow");
        } else {
            points.push_back({values[0], {values[1], values[2], values[3]}});
        }
    });
    if (good && points.empty()) {
        error = "no points";
        good = false;
    }
    return good;
}

PositionWander::PositionWander(std::uint64_t seed, double median)
    : m_random(seed), m_sigma(median / kRayleighMedian)
{
    Restart();
}

void PositionWander::Restart()
{
    for (double& slow : m_slow) {
        slow = m_random.Gaussian();
    }
    Step(0.0);
}

void PositionWander::Step(double seconds)
{
    const double keep = std::exp(-seconds / kWanderSeconds);
    const double fresh = std::sqrt(1.0 - keep * keep);
    for (int i = 0; i < 3; ++i) {
        m_slow[i] = keep * m_slow[i] + fresh * m_random.Gaussian();
        const double unit = std::sqrt(kSlowShare) * m_slow[i] + std::sqrt(kQuickShare) * m_random.Gaussian();
        m_value[i] = unit * m_sigma * (i == 2 ? kVerticalFactor : 1.0);
    }
}

} // namespace receiver
