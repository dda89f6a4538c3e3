// SPDX-License-Identifier: MIT
#include "views/track/TrackGeometry.h"

#include <cmath>
#include <limits>

namespace TrackGeometry {
namespace {

constexpr double kTolerance = 1e-6;
constexpr double kDegreesLatitudePerMetre = 8.99e-06;
constexpr double kDegreesLongitudePerMetre = 1.141e-05;

bool AtLeast(double value, double limit)
{
    return value > limit - kTolerance;
}

/// Where a scale stands within its decade: above 1 and up to 10. Zero for a scale that has no decade.
double PlaceInDecade(double scale)
{
    if (!std::isfinite(scale) || scale <= 0.0) {
        return 0.0;
    }
    double place = scale * 10.0;
    while (place > 10.0 + kTolerance) {
        place /= 10.0;
    }
    while (place <= 1.0 + kTolerance) {
        place *= 10.0;
    }
    return place;
}

bool IsFinite(const TrackState::GeoPoint& point)
{
    return std::isfinite(point.latitude) && std::isfinite(point.longitude);
}

QString Eight(double value)
{
    return QString::number(std::fabs(value), 'f', 8);
}

} // namespace

double ZoomedOut(double scale)
{
    const double place = PlaceInDecade(scale);
    if (AtLeast(place, 10.0)) {
        return scale * 2.5;
    }
    if (AtLeast(place, 2.5)) {
        return scale * 2.0;
    }
    return scale;
}

double ZoomedIn(double scale)
{
    const double place = PlaceInDecade(scale);
    if (AtLeast(place, 5.0)) {
        return scale / 2.0;
    }
    if (AtLeast(place, 2.5)) {
        return scale / 2.5;
    }
    return scale;
}

QString RingLabel(int diameter, double scale)
{
    const int tenth = diameter / 10;
    const float centimetres = static_cast<float>(tenth * scale);
    if (centimetres >= 100000.0F) {
        return QString::number(static_cast<double>(centimetres) / 100000.0) + "km";
    }
    if (centimetres >= 100.0F) {
        return QString::number(static_cast<double>(centimetres) / 100.0) + "m";
    }
    return QString::number(static_cast<double>(centimetres)) + "cm";
}

QString CentreText(double latitude, double longitude)
{
    return Eight(latitude) + (latitude < 0.0 ? "°S " : "°N ") + Eight(longitude) + (longitude < 0.0 ? "°W" : "°E");
}

std::optional<TrackState::GeoPoint> NewCentre(const std::vector<TrackState::GeoPoint>& points, bool useLastPoint,
                                              double centreLatitude)
{
    if (points.empty()) {
        return std::nullopt;
    }
    if (useLastPoint) {
        if (IsFinite(points.back())) {
            return points.back();
        }
        return std::nullopt;
    }
    // A latitude below the limit counts as a centre not set yet. South of the equator it always is, so that there
    // the first point is taken at every paint, and so it is meant.
    if (centreLatitude >= 1e-06) {
        return std::nullopt;
    }
    for (const TrackState::GeoPoint& point : points) {
        if (IsFinite(point)) {
            return point;
        }
    }
    return std::nullopt;
}

QPointF DotPosition(double east, double north, double scale)
{
    return {east * 10.0 * 50.0 / scale, -(north * 10.0 * 50.0 / scale)};
}

int RoundedPixel(double position)
{
    const double rounded = std::round(position);
    if (!(rounded > std::numeric_limits<int>::min())) {
        return std::isnan(rounded) ? 0 : std::numeric_limits<int>::min();
    }
    if (rounded >= std::numeric_limits<int>::max()) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(rounded);
}

TrackState::GeoPoint DragShift(int fromX, int fromY, int toX, int toY, double scale)
{
    const double dx = static_cast<double>(fromX) - toX;
    const double dy = static_cast<double>(toY) - fromY;
    return {dy * scale * kDegreesLatitudePerMetre / 10.0 / 50.0,
            dx * scale * kDegreesLongitudePerMetre / 10.0 / 50.0};
}

std::optional<TrackState::GeoPoint> Average(const std::vector<TrackState::GeoPoint>& points)
{
    if (points.empty()) {
        return std::nullopt;
    }
    TrackState::GeoPoint sum{0.0, 0.0};
    for (const TrackState::GeoPoint& point : points) {
        sum.latitude += point.latitude;
        sum.longitude += point.longitude;
    }
    const double count = static_cast<double>(points.size());
    const TrackState::GeoPoint mean{sum.latitude / count, sum.longitude / count};
    if (!IsFinite(mean)) {
        return std::nullopt;
    }
    return mean;
}

} // namespace TrackGeometry
