// SPDX-License-Identifier: MIT
#pragma once

#include "bridge/RecordCopy.h"
#include "views/Constellations.h"

#include <array>
#include <cstdint>
#include <vector>

/// The signals of the latest record by constellation and satellite, and their counts.
class SignalTable {
public:
#pragma pack(push, 1)
    struct Signal {
        std::uint8_t svid;
        std::uint8_t cn0;       ///< dB-Hz, never 0
        std::uint8_t inuseFlag; ///< non-zero: used in the fix
        float carrierFreq;      ///< MHz
    };
#pragma pack(pop)

    using Satellite = std::vector<Signal>; ///< by cn0, weakest first
    using Satellites = std::vector<Satellite>;

    /// 0 total, then in the order of kCounterOrder.
    using Counts = std::array<int, kCounterOrder.size() + 1>;

    /// Replaces everything by what a Cn0Record holds; its count is cut to that.
    void Fill(const RecordCopy& record);

    /// The satellites of a place in kDrawOrder, in the order of the record.
    const Satellites& SatellitesOf(int constellation) const
    {
        return m_satellites[static_cast<std::size_t>(constellation)];
    }

    const Counts& VisibleCount() const
    {
        return visibleCount;
    }
    const Counts& TrackedCount() const
    {
        return trackedCount;
    }
    const Counts& UsedCount() const
    {
        return usedCount;
    }

private:
    void Add(int constellation, const Signal& signal);

    std::array<Satellites, kDrawOrder.size()> m_satellites;
    Counts visibleCount{}; ///< entries
    Counts trackedCount{}; ///< entries with a signal strength; the total holds those of every letter
    Counts usedCount{};    ///< tracked entries of the five counted constellations that are used in the fix
};

static_assert(sizeof(SignalTable::Signal) == 7);
