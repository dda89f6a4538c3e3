// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Sky.h"

#include <vector>

namespace receiver {

struct EpochSatellite {
    SatelliteView view;
    bool tracked = false;
    bool located = false; ///< the receiver knows where in the sky it is
    bool used = false;    ///< in the fix
};

/// All that the receiver knows at one epoch: what its sentences and reports say.
struct Epoch {
    Millis utc = 0;
    bool timeKnown = false;
    bool fixed = false;
    Geodetic position;
    double speed = 0.0;   ///< metres a second
    double heading = 0.0; ///< degrees
    bool headingKnown = false;
    double climb = 0.0;
    double accuracy = 0.0; ///< metres, horizontal
    double pdop = 99.99;
    double hdop = 99.99;
    double vdop = 99.99;
    int usedCount = 0;
    int trackedCount = 0;
    const char* startKind = "NONE";
    double timeToFirstFix = -1.0; ///< seconds; below 0 before the first fix
    double temperature = 35.0;    ///< degrees Celsius
    double clockBias = 0.0;       ///< metres
    double clockDrift = 0.0;      ///< metres a second
    std::vector<EpochSatellite> satellites;
};

/// Dilutions of precision of the used satellites; false with fewer than four or a flat geometry.
bool ComputeDilution(const std::vector<EpochSatellite>& satellites, double& pdop, double& hdop, double& vdop);

} // namespace receiver
