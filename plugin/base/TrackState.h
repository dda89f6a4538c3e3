// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

/// What the track plots and the centre dialog share. It outlives a window, so a new window resets it.
namespace TrackState {

/// Degrees, north and east positive.
struct GeoPoint {
    double latitude;
    double longitude;
};

extern std::vector<GeoPoint> pointList; ///< every position since the plot was opened or cleared, in arrival order
extern double centerLatitude;           ///< degrees; the middle of the plot
extern double centerLongitude;          ///< degrees
extern bool useLastPoint;               ///< the centre follows the last point

/// No points, no centre, and the centre doesn't follow.
void Reset();

} // namespace TrackState
