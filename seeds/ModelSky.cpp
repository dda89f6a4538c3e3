// SPDX-License-Identifier: MIT
#include "seeds/ModelSky.h"

#include "receiver/Orbits.h"

#include <algorithm>
#include <cmath>

namespace seeds {

namespace {

constexpr std::uint32_t kDay = 86400;
constexpr std::uint8_t kLeapSeconds = 18;
constexpr std::size_t kGridSide = 7;
constexpr double kGridStep = 2.5; ///< degrees

SeedOrbitSet DaySet(receiver::System system, std::uint32_t from, std::uint32_t until)
{
    SeedOrbitSet set;
    set.from = from;
    set.until = until;
    set.epoch = from + (until - from) / 2;
    const double elapsed =
        static_cast<double>(set.epoch) - static_cast<double>(receiver::kOrbitReference) / 1000.0;
    for (const receiver::Orbit& orbit : receiver::AllOrbits()) {
        if (orbit.system != system) {
            continue;
        }
        SeedOrbit element;
        element.number = receiver::NumberInSystem(orbit);
        element.channel = orbit.channel;
        element.carriers = orbit.secondSignal ? 3 : 1;
        element.radius = orbit.radius;
        element.inclination = orbit.inclination;
        element.node = std::fmod(orbit.node - receiver::kEarthRate * elapsed, 2.0 * receiver::kPi);
        element.argument =
            std::fmod(orbit.argument + 2.0 * receiver::kPi * std::fmod(elapsed / receiver::PeriodOf(orbit), 1.0),
                      2.0 * receiver::kPi);
        set.orbits.push_back(element);
    }
    return set;
}

} // namespace

Seed MakeModelSeed(std::uint32_t issued, std::uint32_t validStart, std::uint32_t validEnd)
{
    Seed seed;
    seed.issued = issued;
    seed.validStart = validStart;
    seed.validEnd = validEnd;
    for (std::size_t system = 0; system < receiver::kSystems; ++system) {
        for (std::uint32_t from = validStart; from < validEnd;) {
            const std::uint32_t until = std::min(validEnd, (from / kDay + 1) * kDay);
            seed.systems[system].sets.push_back(DaySet(static_cast<receiver::System>(system), from, until));
            from = until;
        }
        seed.systems[system].integrity.emplace();
    }
    seed.utc = protocol::AssistUtc{9.3132257462e-10, 8.8817841970e-16, validStart, kLeapSeconds, kLeapSeconds};
    seed.ionosphere = protocol::AssistIonosphere{{1.1176e-08f, 1.4901e-08f, -5.9605e-08f, -5.9605e-08f},
                                                 {9.0112e+04f, 1.6384e+04f, -1.9661e+05f, -6.5536e+04f}};
    return seed;
}

protocol::AssistGrid MakeModelGrid(double latitude, double longitude, std::uint32_t time)
{
    constexpr double half = kGridStep * (kGridSide - 1) / 2.0;
    protocol::AssistGrid grid;
    grid.rows = kGridSide;
    grid.columns = kGridSide;
    const double south = std::clamp(latitude - half, -90.0, 90.0 - 2.0 * half);
    const double west = std::clamp(longitude - half, -180.0, 180.0 - 2.0 * half);
    grid.latitude = static_cast<float>(south);
    grid.longitude = static_cast<float>(west);
    grid.latitudeStep = static_cast<float>(kGridStep);
    grid.longitudeStep = static_cast<float>(kGridStep);
    for (std::size_t row = 0; row < kGridSide; ++row) {
        for (std::size_t column = 0; column < kGridSide; ++column) {
            const double there = (south + kGridStep * static_cast<double>(row)) * receiver::kDegree;
            const double hour =
                std::fmod(time / 3600.0 + (west + kGridStep * static_cast<double>(column)) / 15.0 + 48.0, 24.0);
            const double day = std::max(0.0, std::cos((hour - 14.0) * receiver::kPi / 14.0));
            const double content = (5.0 + 40.0 * day) * (0.25 + 0.75 * std::cos(there) * std::cos(there));
            grid.content.push_back(static_cast<std::uint16_t>(std::lround(content * 10.0)));
        }
    }
    return grid;
}

} // namespace seeds
