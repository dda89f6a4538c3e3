// SPDX-License-Identifier: MIT
#include "base/TrackState.h"

namespace TrackState {

std::vector<GeoPoint> pointList;
double centerLatitude = 0.0;
double centerLongitude = 0.0;
bool useLastPoint = false;

void Reset()
{
    pointList.clear();
    centerLatitude = 0.0;
    centerLongitude = 0.0;
    useLastPoint = false;
}

} // namespace TrackState
