// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/link/LinkParser.h"
#include "tools/log/FixModes.h"
#include "tools/log/FixTime.h"
#include "tools/log/IntervalStatistics.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <map>
#include <string>

namespace tools {

/// What the records of one constellation came to.
struct ConstellationSummary {
    std::bitset<256> listed; ///< satellite numbers
    std::bitset<256> used;
    std::uint64_t signals = 0; ///< measurements of C/N0
    std::uint64_t cn0Sum = 0;  ///< dB-Hz
    std::uint8_t cn0Highest = 0;
};

/// What a capture holds, gathered from the codec's records in memory that does not grow with the capture.
class CaptureSummary final : public codec::RecordSink {
public:
    /// Different sentence addresses that are counted apart; further ones count together.
    static constexpr std::size_t kMostTypes = 256;
    static constexpr std::size_t kConstellations = protocol::kConstellationCount;

    void OnSentence(const char* text, std::size_t length) override;
    void OnFix(const protocol::FixRecord& record) override;
    void OnCn0(const protocol::Cn0Record& record) override;
    void OnSatPos(const protocol::SatPosRecord& record) override;

    const std::map<std::string, std::uint64_t, std::less<>>& SentenceTypes() const { return m_types; }
    std::uint64_t OtherTypes() const { return m_otherTypes; }

    /// Epochs are the different times (or the records, where no time is told) of position sentences.
    std::uint64_t Epochs() const { return m_epochs; }
    std::uint64_t Fixes() const { return m_fixes; }
    std::uint64_t FixesOfMode(std::size_t mode) const { return m_modes[mode]; }
    /// Times that a fix was followed by an epoch without one.
    std::uint64_t FixLosses() const { return m_fixLosses + (m_previousHadFix && !m_epochHasFix ? 1 : 0); }
    const FixTime& FirstTime() const { return m_firstTime; }
    const FixTime& LastTime() const { return m_lastTime; }
    /// Time that the epochs cover, steps back left out, in ms.
    std::int64_t SpanMs() const { return m_spanMs; }
    std::uint64_t StepsBack() const { return m_stepsBack; }
    const IntervalStatistics& Intervals() const { return m_intervals; }

    /// Valid when there is a fix.
    const protocol::FixRecord& FirstFix() const { return m_firstFix; }
    const FixTime& FirstFixTime() const { return m_firstFixTime; }
    /// Time from the first epoch to the first fix, in ms.
    std::int64_t TimeToFirstFixMs() const { return m_timeToFirstFixMs; }

    /// In the order of protocol::kConstellationTable.
    const ConstellationSummary& Constellation(std::size_t index) const { return m_constellations[index]; }

private:
    void BeginEpoch(const FixTime& time);
    void CountFix(const protocol::FixRecord& record, const FixTime& time);
    ConstellationSummary* Find(char letter);

    std::map<std::string, std::uint64_t, std::less<>> m_types;
    std::uint64_t* m_latestCount = nullptr; ///< of the latest address, which often comes again
    std::string m_latestType;
    std::uint64_t m_otherTypes = 0;

    std::uint64_t m_epochs = 0;
    std::uint64_t m_fixes = 0;
    std::array<std::uint64_t, kFixModeCount> m_modes{};
    std::uint64_t m_fixLosses = 0;
    bool m_epochHasFix = false;
    bool m_previousHadFix = false;
    bool m_epochTimed = false;
    FixTime m_firstTime;
    FixTime m_lastTime;
    std::int64_t m_spanMs = 0;
    std::uint64_t m_stepsBack = 0;
    IntervalStatistics m_intervals;
    protocol::FixRecord m_firstFix{};
    FixTime m_firstFixTime;
    std::int64_t m_timeToFirstFixMs = 0;
    std::array<ConstellationSummary, kConstellations> m_constellations;
};

/// The summary for people.
std::string SummaryText(const std::string& name, const codec::LinkCounters& counters,
                        const CaptureSummary& summary);

/// The same as one JSON object; what is unknown is null.
std::string SummaryJson(const std::string& name, const codec::LinkCounters& counters,
                        const CaptureSummary& summary);

} // namespace tools
