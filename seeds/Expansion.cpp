// SPDX-License-Identifier: MIT
#include "seeds/Expansion.h"

#include <cmath>

namespace seeds {

namespace {

using protocol::AssistSystem;

constexpr double kTurn = 6.283185307179586;
constexpr double kEarthRate = 7.2921151467e-5; ///< rad/s
constexpr double kGravity = 3.986004418e14;    ///< m^3/s^2

const SeedOrbitSet& SetAt(const Seed& seed, AssistSystem system, std::uint32_t time)
{
    const std::vector<SeedOrbitSet>& sets = seed.systems[static_cast<std::size_t>(system)].sets;
    for (const SeedOrbitSet& set : sets) {
        if (time < set.until) {
            return set;
        }
    }
    return sets.back();
}

std::vector<std::uint8_t> IntegrityFile(const Seed& seed, AssistSystem system)
{
    return protocol::MakeAssistIntegrity(system, seed.issued,
                                         *seed.systems[static_cast<std::size_t>(system)].integrity);
}

} // namespace

std::uint16_t EphemerisFit(AssistSystem system)
{
    return system == AssistSystem::Glonass ? 1800 : 7200;
}

const char* FilePrefix(AssistSystem system)
{
    return protocol::RowOf(protocol::ConstellationOf(system)).shortName;
}

std::vector<protocol::AssistOrbit> OrbitsAt(const Seed& seed, AssistSystem system, std::uint32_t toe)
{
    const SeedOrbitSet& set = SetAt(seed, system, toe);
    const double elapsed = static_cast<double>(toe) - static_cast<double>(set.epoch);
    std::vector<protocol::AssistOrbit> orbits;
    for (const SeedOrbit& element : set.orbits) {
        protocol::AssistOrbit orbit;
        orbit.number = element.number;
        orbit.health = element.health;
        orbit.fit = EphemerisFit(system);
        orbit.toe = toe;
        orbit.radius = element.radius;
        orbit.inclination = element.inclination;
        const double motion = std::sqrt(kGravity / (element.radius * element.radius * element.radius));
        orbit.node = std::fmod(element.node - kEarthRate * elapsed, kTurn);
        orbit.argument = std::fmod(element.argument + motion * elapsed, kTurn);
        orbits.push_back(orbit);
    }
    return orbits;
}

std::vector<protocol::AssistChannel> ChannelsAt(const Seed& seed, AssistSystem system, std::uint32_t time)
{
    std::vector<protocol::AssistChannel> channels;
    for (const SeedOrbit& orbit : SetAt(seed, system, time).orbits) {
        channels.push_back({orbit.number, orbit.channel, orbit.carriers});
    }
    return channels;
}

SeedError ExpandSeed(const Seed& seed, std::uint32_t time, std::vector<OutputFile>& files)
{
    if (time < seed.validStart || time > seed.validEnd) {
        return SeedError::OutsideSpan;
    }
    files.clear();
    for (const protocol::Constellation constellation : protocol::kEphemerisOrder) {
        const AssistSystem system = protocol::AssistSystemOf(constellation);
        const std::uint32_t step = EphemerisFit(system);
        const std::uint32_t half = system == AssistSystem::Glonass ? step / 2 : 0;
        const std::uint32_t middle = (time + half) / step * step;
        for (const std::uint32_t toe : {middle - step, middle, middle + step}) {
            files.push_back({FilePrefix(system) + ('_' + std::to_string(toe)) + ".eph",
                             protocol::MakeAssistEphemeris(system, seed.issued, OrbitsAt(seed, system, toe))});
        }
    }
    files.push_back({"GPS_UTC.dat", protocol::MakeAssistUtc(AssistSystem::Gps, seed.issued, *seed.utc)});
    files.push_back(
        {"GPS_ION.dat", protocol::MakeAssistIonosphere(AssistSystem::Gps, seed.issued, *seed.ionosphere)});
    files.push_back({"GPS_RTI.dat", IntegrityFile(seed, AssistSystem::Gps)});
    files.push_back({"GLO_RTI.dat", IntegrityFile(seed, AssistSystem::Glonass)});
    files.push_back({"GLO_AUX.dat", protocol::MakeAssistChannels(AssistSystem::Glonass, seed.issued,
                                                                 ChannelsAt(seed, AssistSystem::Glonass, time))});
    files.push_back({"BDS_RTI.dat", IntegrityFile(seed, AssistSystem::Beidou)});
    files.push_back({"GAL_RTI.dat", IntegrityFile(seed, AssistSystem::Galileo)});
    return SeedError::None;
}

} // namespace seeds
