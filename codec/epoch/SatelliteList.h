// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/Sentences.h"
#include "protocol/Records.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// The satellites that a GSA calls used.
class UsedSatellites {
public:
    void Clear() { *this = UsedSatellites(); }
    void Add(const SatelliteId& id)
    {
        m_bits[static_cast<int>(id.system)][id.svid >> 6] |= std::uint64_t{1} << (id.svid & 63);
    }
    bool Has(const SatelliteId& id) const
    {
        return (m_bits[static_cast<int>(id.system)][id.svid >> 6] >> (id.svid & 63) & 1) != 0;
    }

private:
    std::uint64_t m_bits[kSystems][4] = {};
};

/// Puts the strongest signals first, and a zero entry behind the last: the reader of this record looks at the
/// used flag of one entry more than the count says. At most 254 entries.
void SortForKpi(protocol::KpiCn0Record& record);

/// The satellites of one cycle with all their signals, each once.
class SatelliteList {
public:
    static constexpr std::size_t kMaxSatellites = 255;
    static constexpr std::size_t kMaxSignals = 255;
    static constexpr std::uint8_t kNone = 255;

    struct Satellite {
        SatelliteId id;
        bool hasDirection;
        std::uint8_t elevation;
        std::uint16_t azimuth;
        std::uint8_t firstSignal; ///< index, or kNone
    };
    struct Signal {
        std::uint8_t signalId;
        std::uint8_t cn0;
        std::uint8_t next; ///< index of the satellite's next signal, or kNone
    };

    SatelliteList() { Clear(); }

    void Clear();
    void Add(const GsvSentence& gsv);
    /// Takes over one constellation of another list.
    void AddSystem(const SatelliteList& other, System system);

    bool Empty() const { return m_satelliteCount == 0 && m_systems == 0; }
    bool HasSystem(System system) const { return (m_systems >> static_cast<int>(system) & 1) != 0; }
    void MarkSystem(System system) { m_systems = m_systems | 1U << static_cast<int>(system); }

    void Fill(protocol::Cn0Record& record, const UsedSatellites& used) const;
    void Fill(protocol::SatPosRecord& record, const UsedSatellites& used) const;
    /// Tracked signals of the first band, strongest first.
    void Fill(protocol::KpiCn0Record& record, const UsedSatellites& used) const;

private:
    bool HasDirections() const;
    Satellite* Find(const SatelliteId& id);
    void AddSignal(Satellite& satellite, std::uint8_t signalId, std::uint8_t cn0);

    unsigned m_systems = 0; ///< bit per constellation that had a list, also an empty one
    std::size_t m_satelliteCount = 0;
    std::size_t m_signalCount = 0;
    std::uint8_t m_index[kSystems][256]; ///< satellite by number, kNone = not there
    Satellite m_satellites[kMaxSatellites];
    Signal m_signals[kMaxSignals];
};

} // namespace codec
