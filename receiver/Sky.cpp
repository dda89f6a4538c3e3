// SPDX-License-Identifier: MIT
#include "receiver/Sky.h"

#include "receiver/Random.h"

#include <algorithm>
#include <cmath>

namespace receiver {

double Sky::Frequency(const Orbit& orbit, std::size_t signal)
{
    const SignalPlan& plan = SignalOf(orbit.system, signal);
    return plan.frequency + plan.channelStep * orbit.channel;
}

double Sky::Strength(const Orbit& orbit, std::size_t signal, double elevation, Millis utc) const
{
    const double s = std::sin(std::max(elevation, 0.0) * kDegree);
    const double seconds = static_cast<double>(utc) / 1000.0;
    const std::uint64_t key = MixKeys(m_seed, static_cast<std::uint64_t>(orbit.system) * 256 + orbit.svid, signal);
    // Low satellites are seen through reflections: they fade more.
    const double fading = 0.7 + 1.8 * (1.0 - s);
    double cn0 = 26.0 + 21.0 * std::pow(s, 0.55) + SignalOf(orbit.system, signal).strength;
    if (orbit.kind == OrbitKind::Geostationary) {
        cn0 -= 3.0;
    }
    cn0 += 1.2 * (2.0 * UnitFromBits(MixKeys(key, 77)) - 1.0);
    cn0 += fading * (0.8 * SmoothNoise(key, seconds, 45.0) + 0.4 * SmoothNoise(key ^ 0x5555u, seconds, 6.0));
    return cn0 - m_attenuation;
}

std::vector<SatelliteView> Sky::Above(const Geodetic& place, Millis utc,
                                      const std::array<bool, kSystems>& enabled) const
{
    std::vector<SatelliteView> views;
    const std::vector<Orbit>& orbits = AllOrbits();
    for (std::size_t i = 0; i < orbits.size(); ++i) {
        const Orbit& orbit = orbits[i];
        if (!enabled[static_cast<std::size_t>(orbit.system)]) {
            continue;
        }
        SatelliteView view;
        view.position = PositionAt(orbit, utc);
        view.look = LookFrom(place, view.position);
        if (view.look.elevation <= 0.0) {
            continue;
        }
        view.index = i;
        view.orbit = &orbit;
        view.signals = orbit.secondSignal ? 2 : 1;
        for (std::size_t signal = 0; signal < view.signals; ++signal) {
            view.cn0[signal] = std::clamp(Strength(orbit, signal, view.look.elevation, utc), 0.0, 60.0);
        }
        views.push_back(view);
    }
    return views;
}

} // namespace receiver
