// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Orbits.h"

#include <array>
#include <vector>

namespace receiver {

/// A satellite above the horizon as the antenna receives it.
struct SatelliteView {
    std::size_t index = 0; ///< into AllOrbits()
    const Orbit* orbit = nullptr;
    Vector3 position; ///< earth-fixed metres
    LookAngle look;
    std::size_t signals = 1;           ///< 1 or 2
    std::array<double, 2> cn0{{0, 0}}; ///< dB-Hz
};

/// The satellites above a place at a moment, with signal strengths by elevation and slow fading. Everything
/// follows from the seed, the place and the time; nothing depends on how often it is asked.
class Sky {
public:
    explicit Sky(std::uint64_t seed) : m_seed(seed) {}

    /// dB taken off every signal.
    void SetAttenuation(double decibels) { m_attenuation = decibels; }

    std::vector<SatelliteView> Above(const Geodetic& place, Millis utc,
                                     const std::array<bool, kSystems>& enabled) const;

    static double Frequency(const Orbit& orbit, std::size_t signal); ///< MHz

private:
    double Strength(const Orbit& orbit, std::size_t signal, double elevation, Millis utc) const;

    std::uint64_t m_seed;
    double m_attenuation = 0.0;
};

} // namespace receiver
