// SPDX-License-Identifier: MIT
#include "receiver/Memory.h"

#include "protocol/Crc32.h"
#include "protocol/LinkFrame.h"

#include <cmath>
#include <cstring>

namespace receiver {

namespace {

constexpr char kMagic[8] = {'V', 'R', 'X', 'H', 'I', 'S', '0', '1'};
constexpr std::size_t kHeaderSize = 48;
constexpr std::size_t kEntrySize = 48;
constexpr std::size_t kCheckSize = 4;

constexpr std::uint8_t kFlagPosition = 1;
constexpr std::uint8_t kFlagAlmanac = 2;

static_assert(kHeaderSize + 130 * kEntrySize + kCheckSize <= protocol::kMaxHistoryBlock);

template <typename Value> void Put(std::string& block, Value value)
{
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    block.append(bytes, sizeof value);
}

template <typename Value> Value Get(std::string_view block, std::size_t at)
{
    Value value;
    std::memcpy(&value, block.data() + at, sizeof value);
    return value;
}

} // namespace

Millis EphemerisLife(System system)
{
    return system == System::Glonass ? 30 * 60000 : 2 * 3600000;
}

std::string PackHistory(const Memory& memory, Millis utc)
{
    std::string entries;
    std::uint16_t count = 0;
    const std::vector<Orbit>& orbits = AllOrbits();
    for (std::size_t i = 0; i < orbits.size(); ++i) {
        if (!memory.HasEphemeris(i, utc)) {
            continue;
        }
        const Orbit& orbit = orbits[i];
        Put(entries, static_cast<std::uint8_t>(orbit.system));
        Put(entries, orbit.svid);
        Put(entries, std::uint16_t{0});
        Put(entries, std::uint32_t{0});
        Put(entries, static_cast<std::int64_t>(memory.ephemerisUntil[i]));
        Put(entries, orbit.radius);
        Put(entries, orbit.inclination);
        Put(entries, orbit.node);
        Put(entries, orbit.argument);
        ++count;
    }
    std::string block(kMagic, sizeof kMagic);
    const std::size_t total = kHeaderSize + entries.size() + kCheckSize;
    Put(block, static_cast<std::uint16_t>(total));
    Put(block, count);
    Put(block, static_cast<std::uint8_t>((memory.positionKnown ? kFlagPosition : 0) |
                                         (memory.almanacKnown ? kFlagAlmanac : 0)));
    block.append(3, '\0');
    Put(block, static_cast<std::int64_t>(utc));
    Put(block, memory.position.latitude);
    Put(block, memory.position.longitude);
    Put(block, memory.position.altitude);
    block += entries;
    Put(block, protocol::Crc32(block));
    return block;
}

bool UnpackHistory(std::string_view block, Memory& memory)
{
    if (block.size() < kHeaderSize + kCheckSize || std::memcmp(block.data(), kMagic, sizeof kMagic) != 0 ||
        Get<std::uint16_t>(block, 8) != block.size() ||
        Get<std::uint32_t>(block, block.size() - kCheckSize) !=
            protocol::Crc32(block.substr(0, block.size() - kCheckSize))) {
        return false;
    }
    const std::size_t count = Get<std::uint16_t>(block, 10);
    const auto flags = Get<std::uint8_t>(block, 12);
    Geodetic position{Get<double>(block, 24), Get<double>(block, 32), Get<double>(block, 40)};
    if (block.size() != kHeaderSize + count * kEntrySize + kCheckSize || !(std::abs(position.latitude) <= 90.0) ||
        !(std::abs(position.longitude) <= 180.0) || !(std::abs(position.altitude) < 1e6)) {
        return false;
    }
    Memory restored = memory;
    const std::vector<Orbit>& orbits = AllOrbits();
    for (std::size_t entry = 0; entry < count; ++entry) {
        const std::size_t at = kHeaderSize + entry * kEntrySize;
        const auto system = static_cast<System>(Get<std::uint8_t>(block, at));
        const auto svid = Get<std::uint8_t>(block, at + 1);
        bool known = false;
        for (std::size_t i = 0; i < orbits.size(); ++i) {
            if (orbits[i].system == system && orbits[i].svid == svid) {
                restored.ephemerisUntil[i] = Get<std::int64_t>(block, at + 8);
                known = true;
            }
        }
        if (!known) {
            return false;
        }
    }
    restored.positionKnown = restored.positionKnown || (flags & kFlagPosition) != 0;
    restored.almanacKnown = restored.almanacKnown || (flags & kFlagAlmanac) != 0;
    if ((flags & kFlagPosition) != 0) {
        restored.position = position;
    }
    memory = restored;
    return true;
}

} // namespace receiver
