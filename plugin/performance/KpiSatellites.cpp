// SPDX-License-Identifier: MIT
#include "performance/KpiSatellites.h"

#include "protocol/Records.h"

#include <QDebug>

#include <algorithm>
#include <cstring>

namespace {

// The columns of the table.
constexpr std::array columnOrder = {protocol::Constellation::Gps, protocol::Constellation::Beidou,
                                    protocol::Constellation::Galileo, protocol::Constellation::Glonass,
                                    protocol::Constellation::Qzss};
static_assert(protocol::EachOnce(columnOrder) && columnOrder.size() == KpiSatellites::constellations);
constexpr std::size_t mostSamples = 4;
constexpr quint8 groupWeight = 5;

/// Sums and divides in eight bits, also where they wrap: it is meant so.
void Recompute(const SatGroupList& groups, SatStat& stat)
{
    quint8 sum = 0;
    quint8 divisor = 0;
    bool begun = false;
    for (const SatGroup& group : groups) {
        if (group.size() <= mostSamples) {
            for (const SatSample& sample : group) {
                sum = static_cast<quint8>(sum + sample.cn0);
            }
            divisor = static_cast<quint8>(divisor + groupWeight);
            begun = true;
        }
        if (divisor != 0) {
            stat.top5 = static_cast<quint8>(sum / divisor);
        } else if (begun) {
            return;
        }
    }
}

} // namespace

void AddSatSample(SatGroupList& groups, SatStat& stat, const SatSample& sample)
{
    if (sample.used != 0) {
        ++stat.used;
    }
    if (groups.empty()) {
        groups.push_back({sample});
        stat.top5 = sample.cn0;
        return;
    }
    const auto same = std::find_if(groups.begin(), groups.end(), [&sample](const SatGroup& group) {
        return group.front().group == sample.group;
    });
    if (same != groups.end()) {
        // Top5 stays as it is; only a new group computes it.
        same->insert(std::upper_bound(same->begin(), same->end(), sample,
                                      [](const SatSample& a, const SatSample& b) { return a.cn0 < b.cn0; }),
                     sample);
        return;
    }
    groups.push_back({sample});
    Recompute(groups, stat);
}

void KpiSatellites::ClearShown()
{
    m_columns = {};
}

bool KpiSatellites::Take(const char* bytes, std::size_t length)
{
    protocol::KpiCn0RecordOf<256> record = {};
    static_assert(sizeof record == largestRecord);
    const std::size_t size = std::min(length, sizeof record);
    std::memcpy(&record, bytes, size);

    std::array<SatGroupList, constellations> groups;
    std::array<Column, constellations> seen;
    const std::size_t held = size > 0 ? (size - 1) / sizeof(protocol::KpiCn0Entry) : 0;
    const std::size_t count = std::min<std::size_t>(record.count, held);
    satCount = static_cast<qint32>(count);
    satUsedCount = 0;
    // One entry more than the count says: it is meant so.
    for (std::size_t i = 0; i <= count; ++i) {
        satUsedCount += record.entry[i].inuseFlag != 0 ? 1 : 0;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const protocol::KpiCn0Entry& entry = record.entry[i];
        const std::size_t index = protocol::PlaceIn(columnOrder, entry.constellation);
        if (index == columnOrder.size()) {
            // The placeholder stays in the line: it is meant so.
            qDebug() << "not support sat is %s" << entry.constellation;
            continue;
        }
        Column& column = seen[index];
        column.shown = true;
        ++column.tracked;
        AddSatSample(groups[index], column.stat, {entry.group, entry.cn0, entry.inuseFlag});
    }
    // A constellation that this record doesn't have keeps what it shows.
    for (std::size_t i = 0; i < constellations; ++i) {
        if (seen[i].shown) {
            m_columns[i] = seen[i];
        }
    }
    return SumUp();
}

bool KpiSatellites::SumUp()
{
    quint8 sum = 0;
    quint8 count = 0;
    for (const Column& column : m_columns) {
        if (column.shown) {
            sum = static_cast<quint8>(sum + column.stat.top5);
            count = static_cast<quint8>(count + (column.stat.top5 != 0 ? 1 : 0));
        }
    }
    if (count == 0) {
        return false;
    }
    m_top5 = static_cast<quint8>(sum / count);
    return true;
}
