// SPDX-License-Identifier: MIT
#include "views/signal/SignalTable.h"

#include "base/BoundsChecked.h"
#include "protocol/Records.h"
#include "views/Constellations.h"

#include <QDebug>

#include <algorithm>
#include <cstddef>

void SignalTable::Fill(const RecordCopy& record)
{
    for (Satellites& satellites : m_satellites) {
        satellites.clear();
    }
    visibleCount = {};
    trackedCount = {};
    usedCount = {};

    constexpr std::size_t first = offsetof(protocol::Cn0Record, entry);
    const std::size_t count = record.HeldEntries(record.At<std::uint8_t>(0), first, sizeof(protocol::Cn0Entry));
    visibleCount[0] = static_cast<int>(count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t offset = first + i * sizeof(protocol::Cn0Entry);
        const auto entry = record.At<protocol::Cn0Entry>(offset);
        if (entry.cn0 != 0) {
            ++trackedCount[0];
        }
        const int constellation = ConstellationIndex(entry.constellation);
        const int counter = constellation < 0 ? 0 : CounterAt(static_cast<std::size_t>(constellation));
        // Satellites without a counter of their own aren't shown either.
        if (counter == 0) {
            continue;
        }
        ++visibleCount[static_cast<std::size_t>(counter)];
        if (entry.cn0 == 0) {
            continue;
        }
        ++trackedCount[static_cast<std::size_t>(counter)];
        if (entry.inuseFlag != 0) {
            ++usedCount[0];
            ++usedCount[static_cast<std::size_t>(counter)];
        }
        Signal signal{entry.svid, entry.cn0, entry.inuseFlag, 0.0F};
        if (memcpy_s(&signal.carrierFreq, sizeof(signal.carrierFreq),
                     record.Data() + offset + offsetof(protocol::Cn0Entry, carrierFreq),
                     sizeof(signal.carrierFreq)) != 0) {
            qDebug().noquote().nospace() << "memcpy Cn0ViewWin freq error!";
        }
        Add(constellation, signal);
    }
}

void SignalTable::Add(int constellation, const Signal& signal)
{
    Satellites& satellites = m_satellites[static_cast<std::size_t>(constellation)];
    const auto known = std::find_if(satellites.begin(), satellites.end(), [&](const Satellite& satellite) {
        return satellite.front().svid == signal.svid;
    });
    if (known == satellites.end()) {
        satellites.push_back({signal});
        return;
    }
    known->push_back(signal);
    std::stable_sort(known->begin(), known->end(),
                     [](const Signal& left, const Signal& right) { return left.cn0 < right.cn0; });
}
