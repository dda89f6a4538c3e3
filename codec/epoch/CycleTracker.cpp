// SPDX-License-Identifier: MIT
#include "codec/epoch/CycleTracker.h"

namespace codec {

namespace {

constexpr SentenceSignature kGroupEnds = 1;

constexpr int kMissesUntilRelearned = 2;

} // namespace

SentenceSignature MakeSignature(const SentenceHead& head)
{
    return static_cast<SentenceSignature>(static_cast<unsigned char>(head.talker[0])) << 24 |
           static_cast<SentenceSignature>(static_cast<unsigned char>(head.talker[1])) << 16 |
           static_cast<SentenceSignature>(head.type) << 8;
}

SentenceSignature MakeGsvSignature(const SentenceHead& head, const GsvSentence& gsv)
{
    return MakeSignature(head) | static_cast<SentenceSignature>(gsv.signalId & 0xF) << 4 |
           (gsv.number >= gsv.total ? kGroupEnds : 0);
}

void CycleTracker::Reset()
{
    *this = CycleTracker();
}

bool CycleTracker::Enter(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup)
{
    const bool begins = BeginsCycle(signature, timed, key, beginsGroup);
    if (begins) {
        Learn();
        m_seenCount = 0;
        m_overlong = false;
        m_anchor = 0;
        m_firstGroup = 0;
        m_firstGroupCount = 0;
        m_key = kNoTime;
        m_expected = {};
        m_expectedSeen = 0;
    }
    if (m_seenCount < kMaxCycle) {
        m_seen[m_seenCount++] = signature;
    } else {
        m_overlong = true;
    }
    if (beginsGroup) {
        const SentenceSignature group = signature & ~kGroupEnds;
        if (m_firstGroup == 0) {
            m_firstGroup = group;
        }
        m_firstGroupCount += group == m_firstGroup ? 1 : 0;
    }
    if (timed && m_anchor == 0) {
        AdoptAnchor(signature, key);
    } else if (timed && m_key == kNoTime) {
        m_key = key;
    }
    m_atEnd = false;
    if (signature == m_expected.signature) {
        ++m_expectedSeen;
        m_atEnd = m_expectedSeen == m_expected.occurrence;
    }
    return begins;
}

bool CycleTracker::BeginsCycle(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup) const
{
    if (timed) {
        if (m_anchor == 0) {
            return false;
        }
        if (key == kNoTime) {
            return CountSeen(signature) > 0;
        }
        return signature == m_anchor || (m_key != kNoTime && key != m_key);
    }
    // Satellite lists alone: the first group coming again begins a cycle. Beside timed sentences a group may
    // come twice in a cycle, for two signals.
    return beginsGroup && (signature & ~kGroupEnds) == m_firstGroup &&
           m_firstGroupCount >= (m_anchor == 0 ? 1 : 2);
}

void CycleTracker::AdoptAnchor(SentenceSignature signature, std::int64_t key)
{
    m_anchor = signature;
    m_key = key;
    for (const Habit& habit : m_habits) {
        if (habit.anchor == signature) {
            m_expected = habit.end;
        }
    }
    // The sentence itself is counted by the caller.
    m_expectedSeen = CountSeen(m_expected.signature) - (signature == m_expected.signature ? 1 : 0);
}

int CycleTracker::CountSeen(SentenceSignature signature) const
{
    int count = 0;
    for (std::size_t i = 0; i < m_seenCount; ++i) {
        count += m_seen[i] == signature ? 1 : 0;
    }
    return count;
}

void CycleTracker::Learn()
{
    if (m_anchor == 0 || m_seenCount == 0 || m_overlong) {
        return;
    }
    const SentenceSignature last = m_seen[m_seenCount - 1];
    const End end{last, CountSeen(last)};
    for (Habit& habit : m_habits) {
        if (habit.anchor != m_anchor) {
            continue;
        }
        if (habit.end == end) {
            habit.misses = 0;
        } else if (++habit.misses >= kMissesUntilRelearned) {
            habit.end = end;
            habit.misses = 0;
        }
        return;
    }
    m_habits[m_nextHabit] = {m_anchor, end, 0};
    m_nextHabit = (m_nextHabit + 1) % kHabits;
}

} // namespace codec
