// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/Sentences.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// What makes two sentences the same step of a receiver's cycle: talker, type and, for GSV, the signal and
/// whether it is the last of its group.
using SentenceSignature = std::uint32_t;

SentenceSignature MakeSignature(const SentenceHead& head);
SentenceSignature MakeGsvSignature(const SentenceHead& head, const GsvSentence& gsv);

/// Learns from the order of sentences where a receiver's cycle begins and ends.
///
/// A cycle begins when a sentence bears another time than the one before, when the sentence that began the
/// cycle comes again, or when one comes again without a time (a receiver that has none leaves the field empty).
/// The sentence that was the last one before such a change is the end of a cycle that begins in the same way, so
/// the next such cycle is known to be complete as soon as that sentence has come. A learned end is given up when
/// two cycles running have ended elsewhere, so that one lost sentence does not upset it.
class CycleTracker {
public:
    void Reset();

    /// Takes the next sentence. `timed` = of a type that bears a time; `key` = that time or kNoTime;
    /// `beginsGroup` = the first sentence of a satellite list.
    /// True when it begins a new cycle, so that the one before is over.
    bool Enter(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup);

    /// True when the sentence that was entered last completes the cycle.
    bool AtEnd() const { return m_atEnd; }

    /// True when the cycle holds a sentence.
    bool Open() const { return m_seenCount > 0; }

    /// Time of the cycle, or kNoTime.
    std::int64_t Key() const { return m_key; }

private:
    struct End {
        SentenceSignature signature = 0;
        int occurrence = 0; ///< it is the n-th of its kind in the cycle

        bool operator==(const End& other) const
        {
            return signature == other.signature && occurrence == other.occurrence;
        }
    };
    struct Habit {
        SentenceSignature anchor = 0;
        End end;
        int misses = 0;
    };

    bool BeginsCycle(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup) const;
    void Learn();
    int CountSeen(SentenceSignature signature) const;
    void AdoptAnchor(SentenceSignature signature, std::int64_t key);

    static constexpr std::size_t kHabits = 8;
    static constexpr std::size_t kMaxCycle = 192;

    Habit m_habits[kHabits];
    std::size_t m_nextHabit = 0;
    SentenceSignature m_seen[kMaxCycle];
    std::size_t m_seenCount = 0;
    bool m_overlong = false;
    SentenceSignature m_anchor = 0; ///< the first timed sentence of the cycle; 0 = none yet
    SentenceSignature m_firstGroup = 0;
    int m_firstGroupCount = 0;
    std::int64_t m_key = kNoTime;
    End m_expected;
    int m_expectedSeen = 0;
    bool m_atEnd = false;
};

} // namespace codec
