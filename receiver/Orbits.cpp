// SPDX-License-Identifier: MIT
#include "receiver/Orbits.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace receiver {

namespace {

// By system.
constexpr SignalPlan kSignals[kSystems][2] = {
    {{1, 1575.42, 0.0, 0.0}, {8, 1176.45, 0.0, 0.5}},       {{1, 1561.098, 0.0, -0.5}, {5, 1176.45, 0.0, 0.5}},
    {{1, 1602.0, 0.5625, -1.5}, {3, 1246.0, 0.4375, -2.5}}, {{7, 1575.42, 0.0, -0.5}, {1, 1176.45, 0.0, 1.0}},
    {{1, 1575.42, 0.0, -0.5}, {8, 1176.45, 0.0, 0.5}},
};

constexpr double kMediumGps = 26559700.0;
constexpr double kMediumGlonass = 25508000.0;
constexpr double kMediumGalileo = 29600000.0;
constexpr double kMediumBeidou = 27906000.0;

// The radius at which a turn takes one sidereal day.
double SynchronousRadius()
{
    return std::cbrt(kGravity / (kEarthRate * kEarthRate));
}

// A constellation of `planes` planes with their satellites evenly spread; `step` shifts each plane against
// the one before.
void AddWalker(std::vector<Orbit>& all, System system, double radius, double inclination, int planes, double step,
               const std::uint8_t* svids, std::size_t count, double firstNode)
{
    const std::size_t perPlane = (count + static_cast<std::size_t>(planes) - 1) / static_cast<std::size_t>(planes);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t plane = i % static_cast<std::size_t>(planes);
        const std::size_t slot = i / static_cast<std::size_t>(planes);
        Orbit orbit{};
        orbit.system = system;
        orbit.kind = OrbitKind::Medium;
        orbit.svid = svids[i];
        orbit.plane = static_cast<std::uint8_t>(plane);
        orbit.secondSignal = true;
        orbit.radius = radius;
        orbit.inclination = inclination * kDegree;
        orbit.node = (firstNode + 360.0 * static_cast<double>(plane) / planes) * kDegree;
        orbit.argument = (360.0 * static_cast<double>(slot) / static_cast<double>(perPlane) +
                          step * static_cast<double>(plane)) *
                         kDegree;
        all.push_back(orbit);
    }
}

// A satellite that keeps its place over the earth, or draws a figure of eight around its longitude.
void AddSynchronous(std::vector<Orbit>& all, System system, std::uint8_t svid, double inclination,
                    double longitude, double phase, bool secondSignal)
{
    Orbit orbit{};
    orbit.system = system;
    orbit.kind = inclination > 1.0 ? OrbitKind::Inclined : OrbitKind::Geostationary;
    orbit.svid = svid;
    orbit.secondSignal = secondSignal;
    orbit.radius = SynchronousRadius();
    orbit.inclination = inclination * kDegree;
    orbit.node = (longitude - phase) * kDegree;
    orbit.argument = phase * kDegree;
    all.push_back(orbit);
}

std::vector<Orbit> BuildOrbits()
{
    std::vector<Orbit> all;
    std::uint8_t gps[31];
    for (std::size_t i = 0; i < std::size(gps); ++i) {
        gps[i] = static_cast<std::uint8_t>(i + 1);
    }
    AddWalker(all, System::Gps, kMediumGps, 55.0, 6, 37.0, gps, std::size(gps), 32.0);
    constexpr std::uint8_t withL5[] = {1, 3, 4, 6, 8, 9, 10, 11, 14, 18, 23, 24, 25, 26, 27, 28, 30};
    for (Orbit& orbit : all) {
        orbit.secondSignal = std::find(std::begin(withL5), std::end(withL5), orbit.svid) != std::end(withL5);
    }

    constexpr std::uint8_t medium[] = {19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30,
                                       32, 33, 34, 35, 36, 37, 41, 42, 43, 44, 45, 46};
    AddWalker(all, System::Beidou, kMediumBeidou, 55.0, 3, 15.0, medium, std::size(medium), 71.0);
    AddSynchronous(all, System::Beidou, 1, 0.0, 140.0, 0.0, false);
    AddSynchronous(all, System::Beidou, 2, 0.0, 80.0, 0.0, false);
    AddSynchronous(all, System::Beidou, 3, 0.0, 110.5, 0.0, false);
    AddSynchronous(all, System::Beidou, 4, 0.0, 160.0, 0.0, false);
    AddSynchronous(all, System::Beidou, 5, 0.0, 58.75, 0.0, false);
    AddSynchronous(all, System::Beidou, 6, 55.0, 118.0, 0.0, false);
    AddSynchronous(all, System::Beidou, 7, 55.0, 118.0, 120.0, false);
    AddSynchronous(all, System::Beidou, 8, 55.0, 118.0, 240.0, false);
    AddSynchronous(all, System::Beidou, 9, 55.0, 95.0, 60.0, false);
    AddSynchronous(all, System::Beidou, 10, 55.0, 95.0, 180.0, false);
    AddSynchronous(all, System::Beidou, 13, 55.0, 95.0, 300.0, false);
    AddSynchronous(all, System::Beidou, 38, 55.0, 108.0, 30.0, true);
    AddSynchronous(all, System::Beidou, 39, 55.0, 108.0, 150.0, true);
    AddSynchronous(all, System::Beidou, 40, 55.0, 108.0, 270.0, true);

    std::uint8_t glonass[24];
    for (std::size_t i = 0; i < std::size(glonass); ++i) {
        // Eight neighbours in number share a plane.
        glonass[i] = static_cast<std::uint8_t>(65 + i % 3 * 8 + i / 3);
    }
    const std::size_t firstGlonass = all.size();
    AddWalker(all, System::Glonass, kMediumGlonass, 64.8, 3, 15.0, glonass, std::size(glonass), 12.0);
    // Satellites on opposite sides of a plane share a frequency channel.
    constexpr std::int8_t channels[3][4] = {{1, -4, 5, 6}, {-2, -7, 0, -1}, {4, -3, 3, 2}};
    for (std::size_t i = firstGlonass; i < all.size(); ++i) {
        const std::size_t number = all[i].svid - 65u;
        all[i].channel = channels[number / 8][number % 4];
        all[i].secondSignal = number % 8 > 2;
    }

    constexpr std::uint8_t galileo[] = {1,  2,  3,  4,  5,  7,  8,  9,  10, 11, 12, 13,
                                        15, 19, 21, 24, 25, 26, 27, 30, 31, 33, 34, 36};
    AddWalker(all, System::Galileo, kMediumGalileo, 56.0, 3, 15.0, galileo, std::size(galileo), 97.0);

    AddSynchronous(all, System::Qzss, 194, 41.0, 136.0, 0.0, true);
    AddSynchronous(all, System::Qzss, 195, 41.0, 136.0, 130.0, true);
    AddSynchronous(all, System::Qzss, 196, 41.0, 136.0, 250.0, true);
    AddSynchronous(all, System::Qzss, 199, 0.0, 127.0, 0.0, true);
    return all;
}

} // namespace

const SignalPlan& SignalOf(System system, std::size_t index)
{
    return kSignals[static_cast<std::size_t>(system)][index];
}

const std::vector<Orbit>& AllOrbits()
{
    static const std::vector<Orbit> all = BuildOrbits();
    return all;
}

std::uint8_t NumberInSystem(const Orbit& orbit)
{
    constexpr int first[kSystems] = {1, 1, 65, 1, 193};
    return static_cast<std::uint8_t>(orbit.svid - first[static_cast<std::size_t>(orbit.system)] + 1);
}

double PeriodOf(const Orbit& orbit)
{
    return 2.0 * kPi * std::sqrt(orbit.radius * orbit.radius * orbit.radius / kGravity);
}

Vector3 PositionAt(const Orbit& orbit, Millis utc)
{
    const double t = static_cast<double>(utc - kOrbitReference) / 1000.0;
    const double u = orbit.argument + 2.0 * kPi * std::fmod(t / PeriodOf(orbit), 1.0);
    const double node = orbit.node - std::fmod(kEarthRate * t, 2.0 * kPi);
    const double cu = std::cos(u);
    const double su = std::sin(u);
    const double ci = std::cos(orbit.inclination);
    const double cn = std::cos(node);
    const double sn = std::sin(node);
    return {orbit.radius * (cu * cn - su * ci * sn), orbit.radius * (cu * sn + su * ci * cn),
            orbit.radius * su * std::sin(orbit.inclination)};
}

} // namespace receiver
