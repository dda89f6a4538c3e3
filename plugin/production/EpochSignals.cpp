// SPDX-License-Identifier: MIT
#include "production/EpochSignals.h"

#include <algorithm>

void SignalGroup::Add(std::uint8_t cn0)
{
    if (cn0 != 0) {
        ++count;
        strongest = std::max(strongest, cn0);
    }
}

EpochSignals SumUp(const std::vector<SatEntry>& satellites)
{
    EpochSignals sums;
    for (const SatEntry& satellite : satellites) {
        const std::size_t place = protocol::PlaceIn(kEpochOrder, satellite.system);
        if (place == kConstellations) {
            continue;
        }
        sums.total.Add(satellite.cn0);
        (kEpochOrder[place] == protocol::Constellation::Gps ? sums.gps : sums.nonGps).Add(satellite.cn0);
        sums.each[place].Add(satellite.cn0);
        sums.bars[place][satellite.number].push_back(satellite.cn0);
    }
    return sums;
}
