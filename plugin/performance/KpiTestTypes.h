// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Where a performance test stands.
enum class KpiTestState : qint32 {
    Idle = 0,
    WaitFix = 1,  ///< a start was sent, the timeout runs
    TimedOut = 2, ///< no fix, the interval runs
    Tracking = 3, ///< fixed, the tracking time runs
    Gap = 4,      ///< tracking ended, the interval runs
};

/// What kind of start is tested. Done is reached only when a run with both kinds ends.
enum class KpiTestMode : qint32 { Cold = 0, Hot = 1, Done = 2 };

/// A place in degrees and metres.
struct KpiPlace {
    double latitude = 0.0;
    double longitude = 0.0;
    double altitude = 0.0;
};

/// Rows of the two result tables that hold values; the others hold titles.
enum KpiResultRow { KpiRowCounts = 2, KpiRowTtff = 4, KpiRowCep = 6 };

/// Columns of the counts' row.
enum KpiCountColumn { KpiColumnTests = 0, KpiColumnFixed = 1, KpiColumnRate = 2 };

constexpr int kpiStatisticColumns = 4; ///< 68 %, 95 %, maximum, average
