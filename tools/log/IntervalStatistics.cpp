// SPDX-License-Identifier: MIT
#include "tools/log/IntervalStatistics.h"

#include <algorithm>

namespace tools {

void IntervalStatistics::Add(const FixTime& from, std::int64_t milliseconds)
{
    if (milliseconds <= kLongest) {
        ++m_histogram[static_cast<std::size_t>(milliseconds)];
    } else {
        ++m_longCount;
        m_longSum += milliseconds;
    }
    if (m_longest.size() == kListed) {
        const auto shortest = std::min_element(m_longest.begin(), m_longest.end(), [](const Gap& a, const Gap& b) {
            return a.milliseconds < b.milliseconds;
        });
        if (milliseconds <= shortest->milliseconds) {
            return;
        }
        m_longest.erase(shortest);
    }
    m_longest.push_back({from, milliseconds});
}

std::int64_t IntervalStatistics::Typical() const
{
    return std::max_element(m_histogram.begin(), m_histogram.end()) - m_histogram.begin();
}

IntervalStatistics::Gaps IntervalStatistics::FindGaps() const
{
    Gaps gaps;
    const std::int64_t typical = Typical();
    if (typical == 0) {
        // Not even two epochs within a minute: whatever there is, is a gap.
        gaps.count = m_longCount;
        gaps.milliseconds = m_longSum;
        gaps.longest = m_longest;
        return gaps;
    }
    const std::int64_t limit = typical + typical / 2;
    gaps.count = m_longCount;
    gaps.milliseconds = m_longSum;
    for (std::int64_t ms = limit + 1; ms <= kLongest; ++ms) {
        const std::uint64_t count = m_histogram[static_cast<std::size_t>(ms)];
        gaps.count += count;
        gaps.milliseconds += static_cast<std::int64_t>(count) * ms;
    }
    std::copy_if(m_longest.begin(), m_longest.end(), std::back_inserter(gaps.longest),
                 [&](const Gap& gap) { return gap.milliseconds > limit; });
    return gaps;
}

} // namespace tools
