// SPDX-License-Identifier: MIT
#include "views/sky/SkyMap.h"

#include <algorithm>
#include <limits>

namespace {

/// An elevation of 90 and above lies in no band.
std::uint8_t CellElevation(std::uint8_t elevation)
{
    return elevation < 90 ? static_cast<std::uint8_t>(elevation / 10 * 10 + 5) : std::uint8_t{0};
}

/// An azimuth of 360 and above lies in no sector.
std::uint16_t CellAzimuth(std::uint16_t azimuth)
{
    return azimuth < 360 ? static_cast<std::uint16_t>(azimuth / 15 * 15 + 7) : std::uint16_t{0};
}

} // namespace

void SkyMap::Fold(std::uint8_t elevation, std::uint16_t azimuth, std::uint8_t cn0)
{
    const std::uint8_t cellElevation = CellElevation(elevation);
    const std::uint16_t cellAzimuth = CellAzimuth(azimuth);
    const auto cell = std::find_if(cn0List.begin(), cn0List.end(), [&](const Cell& known) {
        return known.elevation == cellElevation && known.azimuth == cellAzimuth;
    });
    if (cell == cn0List.end()) {
        cn0List.push_back({1, cellElevation, cellAzimuth, cn0});
        ++m_revision;
        return;
    }
    const std::int64_t count = cell->count;
    const auto average = static_cast<std::uint8_t>((cell->cn0 * count + cn0) / (count + 1));
    if (average != cell->cn0) {
        ++m_revision;
    }
    cell->cn0 = average;
    if (cell->count < std::numeric_limits<std::int32_t>::max()) {
        ++cell->count;
    }
}

void SkyMap::Clear()
{
    cn0List.clear();
    ++m_revision;
}
