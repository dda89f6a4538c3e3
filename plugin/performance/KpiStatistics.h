// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiTestTypes.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <vector>

/// A percentile of sorted samples: the k-th smallest, k being `percent` of their number cut to a whole one, and
/// never interpolated. `sorted` holds at least one sample.
double KpiPercentile(const std::vector<double>& sorted, double percent);

/// 68 %, 95 %, maximum and average of sorted samples, of which there is at least one.
std::array<double, kpiStatisticColumns> KpiSummary(const std::vector<double>& sorted);

/// A statistic as the tables show it.
QString KpiStatisticText(double value);

/// The time to first fix in seconds, less the fixed deduction; in single precision throughout.
float KpiTtffSeconds(const QDateTime& start, const QDateTime& fix);

/// Whether a time counts for a kind of start: from 10 s on for a cold one, up to 10 s for a hot one.
bool IsKpiTtffCounted(KpiTestMode mode, float seconds);

/// Horizontal distance in metres. Without a codec it is 0.
double KpiHorizontalError(const KpiPlace& reference, const KpiPlace& fix);

/// The samples of a run; each array is sorted, what is not a number stands last.
class KpiStatistics {
public:
    void Clear();

    /// Adds a sample of the mode; false when it is rejected.
    bool AddTtff(KpiTestMode mode, float seconds);
    void AddCep(KpiTestMode mode, double metres);

    const std::vector<double>& Ttff(KpiTestMode mode) const
    {
        return mode == KpiTestMode::Cold ? coldTtff : hotTtff;
    }
    const std::vector<double>& Cep(KpiTestMode mode) const { return mode == KpiTestMode::Cold ? coldCep : hotCep; }

private:
    std::vector<double> hotTtff;  ///< seconds
    std::vector<double> coldTtff; ///< seconds
    std::vector<double> hotCep;   ///< metres
    std::vector<double> coldCep;  ///< metres
};
