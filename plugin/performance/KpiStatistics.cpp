// SPDX-License-Identifier: MIT
#include "performance/KpiStatistics.h"

#include "bridge/ClassGnss.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float deductionSeconds = 0.12f;
constexpr double boundSeconds = 10.0;

void Insert(std::vector<double>& samples, double value)
{
    const auto before = [](double a, double b) { return !std::isnan(a) && (std::isnan(b) || a < b); };
    samples.insert(std::upper_bound(samples.begin(), samples.end(), value, before), value);
}

} // namespace

double KpiPercentile(const std::vector<double>& sorted, double percent)
{
    const std::size_t count = sorted.size();
    const auto k = static_cast<std::size_t>((percent * static_cast<double>(count)) / 100.0);
    return k < count ? sorted[std::max<std::size_t>(k, 1) - 1] : sorted[count - 1];
}

std::array<double, kpiStatisticColumns> KpiSummary(const std::vector<double>& sorted)
{
    double sum = 0.0;
    for (const double sample : sorted) {
        sum += sample;
    }
    return {KpiPercentile(sorted, 68.0), KpiPercentile(sorted, 95.0), sorted.back(),
            sum / static_cast<double>(sorted.size())};
}

QString KpiStatisticText(double value)
{
    return QString::number(value, 'f', 2);
}

float KpiTtffSeconds(const QDateTime& start, const QDateTime& fix)
{
    const auto milliseconds = static_cast<quint32>(start.msecsTo(fix));
    return static_cast<float>(milliseconds) / 1000.0f - deductionSeconds;
}

bool IsKpiTtffCounted(KpiTestMode mode, float seconds)
{
    const auto value = static_cast<double>(seconds);
    // The bounds differ on purpose: a quick cold start is taken for a hot one, and the other way round.
    return mode == KpiTestMode::Cold ? !(value < boundSeconds) : !(value > boundSeconds);
}

double KpiHorizontalError(const KpiPlace& reference, const KpiPlace& fix)
{
    const double from[3] = {reference.latitude, reference.longitude, reference.altitude};
    const double to[3] = {fix.latitude, fix.longitude, fix.altitude};
    double enu[3] = {0.0, 0.0, 0.0};
    ClassGnss::Lla2Enu(from, to, enu);
    return std::sqrt(enu[0] * enu[0] + enu[1] * enu[1]);
}

void KpiStatistics::Clear()
{
    for (std::vector<double>* samples : {&hotTtff, &coldTtff, &hotCep, &coldCep}) {
        samples->clear();
    }
}

bool KpiStatistics::AddTtff(KpiTestMode mode, float seconds)
{
    if (!IsKpiTtffCounted(mode, seconds)) {
        return false;
    }
    Insert(mode == KpiTestMode::Cold ? coldTtff : hotTtff, static_cast<double>(seconds));
    return true;
}

void KpiStatistics::AddCep(KpiTestMode mode, double metres)
{
    Insert(mode == KpiTestMode::Cold ? coldCep : hotCep, metres);
}
