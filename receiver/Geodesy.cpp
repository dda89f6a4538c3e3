// SPDX-License-Identifier: MIT
#include "receiver/Geodesy.h"

#include <algorithm>
#include <cmath>

namespace receiver {

namespace {

constexpr double kSemiMajor = 6378137.0;
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kEccentricity2 = kFlattening * (2.0 - kFlattening);

// Metres per radian of latitude and longitude.
void Radii(const Geodetic& place, double& meridian, double& parallel)
{
    const double s = std::sin(place.latitude * kDegree);
    const double w2 = 1.0 - kEccentricity2 * s * s;
    const double w = std::sqrt(w2);
    meridian = kSemiMajor * (1.0 - kEccentricity2) / (w2 * w) + place.altitude;
    parallel = (kSemiMajor / w + place.altitude) * std::max(std::cos(place.latitude * kDegree), 1e-9);
}

double WrapLongitude(double degrees)
{
    return degrees - 360.0 * std::floor((degrees + 180.0) / 360.0);
}

} // namespace

Vector3 ToEcef(const Geodetic& place)
{
    const double s = std::sin(place.latitude * kDegree);
    const double c = std::cos(place.latitude * kDegree);
    const double n = kSemiMajor / std::sqrt(1.0 - kEccentricity2 * s * s);
    return {(n + place.altitude) * c * std::cos(place.longitude * kDegree),
            (n + place.altitude) * c * std::sin(place.longitude * kDegree),
            (n * (1.0 - kEccentricity2) + place.altitude) * s};
}

LookAngle LookFrom(const Geodetic& place, const Vector3& target)
{
    const Vector3 here = ToEcef(place);
    const double dx = target.x - here.x;
    const double dy = target.y - here.y;
    const double dz = target.z - here.z;
    const double sLat = std::sin(place.latitude * kDegree);
    const double cLat = std::cos(place.latitude * kDegree);
    const double sLon = std::sin(place.longitude * kDegree);
    const double cLon = std::cos(place.longitude * kDegree);
    const double east = -sLon * dx + cLon * dy;
    const double north = -sLat * cLon * dx - sLat * sLon * dy + cLat * dz;
    const double up = cLat * cLon * dx + cLat * sLon * dy + sLat * dz;
    LookAngle look;
    look.range = std::sqrt(dx * dx + dy * dy + dz * dz);
    look.elevation = std::asin(up / look.range) / kDegree;
    look.azimuth = std::atan2(east, north) / kDegree;
    if (look.azimuth < 0.0) {
        look.azimuth += 360.0;
    }
    return look;
}

Geodetic Moved(const Geodetic& place, double east, double north, double up)
{
    double meridian = 0.0;
    double parallel = 0.0;
    Radii(place, meridian, parallel);
    Geodetic moved;
    moved.latitude = std::clamp(place.latitude + north / meridian / kDegree, -90.0, 90.0);
    moved.longitude = WrapLongitude(place.longitude + east / parallel / kDegree);
    moved.altitude = place.altitude + up;
    return moved;
}

void OffsetBetween(const Geodetic& from, const Geodetic& to, double& east, double& north)
{
    double meridian = 0.0;
    double parallel = 0.0;
    Radii(from, meridian, parallel);
    north = (to.latitude - from.latitude) * kDegree * meridian;
    east = WrapLongitude(to.longitude - from.longitude) * kDegree * parallel;
}

double RoughDistance(const Geodetic& a, const Geodetic& b)
{
    const double dLat = (b.latitude - a.latitude) * kDegree / 2.0;
    const double dLon = (b.longitude - a.longitude) * kDegree / 2.0;
    const double h = std::sin(dLat) * std::sin(dLat) + std::cos(a.latitude * kDegree) *
                                                           std::cos(b.latitude * kDegree) * std::sin(dLon) *
                                                           std::sin(dLon);
    return 2.0 * 6371000.0 * std::asin(std::sqrt(std::min(h, 1.0)));
}

} // namespace receiver
