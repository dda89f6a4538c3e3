// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Constellations.h"

#include <QColor>

#include <array>

/// In which groups are drawn. The first ones have a row in the legend, in the same order.
constexpr std::array kDrawOrder = {
    protocol::Constellation::Beidou,  protocol::Constellation::Glonass, protocol::Constellation::Gps,
    protocol::Constellation::Galileo, protocol::Constellation::Qzss,    protocol::Constellation::Sbas,
    protocol::Constellation::Navic,
};
static_assert(protocol::EachOnce(kDrawOrder) && kDrawOrder.size() == protocol::kConstellationCount);

constexpr int kLegendRows = 5;

/// In which the signal table counts, from 1 on; 0 is the total.
constexpr std::array kCounterOrder = {
    protocol::Constellation::Gps,  protocol::Constellation::Glonass, protocol::Constellation::Galileo,
    protocol::Constellation::Qzss, protocol::Constellation::Beidou,
};
static_assert(protocol::EachOnce(kCounterOrder));

constexpr const protocol::ConstellationRow& DrawnAt(std::size_t place)
{
    return protocol::RowOf(kDrawOrder[place]);
}

/// The place in the counters of what is drawn at a place; 0 for what is not counted.
constexpr int CounterAt(std::size_t place)
{
    const std::size_t counter = protocol::PlaceIn(kCounterOrder, kDrawOrder[place]);
    return counter < kCounterOrder.size() ? static_cast<int>(counter) + 1 : 0;
}

/// The place of a letter in kDrawOrder, or -1.
constexpr int ConstellationIndex(char letter)
{
    const std::size_t place = protocol::PlaceIn(kDrawOrder, letter);
    return place < kDrawOrder.size() ? static_cast<int>(place) : -1;
}

inline QColor ColourOf(const protocol::ConstellationRow& row)
{
    return QColor(row.red, row.green, row.blue);
}
