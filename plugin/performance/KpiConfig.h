// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>

/// The numbers of a performance test; times in seconds.
struct KpiTestConfig {
    quint32 coldNum = 0;
    quint16 coldTimeout = 0;
    quint16 coldInr = 0;     ///< interval to the next test
    quint16 coldTrkTime = 0; ///< tracking time after the fix
    quint32 hotNum = 0;
    quint16 hotTimeout = 0;
    quint16 hotInr = 0;
    quint16 hotTrkTime = 0;
};

/// The entries of the form that travel to and from the configuration file, in the order in which it is written.
enum KpiConfigEntry {
    KpiColdStart,
    KpiColdAgnss,
    KpiColdPgnss,
    KpiColdNum,
    KpiColdTimeout,
    KpiColdInr,
    KpiColdTrkTime,
    KpiHotStart,
    KpiHotAgnss,
    KpiHotPgnss,
    KpiHotNum,
    KpiHotTimeout,
    KpiHotInr,
    KpiHotTrkTime,
    KpiConfigEntries
};

/// Whether an entry is a tick mark and not a text.
constexpr bool IsKpiTick(int entry)
{
    return entry % 7 <= KpiColdPgnss;
}

/// The entries as texts; a tick mark that is set is "true".
using KpiConfigTexts = std::array<QString, KpiConfigEntries>;

/// The numbers among them. A text that is no number gives 0; the times keep their low 16 bits.
KpiTestConfig ParseKpiConfig(const KpiConfigTexts& texts);

/// Reads Config.ini in the current directory, by the places of its sorted keys. False, with `texts` as it was,
/// when there is no file or it doesn't hold exactly as many keys as there are entries.
bool LoadKpiConfig(KpiConfigTexts& texts);

/// Writes Config.ini anew; whatever else it held is gone. An empty text is stored as "0".
void SaveKpiConfig(const KpiConfigTexts& texts);
