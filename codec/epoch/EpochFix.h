// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/FixOutput.h"
#include "codec/epoch/UtcCalendar.h"
#include "codec/nmea/Sentences.h"

#include <cstdint>

namespace codec {

/// The fix of an epoch: what its sentences tell of time, place, movement and accuracy, and what is carried on to
/// the next.
class EpochFix {
public:
    void Reset() { *this = EpochFix(); }
    void BeginEpoch();
    /// A start has been sent: the last fix and altitude are forgotten.
    void Restart();

    /// `type` is one of the sentences that bear a position. An epoch that is ignored leaves the altitude alone.
    void Take(SentenceType type, const PositionSentence& sentence, bool ignored);
    void Take(const ZdaSentence& sentence);
    void Take(const VtgSentence& sentence);
    /// Takes the dilutions.
    void Take(const GsaSentence& sentence);
    void TakeHeading(float heading);

    /// A sentence that bears a position has come.
    bool HasPosition() const { return m_hasPosition; }
    void ForgetPosition() { m_hasPosition = false; }

    /// The records of this epoch are out and held a valid fix.
    bool SentValid() const { return m_emittedValid; }
    void Send(RecordSink& sink, FixOutput& fixes);

private:
    /// The best of the cycle's sentences that bear a position.
    struct Candidate {
        int rank = 0; ///< 0 = none
        SentencePosition position;
        std::uint8_t fixMode = protocol::FixInvalid;
    };

    void NoteDate(const CivilDate& date, bool trusted);
    void EmitPosition(RecordSink& sink, FixOutput& fixes);

    UtcCalendar m_calendar;

    // The cycle at hand
    bool m_emittedValid = false;
    bool m_hasPosition = false;
    UtcTime m_time;
    CivilDate m_date;
    bool m_dateTrusted = false;
    Candidate m_valid;
    Candidate m_invalid;
    int m_altitudeRank = 0;
    int m_hdopRank = 0;
    bool m_speedSeen = false;
    float m_speed = 0;
    float m_hdop = 0;
    float m_pdop = 0;
    float m_vdop = 0;
    bool m_trueHeadingSeen = false;
    float m_trueHeading = 0;

    // Carried on
    double m_altitude = 0;
    float m_course = 0;
    std::int64_t m_lastFixKey = kNoTime;
    double m_lastFixLatitude = 0;
    double m_lastFixLongitude = 0;
};

} // namespace codec
