// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/SatelliteList.h"
#include "codec/nmea/SatelliteSentences.h"

namespace codec {

/// The satellites of a cycle: its lists, and which of them are used.
class CycleSatellites {
public:
    void Reset();

    void ClearUsed() { m_used.Clear(); }
    void Take(const GsaSentence& sentence);

    /// True until Send or Forget, once a list has begun.
    bool Listed() const { return m_gsvSeen; }
    void BeginList();
    void Take(const GsvSentence& gsv, TalkerSystem talker);
    void Forget() { m_gsvSeen = false; }

    /// Hands over the records of the list at hand.
    void Send(RecordSink& sink);

private:
    bool m_gsvSeen = false;
    UsedSatellites m_used;
    SatelliteList m_lists[2];
    int m_current = 0; ///< which of the two lists is this cycle's; the other is the one before

    SatelliteList m_joined;
};

} // namespace codec
