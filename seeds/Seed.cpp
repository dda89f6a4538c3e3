// SPDX-License-Identifier: MIT
#include "seeds/Seed.h"

#include <cmath>

namespace seeds {

namespace {

enum SectionType : std::uint8_t { SectionOrbits = 1, SectionUtc = 2, SectionIonosphere = 3, SectionIntegrity = 4 };

/// What stands before the sections, its check left out.
struct FileHeader {
    std::array<std::uint8_t, 8> magic = kSeedMagic;
    std::uint16_t version = kSeedVersion;
    std::uint16_t sections = 0;
    std::uint32_t length = 0; ///< of the file
    std::uint32_t issued = 0;
    std::uint32_t validStart = 0;
    std::uint32_t validEnd = 0;
};
constexpr auto kFileHeaderFields =
    protocol::Fields(&FileHeader::magic, &FileHeader::version, &FileHeader::sections, &FileHeader::length,
                     &FileHeader::issued, &FileHeader::validStart, &FileHeader::validEnd);
static_assert(protocol::LengthOf(kFileHeaderFields) == 28 && protocol::LastOffset(kFileHeaderFields) == 24 &&
              protocol::LengthOf(kFileHeaderFields) + kSeedCheckSize == kSeedHeaderSize);

struct SectionHeader {
    std::uint8_t type = 0;
    std::uint8_t system = 0; ///< an AssistSystem
    std::uint16_t count = 0;
    std::uint32_t length = 0; ///< of the content
};
constexpr auto kSectionHeaderFields =
    protocol::Fields(&SectionHeader::type, &SectionHeader::system, &SectionHeader::count, &SectionHeader::length);
static_assert(protocol::LengthOf(kSectionHeaderFields) == kSeedSectionHeaderSize &&
              protocol::LastOffset(kSectionHeaderFields) == 4);

constexpr auto kOrbitSetFields = protocol::Fields(&SeedOrbitSet::epoch, &SeedOrbitSet::from, &SeedOrbitSet::until);
static_assert(protocol::LengthOf(kOrbitSetFields) == 12 && protocol::LastOffset(kOrbitSetFields) == 8);

constexpr auto kSeedOrbitFields = protocol::Fields(
    &SeedOrbit::number, &SeedOrbit::health, &SeedOrbit::channel, &SeedOrbit::carriers, protocol::Zeros<4>(),
    &SeedOrbit::radius, &SeedOrbit::inclination, &SeedOrbit::node, &SeedOrbit::argument);
static_assert(protocol::LengthOf(kSeedOrbitFields) == 40 && protocol::LastOffset(kSeedOrbitFields) == 32);

constexpr double kPi = 3.14159265358979323846;

void AppendSection(protocol::ImageWriter& image, SectionType type, std::size_t system, std::size_t count,
                   const protocol::ImageWriter& content)
{
    protocol::WriteFields(image,
                          SectionHeader{type, static_cast<std::uint8_t>(system), static_cast<std::uint16_t>(count),
                                        static_cast<std::uint32_t>(content.Size())},
                          kSectionHeaderFields);
    image.Raw(content.Bytes().data(), content.Size());
}

bool Within(double value, double lowest, double highest)
{
    return value >= lowest && value <= highest; // false for not-a-number
}

SeedError ReadOrbits(protocol::ImageReader content, std::size_t system, std::size_t count, SeedOrbitSet& set)
{
    protocol::ReadFields(content, set, kOrbitSetFields);
    if (count < 1 || count > protocol::kMaxAssistSatellites || !content.Good() ||
        content.Left() != count * protocol::LengthOf(kSeedOrbitFields)) {
        return SeedError::Section;
    }
    const bool glonass = system == static_cast<std::size_t>(protocol::AssistSystem::Glonass);
    std::uint64_t seen = 0;
    set.orbits.assign(count, SeedOrbit());
    for (SeedOrbit& orbit : set.orbits) {
        const bool zero = protocol::ReadFields(content, orbit, kSeedOrbitFields);
        if (orbit.number < 1 || orbit.number > protocol::kMaxAssistSatellites || orbit.carriers < 1 ||
            orbit.carriers > 3 || !zero || orbit.channel < (glonass ? -7 : 0) ||
            orbit.channel > (glonass ? 6 : 0) || !Within(orbit.radius, 6.5e6, 1e8) ||
            !Within(orbit.inclination, 0.0, kPi) || !Within(orbit.node, -2.0 * kPi, 2.0 * kPi) ||
            !Within(orbit.argument, -2.0 * kPi, 2.0 * kPi)) {
            return SeedError::Value;
        }
        const std::uint64_t bit = std::uint64_t{1} << (orbit.number - 1);
        if ((seen & bit) != 0) {
            return SeedError::Value;
        }
        seen |= bit;
    }
    return set.from < set.until ? SeedError::None : SeedError::Value;
}

SeedError ReadUtc(protocol::ImageReader content, std::optional<protocol::AssistUtc>& utc)
{
    if (utc || content.Left() != protocol::LengthOf(protocol::kAssistUtcFields)) {
        return SeedError::Section;
    }
    utc.emplace();
    return protocol::ReadAssistUtc(content, *utc) ? SeedError::None : SeedError::Value;
}

SeedError ReadIonosphere(protocol::ImageReader content, std::optional<protocol::AssistIonosphere>& ionosphere)
{
    if (ionosphere || content.Left() != protocol::LengthOf(protocol::kAssistIonosphereFields)) {
        return SeedError::Section;
    }
    ionosphere.emplace();
    return protocol::ReadAssistIonosphere(content, *ionosphere) ? SeedError::None : SeedError::Value;
}

SeedError ReadSection(protocol::ImageReader& image, Seed& seed)
{
    SectionHeader header;
    protocol::ReadFields(image, header, kSectionHeaderFields);
    const auto& [type, system, count, length] = header;
    const std::uint8_t* bytes = image.Raw(length);
    if (bytes == nullptr || system >= protocol::kAssistSystems) {
        return SeedError::Section;
    }
    const protocol::ImageReader content(bytes, length);
    if (type == SectionOrbits) {
        SeedOrbitSet set;
        const SeedError error = ReadOrbits(content, system, count, set);
        seed.systems[system].sets.push_back(std::move(set));
        return error;
    }
    if (count != 1) {
        return SeedError::Section;
    }
    const bool gps = system == static_cast<std::size_t>(protocol::AssistSystem::Gps);
    if (type == SectionUtc && gps) {
        return ReadUtc(content, seed.utc);
    }
    if (type == SectionIonosphere && gps) {
        return ReadIonosphere(content, seed.ionosphere);
    }
    if (type == SectionIntegrity && !seed.systems[system].integrity &&
        length == protocol::LengthOf(protocol::kAssistIntegrityFields)) {
        seed.systems[system].integrity.emplace();
        protocol::ReadAssistIntegrity(content, *seed.systems[system].integrity);
        return SeedError::None;
    }
    return SeedError::Section;
}

SeedError CheckComplete(const Seed& seed)
{
    if (!seed.utc || !seed.ionosphere) {
        return SeedError::Missing;
    }
    for (const SeedSystem& system : seed.systems) {
        if (!system.integrity || system.sets.empty() || system.sets.front().from > seed.validStart ||
            system.sets.back().until < seed.validEnd) {
            return SeedError::Missing;
        }
        for (std::size_t i = 1; i < system.sets.size(); ++i) {
            if (system.sets[i].from != system.sets[i - 1].until) {
                return SeedError::Missing;
            }
        }
    }
    return SeedError::None;
}

} // namespace

std::vector<std::uint8_t> PackSeed(const Seed& seed)
{
    protocol::ImageWriter sections;
    std::uint16_t count = 0;
    for (std::size_t system = 0; system < protocol::kAssistSystems; ++system) {
        for (const SeedOrbitSet& set : seed.systems[system].sets) {
            protocol::ImageWriter content;
            protocol::WriteFields(content, set, kOrbitSetFields);
            for (const SeedOrbit& orbit : set.orbits) {
                protocol::WriteFields(content, orbit, kSeedOrbitFields);
            }
            AppendSection(sections, SectionOrbits, system, set.orbits.size(), content);
            ++count;
        }
        if (seed.systems[system].integrity) {
            protocol::ImageWriter content;
            protocol::WriteFields(content, *seed.systems[system].integrity, protocol::kAssistIntegrityFields);
            AppendSection(sections, SectionIntegrity, system, 1, content);
            ++count;
        }
    }
    if (seed.utc) {
        protocol::ImageWriter content;
        protocol::WriteFields(content, *seed.utc, protocol::kAssistUtcFields);
        AppendSection(sections, SectionUtc, 0, 1, content);
        ++count;
    }
    if (seed.ionosphere) {
        protocol::ImageWriter content;
        protocol::WriteFields(content, *seed.ionosphere, protocol::kAssistIonosphereFields);
        AppendSection(sections, SectionIonosphere, 0, 1, content);
        ++count;
    }

    FileHeader header;
    header.sections = count;
    header.length = static_cast<std::uint32_t>(kSeedHeaderSize + sections.Size() + kSeedCheckSize);
    header.issued = seed.issued;
    header.validStart = seed.validStart;
    header.validEnd = seed.validEnd;
    protocol::ImageWriter image;
    protocol::WriteFields(image, header, kFileHeaderFields);
    image.Check();
    image.Raw(sections.Bytes().data(), sections.Size());
    image.Check();
    return image.Bytes();
}

SeedError ParseSeed(const std::uint8_t* bytes, std::size_t length, Seed& seed)
{
    if (length > kMaxSeedSize) {
        return SeedError::TooLong;
    }
    // What is too short for a magic but begins like one was cut; anything else is no seed.
    for (std::size_t i = 0; i < kSeedMagic.size() && i < length; ++i) {
        if (bytes[i] != kSeedMagic[i]) {
            return SeedError::NoSeed;
        }
    }
    if (length < kSeedHeaderSize + kSeedCheckSize) {
        return SeedError::TooShort;
    }
    protocol::ImageReader image(bytes, length - kSeedCheckSize);
    FileHeader header;
    protocol::ReadFields(image, header, kFileHeaderFields);
    seed = Seed();
    seed.issued = header.issued;
    seed.validStart = header.validStart;
    seed.validEnd = header.validEnd;
    if (image.U32() != protocol::Crc32(bytes, kSeedHeaderSize - kSeedCheckSize)) {
        return SeedError::Header;
    }
    if (header.version != kSeedVersion) {
        return SeedError::Version;
    }
    if (length != header.length) {
        return length < header.length ? SeedError::TooShort : SeedError::TooLong;
    }
    protocol::ImageReader check(bytes + length - kSeedCheckSize, kSeedCheckSize);
    if (check.U32() != protocol::Crc32(bytes, length - kSeedCheckSize)) {
        return SeedError::Check;
    }
    if (seed.validStart < kEarliestSeedTime || seed.validEnd > kLatestSeedTime ||
        seed.validEnd <= seed.validStart || seed.validEnd - seed.validStart > kLongestSeedSpan) {
        return SeedError::Span;
    }
    for (std::uint16_t i = 0; i < header.sections; ++i) {
        const SeedError error = ReadSection(image, seed);
        if (error != SeedError::None) {
            return error;
        }
    }
    if (!image.AtEnd()) {
        return SeedError::Section;
    }
    return CheckComplete(seed);
}

} // namespace seeds
