// SPDX-License-Identifier: MIT
#include "receiver/Memory.h"

#include "protocol/Crc32.h"
#include "protocol/FieldList.h"
#include "protocol/LinkFrame.h"

#include <array>
#include <cmath>

namespace receiver {

namespace {

constexpr std::array<char, 8> kMagic = {{'V', 'R', 'X', 'H', 'I', 'S', '0', '1'}};
constexpr std::size_t kCheckSize = sizeof(std::uint32_t);

struct Header {
    std::array<char, 8> magic = kMagic;
    std::uint16_t length = 0;
    std::uint16_t count = 0;
    std::uint8_t flags = 0;
    std::int64_t written = 0; ///< milliseconds, UTC
    double latitude = 0.0;
    double longitude = 0.0;
    double altitude = 0.0;
};
constexpr auto kHeaderFields =
    protocol::Fields(&Header::magic, &Header::length, &Header::count, &Header::flags, protocol::Zeros<3>(),
                     &Header::written, &Header::latitude, &Header::longitude, &Header::altitude);
constexpr std::size_t kHeaderSize = protocol::LengthOf(kHeaderFields);
static_assert(kHeaderSize == 48 && protocol::LastOffset(kHeaderFields) == 40);

struct Entry {
    System system{};
    std::uint8_t svid = 0;
    std::int64_t until = 0; ///< milliseconds, UTC
    double radius = 0.0;
    double inclination = 0.0;
    double node = 0.0;
    double argument = 0.0;
};
constexpr auto kEntryFields =
    protocol::Fields(&Entry::system, &Entry::svid, protocol::Zeros<6>(), &Entry::until, &Entry::radius,
                     &Entry::inclination, &Entry::node, &Entry::argument);
constexpr std::size_t kEntrySize = protocol::LengthOf(kEntryFields);
static_assert(kEntrySize == 48 && protocol::LastOffset(kEntryFields) == 40);

constexpr std::uint8_t kFlagPosition = 1;
constexpr std::uint8_t kFlagAlmanac = 2;

static_assert(kHeaderSize + 130 * kEntrySize + kCheckSize <= protocol::kMaxHistoryBlock);

} // namespace

Millis EphemerisLife(System system)
{
    return system == System::Glonass ? 30 * 60000 : 2 * 3600000;
}

std::string PackHistory(const Memory& memory, Millis utc)
{
    protocol::ImageWriter entries;
    std::uint16_t count = 0;
    const std::vector<Orbit>& orbits = AllOrbits();
    for (std::size_t i = 0; i < orbits.size(); ++i) {
        if (!memory.HasEphemeris(i, utc)) {
            continue;
        }
        const Orbit& orbit = orbits[i];
        protocol::WriteFields(entries,
                              Entry{orbit.system, orbit.svid, memory.ephemerisUntil[i], orbit.radius,
                                    orbit.inclination, orbit.node, orbit.argument},
                              kEntryFields);
        ++count;
    }
    Header header;
    header.length = static_cast<std::uint16_t>(kHeaderSize + entries.Size() + kCheckSize);
    header.count = count;
    header.flags = static_cast<std::uint8_t>((memory.positionKnown ? kFlagPosition : 0) |
                                             (memory.almanacKnown ? kFlagAlmanac : 0));
    header.written = utc;
    header.latitude = memory.position.latitude;
    header.longitude = memory.position.longitude;
    header.altitude = memory.position.altitude;
    protocol::ImageWriter block;
    protocol::WriteFields(block, header, kHeaderFields);
    block.Raw(entries.Bytes().data(), entries.Size());
    block.Check();
    return std::string(block.Bytes().begin(), block.Bytes().end());
}

bool UnpackHistory(std::string_view block, Memory& memory)
{
    if (block.size() < kHeaderSize + kCheckSize) {
        return false;
    }
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(block.data());
    protocol::ImageReader image(bytes, block.size());
    Header header;
    protocol::ReadFields(image, header, kHeaderFields);
    protocol::ImageReader check(bytes + block.size() - kCheckSize, kCheckSize);
    if (header.magic != kMagic || header.length != block.size() ||
        check.U32() != protocol::Crc32(block.substr(0, block.size() - kCheckSize))) {
        return false;
    }
    const std::size_t count = header.count;
    const Geodetic position{header.latitude, header.longitude, header.altitude};
    if (block.size() != kHeaderSize + count * kEntrySize + kCheckSize || !(std::abs(position.latitude) <= 90.0) ||
        !(std::abs(position.longitude) <= 180.0) || !(std::abs(position.altitude) < 1e6)) {
        return false;
    }
    Memory restored = memory;
    const std::vector<Orbit>& orbits = AllOrbits();
    for (std::size_t entry = 0; entry < count; ++entry) {
        Entry read;
        protocol::ReadFields(image, read, kEntryFields);
        bool known = false;
        for (std::size_t i = 0; i < orbits.size(); ++i) {
            if (orbits[i].system == read.system && orbits[i].svid == read.svid) {
                restored.ephemerisUntil[i] = read.until;
                known = true;
            }
        }
        if (!known) {
            return false;
        }
    }
    restored.positionKnown = restored.positionKnown || (header.flags & kFlagPosition) != 0;
    restored.almanacKnown = restored.almanacKnown || (header.flags & kFlagAlmanac) != 0;
    if ((header.flags & kFlagPosition) != 0) {
        restored.position = position;
    }
    memory = restored;
    return true;
}

} // namespace receiver
