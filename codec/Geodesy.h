// SPDX-License-Identifier: MIT
#pragma once

namespace codec {

/// Local east, north and up of a position as seen from a reference, in metres, exact on the WGS 84 ellipsoid
/// (geodetic to earth-centred to local). `reference` and `position` hold latitude and longitude in degrees
/// and height in metres above the ellipsoid.
///
/// The callers fill the arrays in two orders, and both come out right: a second element outside -90 to 90, in
/// either array, means latitude first; else a first element outside it means longitude first; else two
/// heights of exactly 0 mean longitude first; every other call is latitude first.
///
/// Not-a-number or infinity gives not-a-number. A null `enu` does nothing; another null gives zeros.
void GeodeticToEnu(const double reference[3], const double position[3], double enu[3]);

/// The same for a point in earth-centred metres; `place` holds latitude, longitude (degrees) and height.
void EarthCentredToEnu(const double place[3], double x, double y, double z, double enu[3]);

} // namespace codec
