// SPDX-License-Identifier: MIT
#pragma once

#include "receiver/Faults.h"
#include "receiver/Random.h"
#include "receiver/Utc.h"

#include <deque>
#include <string>
#include <vector>

namespace receiver {

/// The last stage before the line: spoils, delays or drops messages as the faults ask.
class FaultyOutput {
public:
    FaultyOutput(const Faults& faults, std::uint64_t seed);

    /// A whole sentence, frame or AT line.
    void Put(Millis now, std::string message);

    /// Lets the time-driven faults happen up to now.
    void Advance(Millis now);
    /// When Advance has something to do, or a time far away.
    Millis NextEvent() const;

    std::vector<std::string> Take();

    std::uint64_t Dropped() const { return m_dropped; }

private:
    void Release(Millis now);

    Faults m_faults;
    Random m_random;
    Millis m_nextGarbage = 0;
    std::vector<std::string> m_ready;
    std::deque<std::string> m_held;
    std::size_t m_heldBytes = 0;
    bool m_frontBegun = false;
    Millis m_releasedAt = 0;
    std::int64_t m_credit = 0; ///< thousandths of a byte
    std::uint64_t m_dropped = 0;
};

} // namespace receiver
