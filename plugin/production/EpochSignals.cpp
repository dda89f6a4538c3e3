// SPDX-License-Identifier: MIT
#include "production/EpochSignals.h"

#include <algorithm>
#include <string_view>

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
        const std::size_t place = std::string_view(kConstellationLetters).find(satellite.system);
        if (place == std::string_view::npos) {
            continue;
        }
        sums.total.Add(satellite.cn0);
        (satellite.system == 'G' ? sums.gps : sums.nonGps).Add(satellite.cn0);
        sums.each[place].Add(satellite.cn0);
        sums.bars[place][satellite.number].push_back(satellite.cn0);
    }
    return sums;
}
