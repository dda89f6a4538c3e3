// SPDX-License-Identifier: MIT
#include "codec/Geodesy.h"

#include <cmath>

namespace codec {

namespace {

constexpr double kSemiMajorAxis = 6378137.0;
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kEccentricitySquared = kFlattening * (2.0 - kFlattening);
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;

struct Place {
    double sinLat, cosLat, sinLon, cosLon;
    double x, y, z;
};

Place PlaceAt(double latitude, double longitude, double height)
{
    Place place{};
    const double lat = latitude * kRadiansPerDegree;
    const double lon = longitude * kRadiansPerDegree;
    place.sinLat = std::sin(lat);
    place.cosLat = std::cos(lat);
    place.sinLon = std::sin(lon);
    place.cosLon = std::cos(lon);
    const double normal = kSemiMajorAxis / std::sqrt(1.0 - kEccentricitySquared * place.sinLat * place.sinLat);
    place.x = (normal + height) * place.cosLat * place.cosLon;
    place.y = (normal + height) * place.cosLat * place.sinLon;
    place.z = (normal * (1.0 - kEccentricitySquared) + height) * place.sinLat;
    return place;
}

void Rotate(const Place& from, double dx, double dy, double dz, double enu[3])
{
    const double outward = from.cosLon * dx + from.sinLon * dy;
    enu[0] = -from.sinLon * dx + from.cosLon * dy;
    enu[1] = -from.sinLat * outward + from.cosLat * dz;
    enu[2] = from.cosLat * outward + from.sinLat * dz;
}

bool NoLatitude(double degrees)
{
    return degrees < -90.0 || degrees > 90.0;
}

bool LongitudeComesFirst(const double reference[3], const double position[3])
{
    if (NoLatitude(reference[1]) || NoLatitude(position[1])) {
        return false;
    }
    if (NoLatitude(reference[0]) || NoLatitude(position[0])) {
        return true;
    }
    return reference[2] == 0.0 && position[2] == 0.0;
}

} // namespace

void GeodeticToEnu(const double reference[3], const double position[3], double enu[3])
{
    if (enu == nullptr) {
        return;
    }
    if (reference == nullptr || position == nullptr) {
        enu[0] = enu[1] = enu[2] = 0.0;
        return;
    }
    const int lat = LongitudeComesFirst(reference, position) ? 1 : 0;
    const int lon = 1 - lat;

    // A track is converted around one centre, so the centre of the last call is nearly always that of this.
    struct Centre {
        double latitude = NAN, longitude = NAN, height = NAN;
        Place place{};
    };
    thread_local Centre centre;
    if (centre.latitude != reference[lat] || centre.longitude != reference[lon] || centre.height != reference[2]) {
        centre.latitude = reference[lat];
        centre.longitude = reference[lon];
        centre.height = reference[2];
        centre.place = PlaceAt(reference[lat], reference[lon], reference[2]);
    }
    const Place& from = centre.place;
    const Place to = PlaceAt(position[lat], position[lon], position[2]);
    Rotate(from, to.x - from.x, to.y - from.y, to.z - from.z, enu);
}

void EarthCentredToEnu(const double place[3], double x, double y, double z, double enu[3])
{
    const Place from = PlaceAt(place[0], place[1], place[2]);
    Rotate(from, x - from.x, y - from.y, z - from.z, enu);
}

} // namespace codec
