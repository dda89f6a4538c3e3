// SPDX-License-Identifier: MIT
#pragma once

// The payloads of the assistance items, shared by the seed decoder, the assistance service and the virtual
// receiver; free of Qt. Every payload is a header, a body and a check, all fields little-endian:
//
//   offset 0    u8   kind of the item
//          1    u8   satellite system
//          2    u8   version, 1
//          3    u8   number n of entries in the body; 1 where the body has no entries
//          4    u32  when it was made: Unix seconds, UTC
//          8         body
//        end-4  u32  CRC-32 of everything before it
//
// Satellites are numbered from 1 inside their system. docs/receiver-link.md lists the bodies.

#include "protocol/ByteImage.h"
#include "protocol/LinkFrame.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace protocol {

enum class AssistKind : std::uint8_t {
    Time = 1,
    Ephemeris = 2,
    Utc = 3,
    Ionosphere = 4,
    Integrity = 5,
    Channels = 6,
    FineIonosphere = 7,
};

/// In the order of the constellation setting.
enum class AssistSystem : std::uint8_t { Gps, Beidou, Glonass, Galileo, Qzss };
constexpr std::size_t kAssistSystems = 5;

constexpr std::uint8_t kAssistVersion = 1;
constexpr std::size_t kAssistHeaderSize = 8;
constexpr std::size_t kAssistCheckSize = 4;
constexpr std::size_t kAssistFrameSize = kAssistHeaderSize + kAssistCheckSize;

constexpr std::size_t kMaxAssistSatellites = 64;
constexpr std::size_t kAssistOrbitSize = 40;
constexpr std::size_t kAssistChannelSize = 4;
constexpr std::size_t kMinGridSide = 2;
constexpr std::size_t kMaxGridSide = 32;

// Lengths of whole payloads in bytes.
constexpr std::uint16_t kAssistTimeSize = kAssistFrameSize + 8;
constexpr std::uint16_t kAssistUtcSize = kAssistFrameSize + 24;
constexpr std::uint16_t kAssistIonosphereSize = kAssistFrameSize + 32;
constexpr std::uint16_t kAssistIntegritySize = kAssistFrameSize + 8;
constexpr std::size_t AssistEphemerisSize(std::size_t satellites)
{
    return kAssistFrameSize + satellites * kAssistOrbitSize;
}
constexpr std::size_t AssistChannelsSize(std::size_t satellites)
{
    return kAssistFrameSize + satellites * kAssistChannelSize;
}
constexpr std::size_t AssistGridSize(std::size_t rows, std::size_t columns)
{
    return kAssistFrameSize + 20 + 2 * rows * columns;
}

struct AssistHeader {
    AssistKind kind{};
    AssistSystem system{};
    std::uint8_t count = 1;
    std::uint32_t issued = 0; ///< Unix seconds
};

/// Body: u32 Unix seconds, u16 milliseconds, u16 uncertainty in milliseconds.
struct AssistTime {
    std::uint32_t seconds = 0;
    std::uint16_t millisecond = 0;
    std::uint16_t uncertainty = 0;
};

/// One satellite's circular orbit around a moment. Entry: u8 number, u8 health, u16 fit, u32 toe, four doubles.
struct AssistOrbit {
    std::uint8_t number = 0;
    std::uint8_t health = 0;  ///< 0 is good
    std::uint16_t fit = 0;    ///< it serves this many seconds before and after toe; above 0
    std::uint32_t toe = 0;    ///< Unix seconds at which the elements hold
    double radius = 0.0;      ///< metres, 6.5e6 to 1e8
    double inclination = 0.0; ///< radians, 0 to pi
    double node = 0.0;        ///< radians, earth-fixed longitude of the ascending node at toe, -2 pi to 2 pi
    double argument = 0.0;    ///< radians, argument of latitude at toe, -2 pi to 2 pi
};

/// Body: two doubles, u32, u8, u8, two zero bytes. UTC runs behind the system's time by the leap seconds and
/// a0 + a1 (t - reference).
struct AssistUtc {
    double a0 = 0.0; ///< seconds
    double a1 = 0.0; ///< seconds a second
    std::uint32_t reference = 0;
    std::uint8_t leapSeconds = 0;
    std::uint8_t nextLeapSeconds = 0;
};

/// Body: eight floats, the broadcast model's alpha and beta.
struct AssistIonosphere {
    std::array<float, 4> alpha{};
    std::array<float, 4> beta{};
};

/// Body: u64, bit n-1 set when satellite n must not be used.
struct AssistIntegrity {
    std::uint64_t unusable = 0;
};

/// Entry: u8 number, i8 frequency channel, u8 carriers, one zero byte.
struct AssistChannel {
    std::uint8_t number = 0;
    std::int8_t channel = 0;   ///< -7 to 6; 0 for systems without channels
    std::uint8_t carriers = 0; ///< bit 0 the first carrier, bit 1 the second
};

/// Body: u8 rows, u8 columns, u16 0, four floats, then the values row by row as u16.
struct AssistGrid {
    std::uint8_t rows = 0;    ///< 2 to 32, from south to north
    std::uint8_t columns = 0; ///< 2 to 32, from west to east
    float latitude = 0.0f;    ///< degrees, of the first row
    float longitude = 0.0f;   ///< degrees, of the first column
    float latitudeStep = 0.0f;
    float longitudeStep = 0.0f;
    std::vector<std::uint16_t> content; ///< vertical electron content in tenths of a TECU
};

/// A set of systems: bit n stands for the system of that number.
constexpr std::uint8_t SystemBit(AssistSystem system)
{
    return static_cast<std::uint8_t>(1u << static_cast<unsigned>(system));
}
constexpr std::uint8_t kOnlyGps = SystemBit(AssistSystem::Gps);
constexpr std::uint8_t kOnlyGlonass = SystemBit(AssistSystem::Glonass);
constexpr std::uint8_t kAllAssistSystems = 0x1F;
constexpr std::uint8_t kAllButGps = kAllAssistSystems & ~kOnlyGps;

/// Which item a command carries.
struct AssistForm {
    std::uint16_t commandId;
    AssistKind kind;
    std::uint8_t systems; ///< the set of systems that it may be for
};

constexpr AssistForm kAssistForms[] = {
    {CmdPgnssGpsEphemeris, AssistKind::Ephemeris, kOnlyGps},
    {CmdPgnssEphemeris, AssistKind::Ephemeris, kAllButGps},
    {CmdPgnssUtc, AssistKind::Utc, kOnlyGps},
    {CmdPgnssGpsIntegrity, AssistKind::Integrity, kOnlyGps},
    {CmdPgnssIntegrity, AssistKind::Integrity, kAllButGps},
    {CmdPgnssIonosphere, AssistKind::Ionosphere, kOnlyGps},
    {CmdPgnssGloChannels, AssistKind::Channels, kOnlyGlonass},
    {CmdPgnssFineIonosphere, AssistKind::FineIonosphere, kOnlyGps},
    {CmdAgnssGpsTime, AssistKind::Time, kOnlyGps},
    {CmdAgnssGpsEphemeris, AssistKind::Ephemeris, kOnlyGps},
    {CmdAgnssGpsIonosphere, AssistKind::Ionosphere, kOnlyGps},
    {CmdAgnssUtc, AssistKind::Utc, kOnlyGps},
    {CmdAgnssGpsIntegrity, AssistKind::Integrity, kOnlyGps},
    {CmdAgnssTime, AssistKind::Time, kAllButGps},
    {CmdAgnssIonosphere, AssistKind::Ionosphere, kAllButGps},
    {CmdAgnssEphemeris, AssistKind::Ephemeris, kAllButGps},
    {CmdAgnssIntegrity, AssistKind::Integrity, kAllButGps},
    {CmdAgnssUtcParameters, AssistKind::Utc, kAllButGps},
    {CmdAgnssChannels, AssistKind::Channels, kAllAssistSystems},
};

/// The row of a command, or null for one that carries none of these items.
constexpr const AssistForm* FindAssistForm(std::uint16_t commandId)
{
    for (const AssistForm& form : kAssistForms) {
        if (form.commandId == commandId) {
            return &form;
        }
    }
    return nullptr;
}

// Making payloads. Lists must hold 1 to kMaxAssistSatellites entries, a grid rows * columns values.

inline ImageWriter BeginAssist(AssistKind kind, AssistSystem system, std::size_t count, std::uint32_t issued)
{
    ImageWriter image;
    image.U8(static_cast<unsigned>(kind));
    image.U8(static_cast<unsigned>(system));
    image.U8(kAssistVersion);
    image.U8(static_cast<unsigned>(count));
    image.U32(issued);
    return image;
}

inline std::vector<std::uint8_t> EndAssist(ImageWriter& image)
{
    image.Check();
    return image.Bytes();
}

inline std::vector<std::uint8_t> MakeAssistTime(AssistSystem system, std::uint32_t issued, const AssistTime& time)
{
    ImageWriter image = BeginAssist(AssistKind::Time, system, 1, issued);
    image.U32(time.seconds);
    image.U16(time.millisecond);
    image.U16(time.uncertainty);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistEphemeris(AssistSystem system, std::uint32_t issued,
                                                     const std::vector<AssistOrbit>& orbits)
{
    ImageWriter image = BeginAssist(AssistKind::Ephemeris, system, orbits.size(), issued);
    for (const AssistOrbit& orbit : orbits) {
        image.U8(orbit.number);
        image.U8(orbit.health);
        image.U16(orbit.fit);
        image.U32(orbit.toe);
        image.F64(orbit.radius);
        image.F64(orbit.inclination);
        image.F64(orbit.node);
        image.F64(orbit.argument);
    }
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistUtc(AssistSystem system, std::uint32_t issued, const AssistUtc& utc)
{
    ImageWriter image = BeginAssist(AssistKind::Utc, system, 1, issued);
    image.F64(utc.a0);
    image.F64(utc.a1);
    image.U32(utc.reference);
    image.U8(utc.leapSeconds);
    image.U8(utc.nextLeapSeconds);
    image.U16(0);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistIonosphere(AssistSystem system, std::uint32_t issued,
                                                      const AssistIonosphere& ionosphere)
{
    ImageWriter image = BeginAssist(AssistKind::Ionosphere, system, 1, issued);
    for (const auto* values : {&ionosphere.alpha, &ionosphere.beta}) {
        for (const float value : *values) {
            image.F32(value);
        }
    }
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistIntegrity(AssistSystem system, std::uint32_t issued,
                                                     const AssistIntegrity& integrity)
{
    ImageWriter image = BeginAssist(AssistKind::Integrity, system, 1, issued);
    image.U64(integrity.unusable);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistChannels(AssistSystem system, std::uint32_t issued,
                                                    const std::vector<AssistChannel>& channels)
{
    ImageWriter image = BeginAssist(AssistKind::Channels, system, channels.size(), issued);
    for (const AssistChannel& channel : channels) {
        image.U8(channel.number);
        image.I8(channel.channel);
        image.U8(channel.carriers);
        image.U8(0);
    }
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistGrid(std::uint32_t issued, const AssistGrid& grid)
{
    ImageWriter image = BeginAssist(AssistKind::FineIonosphere, AssistSystem::Gps, 1, issued);
    image.U8(grid.rows);
    image.U8(grid.columns);
    image.U16(0);
    for (const float value : {grid.latitude, grid.longitude, grid.latitudeStep, grid.longitudeStep}) {
        image.F32(value);
    }
    for (const std::uint16_t value : grid.content) {
        image.U16(value);
    }
    return EndAssist(image);
}

// Reading payloads. Each gives false, with its result undefined, for a payload that is not whole and right.

/// Reads and checks the frame around a body: version, a known system, the check. `body` then stands at the body.
inline bool ReadAssistHeader(const std::uint8_t* payload, std::size_t length, AssistHeader& header,
                             ImageReader& body)
{
    if (payload == nullptr || length < kAssistFrameSize) {
        return false;
    }
    ImageReader image(payload, length - kAssistCheckSize);
    header.kind = static_cast<AssistKind>(image.U8());
    header.system = static_cast<AssistSystem>(image.U8());
    const std::uint8_t version = image.U8();
    header.count = image.U8();
    header.issued = image.U32();
    ImageReader check(payload + length - kAssistCheckSize, kAssistCheckSize);
    body = image;
    return version == kAssistVersion && static_cast<std::size_t>(header.system) < kAssistSystems &&
           header.count >= 1 && header.count <= kMaxAssistSatellites &&
           check.U32() == Crc32(payload, length - kAssistCheckSize);
}

inline bool ReadAssistTime(ImageReader body, AssistTime& time)
{
    time.seconds = body.U32();
    time.millisecond = body.U16();
    time.uncertainty = body.U16();
    return body.AtEnd() && time.millisecond < 1000;
}

inline bool ReadAssistEphemeris(const AssistHeader& header, ImageReader body, std::vector<AssistOrbit>& orbits)
{
    // Written so that not-a-number fails too.
    constexpr double pi = 3.14159265358979323846;
    const auto within = [](double value, double lowest, double highest) {
        return value >= lowest && value <= highest;
    };
    bool good = true;
    orbits.assign(header.count, AssistOrbit());
    for (AssistOrbit& orbit : orbits) {
        orbit.number = body.U8();
        orbit.health = body.U8();
        orbit.fit = body.U16();
        orbit.toe = body.U32();
        orbit.radius = body.F64();
        orbit.inclination = body.F64();
        orbit.node = body.F64();
        orbit.argument = body.F64();
        good = good && orbit.number >= 1 && orbit.number <= kMaxAssistSatellites && orbit.fit > 0 &&
               within(orbit.radius, 6.5e6, 1e8) && within(orbit.inclination, 0.0, pi) &&
               within(orbit.node, -2.0 * pi, 2.0 * pi) && within(orbit.argument, -2.0 * pi, 2.0 * pi);
    }
    return good && body.AtEnd();
}

inline bool ReadAssistUtc(ImageReader body, AssistUtc& utc)
{
    utc.a0 = body.F64();
    utc.a1 = body.F64();
    utc.reference = body.U32();
    utc.leapSeconds = body.U8();
    utc.nextLeapSeconds = body.U8();
    return body.U16() == 0 && body.AtEnd() && std::fabs(utc.a0) <= 1.0 && std::fabs(utc.a1) <= 1e-6;
}

inline bool ReadAssistIonosphere(ImageReader body, AssistIonosphere& ionosphere)
{
    bool good = true;
    for (auto* values : {&ionosphere.alpha, &ionosphere.beta}) {
        for (float& value : *values) {
            value = body.F32();
            good = good && std::isfinite(value);
        }
    }
    return good && body.AtEnd();
}

inline bool ReadAssistIntegrity(ImageReader body, AssistIntegrity& integrity)
{
    integrity.unusable = body.U64();
    return body.AtEnd();
}

inline bool ReadAssistChannels(const AssistHeader& header, ImageReader body, std::vector<AssistChannel>& channels)
{
    bool good = true;
    channels.assign(header.count, AssistChannel());
    for (AssistChannel& channel : channels) {
        channel.number = body.U8();
        channel.channel = body.I8();
        channel.carriers = body.U8();
        const int lowest = header.system == AssistSystem::Glonass ? -7 : 0;
        const int highest = header.system == AssistSystem::Glonass ? 6 : 0;
        good = good && body.U8() == 0 && channel.number >= 1 && channel.number <= kMaxAssistSatellites &&
               channel.channel >= lowest && channel.channel <= highest && channel.carriers <= 3;
    }
    return good && body.AtEnd();
}

inline bool ReadAssistGrid(ImageReader body, AssistGrid& grid)
{
    grid.rows = body.U8();
    grid.columns = body.U8();
    const bool reserved = body.U16() == 0;
    grid.latitude = body.F32();
    grid.longitude = body.F32();
    grid.latitudeStep = body.F32();
    grid.longitudeStep = body.F32();
    if (!reserved || grid.rows < kMinGridSide || grid.rows > kMaxGridSide || grid.columns < kMinGridSide ||
        grid.columns > kMaxGridSide || !(std::fabs(grid.latitude) <= 90.0f) ||
        !(std::fabs(grid.longitude) <= 180.0f) || !(grid.latitudeStep > 0.0f && grid.latitudeStep <= 90.0f) ||
        !(grid.longitudeStep > 0.0f && grid.longitudeStep <= 90.0f)) {
        return false;
    }
    grid.content.assign(std::size_t{grid.rows} * grid.columns, 0);
    for (std::uint16_t& value : grid.content) {
        value = body.U16();
    }
    return body.AtEnd();
}

} // namespace protocol
