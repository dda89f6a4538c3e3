// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <cstddef>
#include <vector>

/// One signal of a satellite as the test keeps it.
struct SatSample {
    quint8 group;
    quint8 cn0; ///< dB-Hz
    quint8 used;
};

using SatGroup = std::vector<SatSample>; ///< samples of one group byte, by CN0 once there are several
using SatGroupList = std::vector<SatGroup>;

/// What is told of a constellation.
struct SatStat {
    quint8 used = 0;
    quint8 top5 = 0;
};

/// Takes a sample into the groups and the counts of its constellation.
void AddSatSample(SatGroupList& groups, SatStat& stat, const SatSample& sample);

/// The satellite table: what each constellation's column and the total show.
class KpiSatellites {
public:
    static constexpr int constellations = 5; ///< GPS, BDS, GAL, GLO, QZSS

    /// The longest record, and the entry behind its last one whose used flag is read all the same.
    static constexpr std::size_t largestRecord = 1 + 4 * 256;

    struct Column {
        bool shown = false; ///< since the table was emptied
        quint32 tracked = 0;
        SatStat stat;
    };

    /// Forgets what is shown; the counts of the latest record stay.
    void ClearShown();

    /// Takes a record: a count byte, then four bytes an entry. Any length will do: an entry counts only when
    /// the bytes hold it whole. Returns whether the totals are to be shown anew; they are not while no
    /// constellation has a CN0.
    bool Take(const char* bytes, std::size_t length);

    const Column& ColumnOf(int constellation) const { return m_columns[static_cast<std::size_t>(constellation)]; }
    qint32 Count() const { return satCount; }
    qint32 UsedCount() const { return satUsedCount; }
    quint8 Top5() const { return m_top5; }

private:
    bool SumUp();

    std::array<Column, constellations> m_columns;
    qint32 satCount = 0;
    qint32 satUsedCount = 0;
    quint8 m_top5 = 0;
};
