// SPDX-License-Identifier: MIT
#include "codec/epoch/SatelliteList.h"

#include <algorithm>
#include <cstring>
#include <tuple>

namespace codec {

void SatelliteList::Clear()
{
    m_systems = 0;
    m_satelliteCount = 0;
    m_signalCount = 0;
    std::memset(m_index, kNone, sizeof m_index);
}

SatelliteList::Satellite* SatelliteList::Find(const SatelliteId& id)
{
    std::uint8_t& index = m_index[static_cast<int>(id.system)][id.svid];
    if (index == kNone) {
        if (m_satelliteCount == kMaxSatellites) {
            return nullptr;
        }
        index = static_cast<std::uint8_t>(m_satelliteCount);
        m_satellites[m_satelliteCount++] = {id, false, 0, 0, kNone};
    }
    return &m_satellites[index];
}

/// A signal that comes twice keeps its stronger value.
void SatelliteList::AddSignal(Satellite& satellite, std::uint8_t signalId, std::uint8_t cn0)
{
    std::uint8_t* link = &satellite.firstSignal;
    while (*link != kNone) {
        Signal& signal = m_signals[*link];
        if (signal.signalId == signalId) {
            signal.cn0 = std::max(signal.cn0, cn0);
            return;
        }
        link = &signal.next;
    }
    if (m_signalCount < kMaxSignals) {
        *link = static_cast<std::uint8_t>(m_signalCount);
        m_signals[m_signalCount++] = {signalId, cn0, kNone};
    }
}

void SatelliteList::Add(const GsvSentence& gsv)
{
    for (int i = 0; i < gsv.count; ++i) {
        const GsvSentence::Entry& entry = gsv.entry[i];
        MarkSystem(entry.id.system);
        Satellite* satellite = Find(entry.id);
        if (satellite == nullptr) {
            continue;
        }
        if (entry.hasDirection) {
            satellite->hasDirection = true;
            satellite->elevation = entry.elevation;
            satellite->azimuth = entry.azimuth;
        }
        AddSignal(*satellite, gsv.signalId != 0 ? gsv.signalId : DefaultSignal(entry.id.system), entry.cn0);
    }
}

void SatelliteList::AddSystem(const SatelliteList& other, System system)
{
    MarkSystem(system);
    for (std::size_t i = 0; i < other.m_satelliteCount; ++i) {
        const Satellite& theirs = other.m_satellites[i];
        if (theirs.id.system != system) {
            continue;
        }
        Satellite* ours = Find(theirs.id);
        if (ours == nullptr) {
            return;
        }
        ours->hasDirection = theirs.hasDirection;
        ours->elevation = theirs.elevation;
        ours->azimuth = theirs.azimuth;
        for (std::uint8_t s = theirs.firstSignal; s != kNone; s = other.m_signals[s].next) {
            AddSignal(*ours, other.m_signals[s].signalId, other.m_signals[s].cn0);
        }
    }
}

void SatelliteList::Fill(protocol::Cn0Record& record, const UsedSatellites& used) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < m_satelliteCount && count < kMaxSignals; ++i) {
        const Satellite& satellite = m_satellites[i];
        const std::uint8_t inUse = used.Has(satellite.id) ? 1 : 0;
        const char letter = protocol::RowOf(satellite.id.system).letter;
        const std::size_t before = count;
        for (std::uint8_t s = satellite.firstSignal; s != kNone && count < kMaxSignals; s = m_signals[s].next) {
            const Signal& signal = m_signals[s];
            if (signal.cn0 != 0) {
                record.entry[count++] = {letter, satellite.id.svid, signal.cn0, inUse,
                                         CarrierFrequency(satellite.id.system, signal.signalId)};
            }
        }
        if (count == before) {
            // Seen and not tracked: one entry, whatever the number of its signals.
            const std::uint8_t signalId = satellite.firstSignal != kNone
                                              ? m_signals[satellite.firstSignal].signalId
                                              : DefaultSignal(satellite.id.system);
            record.entry[count++] = {letter, satellite.id.svid, 0, inUse,
                                     CarrierFrequency(satellite.id.system, signalId)};
        }
    }
    record.count = static_cast<std::uint8_t>(count);
}

/// A receiver that sees nothing may list satellites in the north one and all: that is no direction.
bool SatelliteList::HasDirections() const
{
    std::size_t directions = 0;
    bool turned = false;
    for (std::size_t i = 0; i < m_satelliteCount; ++i) {
        directions += m_satellites[i].hasDirection ? 1 : 0;
        turned = turned || m_satellites[i].azimuth != 0;
    }
    return turned || directions == 1;
}

void SatelliteList::Fill(protocol::SatPosRecord& record, const UsedSatellites& used) const
{
    std::size_t count = 0;
    const bool hasDirections = HasDirections();
    for (std::size_t i = 0; i < m_satelliteCount; ++i) {
        const Satellite& satellite = m_satellites[i];
        if (!satellite.hasDirection || !hasDirections) {
            continue;
        }
        std::uint8_t cn0 = 0;
        for (std::uint8_t s = satellite.firstSignal; s != kNone; s = m_signals[s].next) {
            cn0 = std::max(cn0, m_signals[s].cn0);
        }
        record.entry[count++] = {protocol::RowOf(satellite.id.system).letter,
                                 satellite.id.svid,
                                 satellite.elevation,
                                 0,
                                 satellite.azimuth,
                                 static_cast<std::uint8_t>(used.Has(satellite.id) ? 1 : 0),
                                 cn0};
    }
    record.count = static_cast<std::uint8_t>(count);
    record.reserved = 0;
}

void SortForKpi(protocol::KpiCn0Record& record)
{
    std::sort(record.entry, record.entry + record.count,
              [](const protocol::KpiCn0Entry& a, const protocol::KpiCn0Entry& b) {
                  return std::make_tuple(-a.cn0, a.constellation, a.inuseFlag) <
                         std::make_tuple(-b.cn0, b.constellation, b.inuseFlag);
              });
    record.entry[record.count] = {};
}

void SatelliteList::Fill(protocol::KpiCn0Record& record, const UsedSatellites& used) const
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < m_satelliteCount && count < kMaxSignals - 1; ++i) {
        const Satellite& satellite = m_satellites[i];
        std::uint8_t cn0 = 0;
        for (std::uint8_t s = satellite.firstSignal; s != kNone; s = m_signals[s].next) {
            if (IsFirstBand(satellite.id.system, m_signals[s].signalId)) {
                cn0 = std::max(cn0, m_signals[s].cn0);
            }
        }
        if (cn0 == 0) {
            continue;
        }
        const char letter = protocol::RowOf(satellite.id.system).letter;
        record.entry[count++] = {letter, 0, static_cast<std::uint8_t>(used.Has(satellite.id) ? 1 : 0), cn0};
    }
    record.count = static_cast<std::uint8_t>(count);
    SortForKpi(record);
}

} // namespace codec
