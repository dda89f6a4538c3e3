// SPDX-License-Identifier: MIT
#include "codec/epoch/EpochBuilder.h"

namespace codec {

void EpochBuilder::Reset()
{
    m_cycle.Reset();
    m_told = {};
    m_discardedKey = kNoTime;
    m_messages.Clear();
    m_satellites.Reset();
    m_fix.Reset();
    BeginEpoch();
}

void EpochBuilder::BeginEpoch()
{
    m_emitted = false;
    m_ignore = false;
    m_gsaSeen = false;
    m_fix.BeginEpoch();
}

void EpochBuilder::Finish()
{
    // After its position has gone out a cycle may have had satellite lists that wait for the next one.
    if (m_emitted) {
        m_fix.ForgetPosition();
    }
    Emit();
    m_cycle.Reset();
    BeginEpoch();
}

void EpochBuilder::Restart()
{
    if (m_cycle.Open()) {
        m_discardedKey = m_cycle.Key();
        m_ignore = true;
    }
    m_fix.Restart();
}

void EpochBuilder::Take(const char* text, std::size_t length)
{
    const SentenceHead head = ReadHead(text, length);
    switch (head.type) {
    case SentenceType::Gga:
    case SentenceType::Rmc:
    case SentenceType::Gll:
    case SentenceType::Gns:
        TakePosition(head);
        break;
    case SentenceType::Zda:
        TakeZda(head);
        break;
    case SentenceType::Vtg:
        TakeVtg(head);
        break;
    case SentenceType::Gsa:
        TakeGsa(head);
        break;
    case SentenceType::Gsv: {
        const GsvSentence gsv = ReadGsv({head.fields, head.end}, SystemOfTalker(head.talker[0], head.talker[1]));
        TakeGsv(head, gsv);
        break;
    }
    case SentenceType::Hdt:
    case SentenceType::Ths: {
        float heading = 0;
        const bool good = ReadHeading(head.type, {head.fields, head.end}, heading);
        EnterCycle(MakeSignature(head), false, kNoTime);
        if (good) {
            m_fix.TakeHeading(heading);
        }
        LeaveSentence();
        break;
    }
    case SentenceType::Other:
        break;
    }
}

void EpochBuilder::EnterCycle(SentenceSignature signature, bool timed, std::int64_t key, bool beginsGroup)
{
    if (m_cycle.Enter(signature, timed, key, beginsGroup)) {
        if (!m_emitted) {
            Emit();
        }
        BeginEpoch();
        // What is left of a discarded cycle may look like a new one of the same time.
        m_ignore = m_discardedKey != kNoTime && m_cycle.Key() == m_discardedKey;
        m_discardedKey = kNoTime;
    }
}

void EpochBuilder::LeaveSentence()
{
    if (m_cycle.AtEnd() && !m_emitted) {
        Emit();
    }
}

void EpochBuilder::TakePosition(const SentenceHead& head)
{
    const FieldReader fields(head.fields, head.end);
    PositionSentence sentence;
    protocol::MsgGga gga;
    protocol::MsgRmc rmc;
    protocol::MsgGll gll;
    switch (head.type) {
    case SentenceType::Gga:
        sentence = ReadGga(fields, gga);
        break;
    case SentenceType::Rmc:
        sentence = ReadRmc(fields, rmc);
        break;
    case SentenceType::Gll:
        sentence = ReadGll(fields, gll);
        break;
    default:
        sentence = ReadGns(fields);
        break;
    }
    EnterCycle(MakeSignature(head), true, sentence.time.key);
    if (head.type == SentenceType::Gga) {
        m_messages.Take(gga);
    } else if (head.type == SentenceType::Rmc) {
        m_messages.Take(rmc);
    } else if (head.type == SentenceType::Gll) {
        m_messages.Take(gll);
    }
    m_fix.Take(head.type, sentence, m_ignore);
    if (m_emitted && sentence.valid && !m_fix.SentValid()) {
        // The cycle went out without a fix, and here is one: it goes out once more.
        m_emitted = false;
    }
    LeaveSentence();
}

void EpochBuilder::TakeZda(const SentenceHead& head)
{
    protocol::MsgZda record;
    const ZdaSentence sentence = ReadZda({head.fields, head.end}, record);
    EnterCycle(MakeSignature(head), true, sentence.time.key);
    m_messages.Take(record);
    m_fix.Take(sentence);
    LeaveSentence();
}

void EpochBuilder::TakeVtg(const SentenceHead& head)
{
    protocol::MsgVtg record;
    const VtgSentence sentence = ReadVtg({head.fields, head.end}, record);
    EnterCycle(MakeSignature(head), false, kNoTime);
    m_messages.Take(record);
    m_fix.Take(sentence);
    LeaveSentence();
}

void EpochBuilder::TakeGsa(const SentenceHead& head)
{
    const TalkerSystem talker = SystemOfTalker(head.talker[0], head.talker[1]);
    const GsaSentence sentence = ReadGsa({head.fields, head.end}, talker);
    EnterCycle(MakeSignature(head) | static_cast<SentenceSignature>(sentence.systemId & 0xF), false, kNoTime);
    if (!m_gsaSeen) {
        m_gsaSeen = true;
        m_satellites.ClearUsed();
        m_messages.BeginGsa();
    }
    m_fix.Take(sentence);
    m_satellites.Take(sentence);
    // Without a system id a GN sentence belongs to the constellation of its satellites.
    System system = System::Gps;
    if (sentence.system) {
        system = *sentence.system;
    } else if (sentence.count > 0) {
        system = sentence.used[0].id.system;
    }
    m_messages.Take(sentence, MessageBlockOf(system));
    LeaveSentence();
}

void EpochBuilder::TakeGsv(const SentenceHead& head, const GsvSentence& gsv)
{
    EnterCycle(MakeGsvSignature(head, gsv), false, kNoTime, gsv.number <= 1);
    if (!m_satellites.Listed()) {
        m_satellites.BeginList();
        m_messages.BeginGsv();
    }
    const TalkerSystem talker = SystemOfTalker(head.talker[0], head.talker[1]);
    m_satellites.Take(gsv, talker);
    int number = MessageBlockOf(System::Gps);
    if (talker) {
        number = MessageBlockOf(*talker);
    } else if (gsv.count > 0) {
        number = MessageBlockOf(gsv.entry[0].id.system);
    }
    m_messages.Take(gsv, number);
    LeaveSentence();
}

void EpochBuilder::Emit()
{
    m_emitted = true;
    if (m_ignore) {
        m_messages.Clear();
        m_satellites.Forget();
        return;
    }
    if (m_messages.Empty() && !m_fix.HasPosition()) {
        return;
    }
    m_told.position = m_told.position || m_fix.HasPosition();
    m_told.satellites = m_told.satellites || m_satellites.Listed();
    RecordSink& sink = m_output.BeginRecords();
    if (m_fix.HasPosition()) {
        m_fix.Send(sink, m_fixes);
    }
    if (m_satellites.Listed()) {
        m_satellites.Send(sink);
    }
    m_messages.Send(sink);
}

} // namespace codec
