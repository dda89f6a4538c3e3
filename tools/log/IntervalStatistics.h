// SPDX-License-Identifier: MIT
#pragma once

#include "tools/log/FixTime.h"

#include <cstdint>
#include <vector>

namespace tools {

/// The times between one epoch and the next of a capture of any length, in memory of fixed size.
class IntervalStatistics {
public:
    static constexpr std::int64_t kLongest = 60000; ///< ms; longer ones count together
    static constexpr std::size_t kListed = 10;

    struct Gap {
        FixTime from;
        std::int64_t milliseconds;
    };
    struct Gaps {
        std::uint64_t count = 0;
        std::int64_t milliseconds = 0; ///< together
        std::vector<Gap> longest;      ///< kListed at most, in the order of the capture
    };

    IntervalStatistics() : m_histogram(kLongest + 1) {}

    /// An epoch that comes `milliseconds`, more than 0, after the one at `from`.
    void Add(const FixTime& from, std::int64_t milliseconds);

    /// The most frequent interval in ms, the shorter of two; 0 when there was none.
    std::int64_t Typical() const;
    /// Intervals of more than one and a half times the typical one.
    Gaps FindGaps() const;

private:
    std::vector<std::uint64_t> m_histogram; ///< by ms
    std::uint64_t m_longCount = 0;
    std::int64_t m_longSum = 0;
    std::vector<Gap> m_longest; ///< the longest ones so far, in the order of the capture
};

} // namespace tools
