// SPDX-License-Identifier: MIT
#pragma once

namespace receiver {

struct Geodetic {
    double latitude = 0.0;  ///< degrees, north positive
    double longitude = 0.0; ///< degrees, east positive
    double altitude = 0.0;  ///< metres above the ellipsoid, which is also the model's sea level
};

struct Vector3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

struct LookAngle {
    double elevation = 0.0; ///< degrees
    double azimuth = 0.0;   ///< degrees clockwise from north, [0, 360)
    double range = 0.0;     ///< metres
};

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegree = kPi / 180.0;
constexpr double kEarthRate = 7.2921151467e-5; ///< rad/s
constexpr double kGravity = 3.986004418e14;    ///< m^3/s^2
constexpr double kLightSpeed = 299792458.0;    ///< m/s

/// WGS 84, earth-fixed.
Vector3 ToEcef(const Geodetic& place);

LookAngle LookFrom(const Geodetic& place, const Vector3& target);

/// `place` moved by metres east, north and up; meant for distances up to some tens of kilometres.
Geodetic Moved(const Geodetic& place, double east, double north, double up);

/// Metres east and north from one place to another, meant for the same distances.
void OffsetBetween(const Geodetic& from, const Geodetic& to, double& east, double& north);

/// Great-circle distance in metres on a sphere; good to half a percent.
double RoughDistance(const Geodetic& a, const Geodetic& b);

} // namespace receiver
