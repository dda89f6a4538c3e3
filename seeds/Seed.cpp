// SPDX-License-Identifier: MIT
#include "seeds/Seed.h"

#include <cmath>

namespace seeds {

namespace {

enum SectionType : std::uint8_t { SectionOrbits = 1, SectionUtc = 2, SectionIonosphere = 3, SectionIntegrity = 4 };

constexpr std::size_t kOrbitSetHeaderSize = 12;
constexpr std::size_t kSeedOrbitSize = 40;
constexpr double kPi = 3.14159265358979323846;

void AppendSection(protocol::ImageWriter& image, SectionType type, std::size_t system, std::size_t count,
                   const protocol::ImageWriter& content)
{
    image.U8(type);
    image.U8(static_cast<unsigned>(system));
    image.U16(static_cast<unsigned>(count));
    image.U32(static_cast<std::uint32_t>(content.Size()));
    image.Raw(content.Bytes().data(), content.Size());
}

bool Within(double value, double lowest, double highest)
{
    return value >= lowest && value <= highest; // false for not-a-number
}

SeedError ReadOrbits(protocol::ImageReader content, std::size_t system, std::size_t count, SeedOrbitSet& set)
{
    set.epoch = content.U32();
    set.from = content.U32();
    set.until = content.U32();
    if (count < 1 || count > protocol::kMaxAssistSatellites || !content.Good() ||
        content.Left() != count * kSeedOrbitSize) {
        return SeedError::Section;
    }
    const bool glonass = system == static_cast<std::size_t>(protocol::AssistSystem::Glonass);
    std::uint64_t seen = 0;
    set.orbits.assign(count, SeedOrbit());
    for (SeedOrbit& orbit : set.orbits) {
        orbit.number = content.U8();
        orbit.health = content.U8();
        orbit.channel = content.I8();
        orbit.carriers = content.U8();
        const std::uint32_t reserved = content.U32();
        orbit.radius = content.F64();
        orbit.inclination = content.F64();
        orbit.node = content.F64();
        orbit.argument = content.F64();
        if (orbit.number < 1 || orbit.number > protocol::kMaxAssistSatellites || orbit.carriers < 1 ||
            orbit.carriers > 3 || reserved != 0 || orbit.channel < (glonass ? -7 : 0) ||
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
    if (utc || content.Left() != 24) {
        return SeedError::Section;
    }
    utc.emplace();
    return protocol::ReadAssistUtc(content, *utc) ? SeedError::None : SeedError::Value;
}

SeedError ReadIonosphere(protocol::ImageReader content, std::optional<protocol::AssistIonosphere>& ionosphere)
{
    if (ionosphere || content.Left() != 32) {
        return SeedError::Section;
    }
    ionosphere.emplace();
    return protocol::ReadAssistIonosphere(content, *ionosphere) ? SeedError::None : SeedError::Value;
}

SeedError ReadSection(protocol::ImageReader& image, Seed& seed)
{
    const std::uint8_t type = image.U8();
    const std::uint8_t system = image.U8();
    const std::uint16_t count = image.U16();
    const std::uint32_t length = image.U32();
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
    if (type == SectionIntegrity && !seed.systems[system].integrity && length == 8) {
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
            content.U32(set.epoch);
            content.U32(set.from);
            content.U32(set.until);
            for (const SeedOrbit& orbit : set.orbits) {
                content.U8(orbit.number);
                content.U8(orbit.health);
                content.I8(orbit.channel);
                content.U8(orbit.carriers);
                content.U32(0);
                content.F64(orbit.radius);
                content.F64(orbit.inclination);
                content.F64(orbit.node);
                content.F64(orbit.argument);
            }
            AppendSection(sections, SectionOrbits, system, set.orbits.size(), content);
            ++count;
        }
        if (seed.systems[system].integrity) {
            protocol::ImageWriter content;
            content.U64(seed.systems[system].integrity->unusable);
            AppendSection(sections, SectionIntegrity, system, 1, content);
            ++count;
        }
    }
    if (seed.utc) {
        protocol::ImageWriter content;
        content.F64(seed.utc->a0);
        content.F64(seed.utc->a1);
        content.U32(seed.utc->reference);
        content.U8(seed.utc->leapSeconds);
        content.U8(seed.utc->nextLeapSeconds);
        content.U16(0);
        AppendSection(sections, SectionUtc, 0, 1, content);
        ++count;
    }
    if (seed.ionosphere) {
        protocol::ImageWriter content;
        for (const auto* values : {&seed.ionosphere->alpha, &seed.ionosphere->beta}) {
            for (const float value : *values) {
                content.F32(value);
            }
        }
        AppendSection(sections, SectionIonosphere, 0, 1, content);
        ++count;
    }

    protocol::ImageWriter image;
    image.Raw(kSeedMagic, sizeof kSeedMagic);
    image.U16(kSeedVersion);
    image.U16(count);
    image.U32(static_cast<std::uint32_t>(kSeedHeaderSize + sections.Size() + kSeedCheckSize));
    image.U32(seed.issued);
    image.U32(seed.validStart);
    image.U32(seed.validEnd);
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
    for (std::size_t i = 0; i < sizeof kSeedMagic && i < length; ++i) {
        if (bytes[i] != kSeedMagic[i]) {
            return SeedError::NoSeed;
        }
    }
    if (length < kSeedHeaderSize + kSeedCheckSize) {
        return SeedError::TooShort;
    }
    protocol::ImageReader image(bytes, length - kSeedCheckSize);
    image.Raw(sizeof kSeedMagic);
    const std::uint16_t version = image.U16();
    const std::uint16_t count = image.U16();
    const std::uint32_t total = image.U32();
    seed = Seed();
    seed.issued = image.U32();
    seed.validStart = image.U32();
    seed.validEnd = image.U32();
    if (image.U32() != protocol::Crc32(bytes, kSeedHeaderSize - 4)) {
        return SeedError::Header;
    }
    if (version != kSeedVersion) {
        return SeedError::Version;
    }
    if (length != total) {
        return length < total ? SeedError::TooShort : SeedError::TooLong;
    }
    protocol::ImageReader check(bytes + length - kSeedCheckSize, kSeedCheckSize);
    if (check.U32() != protocol::Crc32(bytes, length - kSeedCheckSize)) {
        return SeedError::Check;
    }
    if (seed.validStart < kEarliestSeedTime || seed.validEnd > kLatestSeedTime ||
        seed.validEnd <= seed.validStart || seed.validEnd - seed.validStart > kLongestSeedSpan) {
        return SeedError::Span;
    }
    for (std::uint16_t i = 0; i < count; ++i) {
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
