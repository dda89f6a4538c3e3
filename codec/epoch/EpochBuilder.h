// SPDX-License-Identifier: MIT
#pragma once

#include "codec/RecordSink.h"
#include "codec/epoch/CycleMessages.h"
#include "codec/epoch/CycleSatellites.h"
#include "codec/epoch/CycleTracker.h"
#include "codec/epoch/EpochFix.h"
#include "codec/epoch/FixOutput.h"
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
    void TakePosition(const SentenceHead& head);
    void TakeZda(const SentenceHead& head);
    void TakeVtg(const SentenceHead& head);
    void TakeGsa(const SentenceHead& head);
    void TakeGsv(const SentenceHead& head, const GsvSentence& gsv);
    void EnterCycle(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup = false);
    void LeaveSentence();
    void BeginEpoch();
    void Emit();

    Output& m_output;
    FixOutput& m_fixes;
    Told m_told;
    CycleTracker m_cycle;

    // The cycle at hand
    bool m_emitted = false; ///< its records are out
    bool m_ignore = false;  ///< left over from before a start
    bool m_gsaSeen = false;
    EpochFix m_fix;
    CycleSatellites m_satellites;
    CycleMessages m_messages;

    std::int64_t m_discardedKey = kNoTime;
};

} // namespace codec
