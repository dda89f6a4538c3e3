// SPDX-License-Identifier: MIT
#include "tools/log/CaptureSummary.h"

#include <algorithm>
#include <string_view>

namespace tools {

namespace {

constexpr std::size_t kLongestType = 12;

/// What stands between '$' and the first comma.
std::string_view AddressOf(const char* text, std::size_t length)
{
    const std::string_view sentence(text + 1, std::min(length - 1, kLongestType + 1));
    return sentence.substr(0, std::min(sentence.find_first_of(",*"), kLongestType));
}

} // namespace

void CaptureSummary::OnSentence(const char* text, std::size_t length)
{
    const std::string_view type = AddressOf(text, length);
    if (m_latestCount != nullptr && type == m_latestType) {
        ++*m_latestCount;
        return;
    }
    auto found = m_types.find(type);
    if (found == m_types.end()) {
        if (m_types.size() == kMostTypes) {
            ++m_otherTypes;
            return;
        }
        found = m_types.emplace(std::string(type), 0).first;
    }
    ++found->second;
    m_latestCount = &found->second;
    m_latestType = type;
}

void CaptureSummary::OnFix(const protocol::FixRecord& record)
{
    const FixTime time(record);
    // One epoch may come without a fix first and then, when a later sentence has it, with one.
    const bool again = m_epochTimed && time.IsSame(m_lastTime);
    if (!again) {
        BeginEpoch(time);
    }
    if (record.fixMode != protocol::FixInvalid && !m_epochHasFix) {
        CountFix(record, time);
    }
}

void CaptureSummary::BeginEpoch(const FixTime& time)
{
    if (m_epochs > 0) {
        m_fixLosses += m_previousHadFix && !m_epochHasFix ? 1 : 0;
        m_previousHadFix = m_epochHasFix;
    }
    ++m_epochs;
    m_epochHasFix = false;
    m_epochTimed = time.Known();
    if (!time.Known()) {
        return;
    }
    if (!m_firstTime.Known()) {
        m_firstTime = time;
    } else {
        const std::int64_t step = time.MillisecondsSince(m_lastTime);
        if (step < 0) {
            ++m_stepsBack;
        } else if (step > 0) {
            m_spanMs += step;
            m_intervals.Add(m_lastTime, step);
        }
    }
    m_lastTime = time;
}

void CaptureSummary::CountFix(const protocol::FixRecord& record, const FixTime& time)
{
    m_epochHasFix = true;
    ++m_modes[std::min<std::size_t>(record.fixMode, kFixModeCount - 1)];
    if (m_fixes++ == 0) {
        m_firstFix = record;
        m_firstFixTime = time;
        m_timeToFirstFixMs = m_spanMs;
    }
}

void CaptureSummary::OnCn0(const protocol::Cn0Record& record)
{
    for (std::size_t i = 0; i < record.count; ++i) {
        const protocol::Cn0Entry& entry = record.entry[i];
        if (ConstellationSummary* constellation = Find(entry.constellation)) {
            constellation->listed.set(entry.svid);
            if (entry.inuseFlag != 0) {
                constellation->used.set(entry.svid);
            }
            if (entry.cn0 != 0) {
                ++constellation->signals;
                constellation->cn0Sum += entry.cn0;
                constellation->cn0Highest = std::max(constellation->cn0Highest, entry.cn0);
            }
        }
    }
}

void CaptureSummary::OnSatPos(const protocol::SatPosRecord& record)
{
    for (std::size_t i = 0; i < record.count; ++i) {
        if (ConstellationSummary* constellation = Find(record.entry[i].constellation)) {
            constellation->listed.set(record.entry[i].svid);
        }
    }
}

ConstellationSummary* CaptureSummary::Find(char letter)
{
    const protocol::ConstellationRow* row = protocol::FindConstellation(letter);
    return row != nullptr ? &m_constellations[protocol::IndexOf(row->constellation)] : nullptr;
}

} // namespace tools
