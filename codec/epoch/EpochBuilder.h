// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/CycleTracker.h"
#include "codec/epoch/FixOutput.h"
#include "codec/epoch/SatelliteList.h"
#include "codec/epoch/UtcCalendar.h"
#include "codec/nmea/Sentences.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace codec {

/// Makes one set of records of each cycle of sentences.
///
/// Records go out when the cycle is complete. A cycle without a sentence that bears a position gives no
/// position records; one without satellite lists gives no satellite records, so that their age stays true.
class EpochBuilder {
public:
    /// Where the records go, and a chance to hand over pending text before them.
    class Output {
    public:
        virtual RecordSink& BeginRecords() = 0;

    protected:
        ~Output() = default;
    };

    EpochBuilder(Output& output, FixOutput& fixes) : m_output(output), m_fixes(fixes) {}
    EpochBuilder(const EpochBuilder&) = delete;
    EpochBuilder& operator=(const EpochBuilder&) = delete;

    void Reset();
    /// Takes a checked sentence, from '$' to the checksum's last digit.
    void Take(const char* text, std::size_t length);
    /// Hands over an unfinished cycle, at the end of a file.
    void Finish();
    /// A start has been sent: what the receiver said before it is no answer to it. The unfinished cycle and
    /// the last altitude are forgotten.
    void Restart();

    /// What the sentences have told since the last call.
    struct Told {
        bool position = false;
        bool satellites = false;
    };
    bool TakeToldPosition() { return std::exchange(m_told.position, false); }
    bool TakeToldSatellites() { return std::exchange(m_told.satellites, false); }

private:
    /// The best of the cycle's sentences that bear a position.
    struct Candidate {
        int rank = 0; ///< 0 = none
        SentencePosition position;
        std::uint8_t fixMode = protocol::FixInvalid;
    };

    void TakePosition(const SentenceHead& head);
    void TakeZda(const SentenceHead& head);
    void TakeVtg(const SentenceHead& head);
    void TakeGsa(const SentenceHead& head);
    void TakeGsv(const SentenceHead& head, const GsvSentence& gsv);
    void EnterCycle(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup = false);
    void LeaveSentence();
    void BeginEpoch();
    void Emit();
    void EmitPosition(RecordSink& sink);
    void EmitSatellites(RecordSink& sink);
    void EmitMessages(RecordSink& sink);
    template <typename Message> void EmitMessage(RecordSink& sink, std::uint32_t msgType, const Message& message);
    void NoteDate(const CivilDate& date, bool trusted);

    Output& m_output;
    FixOutput& m_fixes;
    Told m_told;
    CycleTracker m_cycle;
    UtcCalendar m_calendar;

    // The cycle at hand
    bool m_emitted = false;      ///< its records are out
    bool m_emittedValid = false; ///< and held a valid fix
    bool m_ignore = false;       ///< left over from before a start
    unsigned m_messages = 0;     ///< bit per MessageType that the cycle has
    bool m_hasPosition = false;  ///< a sentence that bears a position has come
    UtcTime m_time;
    CivilDate m_date;
    bool m_dateTrusted = false;
    Candidate m_valid;
    Candidate m_invalid;
    int m_altitudeRank = 0;
    int m_hdopRank = 0;
    bool m_gsaSeen = false;
    bool m_gsvSeen = false;
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
    std::int64_t m_discardedKey = kNoTime;
    std::int64_t m_lastFixKey = kNoTime;
    double m_lastFixLatitude = 0;
    double m_lastFixLongitude = 0;
    UsedSatellites m_used;
    SatelliteList m_lists[2];
    int m_current = 0; ///< which of the two lists is this cycle's; the other is the one before

    SatelliteList m_joined;

    protocol::MsgGga m_gga{};
    protocol::MsgRmc m_rmc{};
    protocol::MsgGll m_gll{};
    protocol::MsgVtg m_vtg{};
    protocol::MsgZda m_zda{};
    protocol::MsgGsv m_gsv{};
    protocol::MsgGsa m_gsa{};
};

} // namespace codec
