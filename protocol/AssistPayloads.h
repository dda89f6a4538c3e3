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
// The body is the fields of one list, in a row without padding, or entries of such fields.
// Satellites are numbered from 1 inside their system. docs/receiver-link.md lists the bodies.

#include "protocol/Constellations.h"
#include "protocol/FieldList.h"
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

/// The numbers of kSettingOrder.
enum class AssistSystem : std::uint8_t { Gps, Beidou, Glonass, Galileo, Qzss };
constexpr std::size_t kAssistSystems = kSettingOrder.size();

constexpr Constellation ConstellationOf(AssistSystem system)
{
    return kSettingOrder[static_cast<std::size_t>(system)];
}
static_assert(ConstellationOf(AssistSystem::Gps) == Constellation::Gps &&
              ConstellationOf(AssistSystem::Beidou) == Constellation::Beidou &&
              ConstellationOf(AssistSystem::Glonass) == Constellation::Glonass &&
              ConstellationOf(AssistSystem::Galileo) == Constellation::Galileo &&
              ConstellationOf(AssistSystem::Qzss) == Constellation::Qzss && kAssistSystems == 5);

/// The number of a constellation that the constellation setting has.
constexpr AssistSystem AssistSystemOf(Constellation constellation)
{
    return static_cast<AssistSystem>(PlaceIn(kSettingOrder, constellation));
}

constexpr std::uint8_t kAssistVersion = 1;

constexpr std::size_t kMaxAssistSatellites = 64;
constexpr std::size_t kMinGridSide = 2;
constexpr std::size_t kMaxGridSide = 32;

struct AssistHeader {
    AssistKind kind{};
    AssistSystem system{};
    std::uint8_t version = kAssistVersion;
    std::uint8_t count = 1;
    std::uint32_t issued = 0; ///< Unix seconds
};
constexpr auto kAssistHeaderFields = Fields(&AssistHeader::kind, &AssistHeader::system, &AssistHeader::version,
                                            &AssistHeader::count, &AssistHeader::issued);
static_assert(LengthOf(kAssistHeaderFields) == 8 && LastOffset(kAssistHeaderFields) == 4);

struct AssistTime {
    std::uint32_t seconds = 0; ///< Unix seconds
    std::uint16_t millisecond = 0;
    std::uint16_t uncertainty = 0; ///< milliseconds
};
constexpr auto kAssistTimeFields =
    Fields(&AssistTime::seconds, &AssistTime::millisecond, &AssistTime::uncertainty);
static_assert(LengthOf(kAssistTimeFields) == 8 && LastOffset(kAssistTimeFields) == 6);

/// One satellite's circular orbit around a moment.
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
constexpr auto kAssistOrbitFields =
    Fields(&AssistOrbit::number, &AssistOrbit::health, &AssistOrbit::fit, &AssistOrbit::toe, &AssistOrbit::radius,
           &AssistOrbit::inclination, &AssistOrbit::node, &AssistOrbit::argument);
static_assert(LengthOf(kAssistOrbitFields) == 40 && LastOffset(kAssistOrbitFields) == 32);

/// UTC runs behind the system's time by the leap seconds and
/// a0 + a1 (t - reference).
struct AssistUtc {
    double a0 = 0.0; ///< seconds
    double a1 = 0.0; ///< seconds a second
    std::uint32_t reference = 0;
    std::uint8_t leapSeconds = 0;
    std::uint8_t nextLeapSeconds = 0;
};
constexpr auto kAssistUtcFields = Fields(&AssistUtc::a0, &AssistUtc::a1, &AssistUtc::reference,
                                         &AssistUtc::leapSeconds, &AssistUtc::nextLeapSeconds, Zeros<2>());
static_assert(LengthOf(kAssistUtcFields) == 24 && LastOffset(kAssistUtcFields) == 22);

/// The broadcast model's alpha and beta.
struct AssistIonosphere {
    std::array<float, 4> alpha{};
    std::array<float, 4> beta{};
};
constexpr auto kAssistIonosphereFields = Fields(&AssistIonosphere::alpha, &AssistIonosphere::beta);
static_assert(LengthOf(kAssistIonosphereFields) == 32 && LastOffset(kAssistIonosphereFields) == 16);

struct AssistIntegrity {
    std::uint64_t unusable = 0; ///< bit n-1 set when satellite n must not be used
};
constexpr auto kAssistIntegrityFields = Fields(&AssistIntegrity::unusable);
static_assert(LengthOf(kAssistIntegrityFields) == 8);

struct AssistChannel {
    std::uint8_t number = 0;
    std::int8_t channel = 0;   ///< -7 to 6; 0 for systems without channels
    std::uint8_t carriers = 0; ///< bit 0 the first carrier, bit 1 the second
};
constexpr auto kAssistChannelFields =
    Fields(&AssistChannel::number, &AssistChannel::channel, &AssistChannel::carriers, Zeros<1>());
static_assert(LengthOf(kAssistChannelFields) == 4 && LastOffset(kAssistChannelFields) == 3);

/// The fields of the list, then the values row by row.
struct AssistGrid {
    std::uint8_t rows = 0;    ///< 2 to 32, from south to north
    std::uint8_t columns = 0; ///< 2 to 32, from west to east
    float latitude = 0.0f;    ///< degrees, of the first row
    float longitude = 0.0f;   ///< degrees, of the first column
    float latitudeStep = 0.0f;
    float longitudeStep = 0.0f;
    std::vector<std::uint16_t> content; ///< vertical electron content in tenths of a TECU
};
constexpr auto kAssistGridFields =
    Fields(&AssistGrid::rows, &AssistGrid::columns, Zeros<2>(), &AssistGrid::latitude, &AssistGrid::longitude,
           &AssistGrid::latitudeStep, &AssistGrid::longitudeStep);
static_assert(LengthOf(kAssistGridFields) == 20 && LastOffset(kAssistGridFields) == 16);

// Lengths of whole payloads in bytes.
constexpr std::size_t kAssistCheckSize = sizeof(std::uint32_t);
constexpr std::size_t kAssistFrameSize = LengthOf(kAssistHeaderFields) + kAssistCheckSize;
static_assert(kAssistFrameSize == 12);

template <typename List>
constexpr std::uint16_t AssistSize(const List& fields, std::size_t entries = 1, std::size_t behind = 0)
{
    return static_cast<std::uint16_t>(kAssistFrameSize + entries * LengthOf(fields) + behind);
}
constexpr std::uint16_t kAssistTimeSize = AssistSize(kAssistTimeFields);
constexpr std::uint16_t kAssistUtcSize = AssistSize(kAssistUtcFields);
constexpr std::uint16_t kAssistIonosphereSize = AssistSize(kAssistIonosphereFields);
constexpr std::uint16_t kAssistIntegritySize = AssistSize(kAssistIntegrityFields);
constexpr std::uint16_t AssistEphemerisSize(std::size_t satellites)
{
    return AssistSize(kAssistOrbitFields, satellites);
}
constexpr std::uint16_t AssistChannelsSize(std::size_t satellites)
{
    return AssistSize(kAssistChannelFields, satellites);
}
constexpr std::uint16_t AssistGridSize(std::size_t rows, std::size_t columns)
{
    return AssistSize(kAssistGridFields, 1, rows * columns * sizeof(std::uint16_t));
}

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
    WriteFields(image, AssistHeader{kind, system, kAssistVersion, static_cast<std::uint8_t>(count), issued},
                kAssistHeaderFields);
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
    WriteFields(image, time, kAssistTimeFields);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistEphemeris(AssistSystem system, std::uint32_t issued,
                                                     const std::vector<AssistOrbit>& orbits)
{
    ImageWriter image = BeginAssist(AssistKind::Ephemeris, system, orbits.size(), issued);
    for (const AssistOrbit& orbit : orbits) {
        WriteFields(image, orbit, kAssistOrbitFields);
    }
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistUtc(AssistSystem system, std::uint32_t issued, const AssistUtc& utc)
{
    ImageWriter image = BeginAssist(AssistKind::Utc, system, 1, issued);
    WriteFields(image, utc, kAssistUtcFields);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistIonosphere(AssistSystem system, std::uint32_t issued,
                                                      const AssistIonosphere& ionosphere)
{
    ImageWriter image = BeginAssist(AssistKind::Ionosphere, system, 1, issued);
    WriteFields(image, ionosphere, kAssistIonosphereFields);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistIntegrity(AssistSystem system, std::uint32_t issued,
                                                     const AssistIntegrity& integrity)
{
    ImageWriter image = BeginAssist(AssistKind::Integrity, system, 1, issued);
    WriteFields(image, integrity, kAssistIntegrityFields);
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistChannels(AssistSystem system, std::uint32_t issued,
                                                    const std::vector<AssistChannel>& channels)
{
    ImageWriter image = BeginAssist(AssistKind::Channels, system, channels.size(), issued);
    for (const AssistChannel& channel : channels) {
        WriteFields(image, channel, kAssistChannelFields);
    }
    return EndAssist(image);
}

inline std::vector<std::uint8_t> MakeAssistGrid(std::uint32_t issued, const AssistGrid& grid)
{
    ImageWriter image = BeginAssist(AssistKind::FineIonosphere, AssistSystem::Gps, 1, issued);
    WriteFields(image, grid, kAssistGridFields);
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
    ReadFields(image, header, kAssistHeaderFields);
    ImageReader check(payload + length - kAssistCheckSize, kAssistCheckSize);
    body = image;
    return header.version == kAssistVersion && static_cast<std::size_t>(header.system) < kAssistSystems &&
           header.count >= 1 && header.count <= kMaxAssistSatellites &&
           check.U32() == Crc32(payload, length - kAssistCheckSize);
}

inline bool ReadAssistTime(ImageReader body, AssistTime& time)
{
    ReadFields(body, time, kAssistTimeFields);
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
        ReadFields(body, orbit, kAssistOrbitFields);
        good = good && orbit.number >= 1 && orbit.number <= kMaxAssistSatellites && orbit.fit > 0 &&
               within(orbit.radius, 6.5e6, 1e8) && within(orbit.inclination, 0.0, pi) &&
               within(orbit.node, -2.0 * pi, 2.0 * pi) && within(orbit.argument, -2.0 * pi, 2.0 * pi);
    }
    return good && body.AtEnd();
}

inline bool ReadAssistUtc(ImageReader body, AssistUtc& utc)
{
    const bool zero = ReadFields(body, utc, kAssistUtcFields);
    return zero && body.AtEnd() && std::fabs(utc.a0) <= 1.0 && std::fabs(utc.a1) <= 1e-6;
}

inline bool ReadAssistIonosphere(ImageReader body, AssistIonosphere& ionosphere)
{
    ReadFields(body, ionosphere, kAssistIonosphereFields);
    bool good = true;
    for (const auto* values : {&ionosphere.alpha, &ionosphere.beta}) {
        for (const float value : *values) {
            good = good && std::isfinite(value);
        }
    }
    return good && body.AtEnd();
}

inline bool ReadAssistIntegrity(ImageReader body, AssistIntegrity& integrity)
{
    ReadFields(body, integrity, kAssistIntegrityFields);
    return body.AtEnd();
}

inline bool ReadAssistChannels(const AssistHeader& header, ImageReader body, std::vector<AssistChannel>& channels)
{
    bool good = true;
    channels.assign(header.count, AssistChannel());
    for (AssistChannel& channel : channels) {
        const bool zero = ReadFields(body, channel, kAssistChannelFields);
        const int lowest = header.system == AssistSystem::Glonass ? -7 : 0;
        const int highest = header.system == AssistSystem::Glonass ? 6 : 0;
        good = good && zero && channel.number >= 1 && channel.number <= kMaxAssistSatellites &&
               channel.channel >= lowest && channel.channel <= highest && channel.carriers <= 3;
    }
    return good && body.AtEnd();
}

inline bool ReadAssistGrid(ImageReader body, AssistGrid& grid)
{
    const bool zero = ReadFields(body, grid, kAssistGridFields);
    if (!zero || grid.rows < kMinGridSide || grid.rows > kMaxGridSide || grid.columns < kMinGridSide ||
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
