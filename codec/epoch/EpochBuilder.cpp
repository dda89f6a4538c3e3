// SPDX-License-Identifier: MIT
#include "codec/epoch/EpochBuilder.h"

#include <algorithm>
#include <cstring>

namespace codec {

namespace {

constexpr unsigned Bit(protocol::MessageType type)
{
    return 1U << type;
}

/// How much a sentence's position and altitude weigh against another's of the same cycle.
int RankOf(SentenceType type)
{
    switch (type) {
    case SentenceType::Gga:
        return 4;
    case SentenceType::Gns:
        return 3;
    case SentenceType::Rmc:
        return 2;
    case SentenceType::Gll:
        return 1;
    default:
        return 0;
    }
}

} // namespace

void EpochBuilder::Reset()
{
    m_cycle.Reset();
    m_calendar.Reset();
    m_told = {};
    m_altitude = 0;
    m_course = 0;
    m_hdop = 0;
    m_pdop = 0;
    m_vdop = 0;
    m_messages = 0;
    m_gsvSeen = false;
    m_speedSeen = false;
    m_speed = 0;
    m_trueHeadingSeen = false;
    m_discardedKey = kNoTime;
    m_lastFixKey = kNoTime;
    m_used.Clear();
    m_lists[0].Clear();
    m_lists[1].Clear();
    BeginEpoch();
}

void EpochBuilder::BeginEpoch()
{
    m_emitted = false;
    m_emittedValid = false;
    m_ignore = false;
    m_hasPosition = false;
    m_time = {};
    m_date = {};
    m_dateTrusted = false;
    m_valid = {};
    m_invalid = {};
    m_altitudeRank = 0;
    m_hdopRank = 0;
    m_gsaSeen = false;
}

void EpochBuilder::Finish()
{
    // After its position has gone out a cycle may have had satellite lists that wait for the next one.
    m_hasPosition = m_hasPosition && !m_emitted;
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
    m_lastFixKey = kNoTime;
    m_altitude = 0;
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
            m_trueHeadingSeen = true;
            m_trueHeading = heading;
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

void EpochBuilder::NoteDate(const CivilDate& date, bool trusted)
{
    if (!date.Known()) {
        return;
    }
    // A sentence that is marked invalid may bear the date of a clock that was never set.
    if (trusted || !m_dateTrusted) {
        m_date = date;
        m_dateTrusted = m_dateTrusted || trusted;
    }
    if (m_emitted && m_emittedValid && trusted && m_time.Known()) {
        m_calendar.Trust(date, m_time.SecondOfDay());
    }
}

void EpochBuilder::TakePosition(const SentenceHead& head)
{
    const FieldReader fields(head.fields, head.end);
    PositionSentence sentence;
    unsigned message = 0;
    protocol::MsgGga gga;
    protocol::MsgRmc rmc;
    protocol::MsgGll gll;
    switch (head.type) {
    case SentenceType::Gga:
        sentence = ReadGga(fields, gga);
        message = Bit(protocol::MsgTypeGga);
        break;
    case SentenceType::Rmc:
        sentence = ReadRmc(fields, rmc);
        message = Bit(protocol::MsgTypeRmc);
        break;
    case SentenceType::Gll:
        sentence = ReadGll(fields, gll);
        message = Bit(protocol::MsgTypeGll);
        break;
    default:
        sentence = ReadGns(fields);
        break;
    }
    EnterCycle(MakeSignature(head), true, sentence.time.key);
    m_messages |= message;
    if (message == Bit(protocol::MsgTypeGga)) {
        m_gga = gga;
    } else if (message == Bit(protocol::MsgTypeRmc)) {
        m_rmc = rmc;
    } else if (message == Bit(protocol::MsgTypeGll)) {
        m_gll = gll;
    }

    m_hasPosition = true;
    if (sentence.time.Known() && !m_time.Known()) {
        m_time = sentence.time;
    }
    const int rank = RankOf(head.type);
    Candidate& candidate = sentence.valid ? m_valid : m_invalid;
    if (rank > candidate.rank) {
        candidate = {rank, sentence.position, sentence.fixMode};
    }
    if (sentence.hasAltitude && rank > m_altitudeRank && !m_ignore) {
        m_altitudeRank = rank;
        m_altitude = sentence.altitude;
    }
    if (sentence.hasHdop && rank > m_hdopRank) {
        m_hdopRank = rank;
        m_hdop = sentence.hdop;
    }
    if (sentence.hasSpeed) {
        m_speedSeen = true;
        m_speed = static_cast<float>(sentence.knots * kMetresPerSecondPerKnot);
    }
    if (sentence.hasCourse) {
        m_course = sentence.course;
    }
    NoteDate(sentence.date, sentence.valid);
    if (m_emitted && sentence.valid && !m_emittedValid) {
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
    m_zda = record;
    m_messages |= Bit(protocol::MsgTypeZda);
    if (sentence.time.Known() && !m_time.Known()) {
        m_time = sentence.time;
    }
    NoteDate(sentence.date, true);
    LeaveSentence();
}

void EpochBuilder::TakeVtg(const SentenceHead& head)
{
    protocol::MsgVtg record;
    const VtgSentence sentence = ReadVtg({head.fields, head.end}, record);
    EnterCycle(MakeSignature(head), false, kNoTime);
    m_vtg = record;
    m_messages |= Bit(protocol::MsgTypeVtg);
    if (sentence.hasSpeed && !m_speedSeen) {
        m_speed = sentence.metresPerSecond;
    }
    if (sentence.hasCourse) {
        m_course = sentence.course;
    }
    LeaveSentence();
}

void EpochBuilder::TakeGsa(const SentenceHead& head)
{
    const TalkerSystem talker = SystemOfTalker(head.talker[0], head.talker[1]);
    const GsaSentence sentence = ReadGsa({head.fields, head.end}, talker);
    EnterCycle(MakeSignature(head) | static_cast<SentenceSignature>(sentence.systemId & 0xF), false, kNoTime);
    if (!m_gsaSeen) {
        m_gsaSeen = true;
        m_used.Clear();
        m_gsa = {};
    }
    m_messages |= Bit(protocol::MsgTypeGsa);
    const bool noFix = sentence.posMode <= 1;
    if (sentence.hasPdop || noFix) {
        m_pdop = sentence.pdop;
    }
    if ((sentence.hasHdop || noFix) && m_hdopRank == 0) {
        m_hdop = sentence.hdop;
    }
    if (sentence.hasVdop || noFix) {
        m_vdop = sentence.vdop;
    }
    // Without a system id a GN sentence belongs to the constellation of its satellites.
    System system = System::Gps;
    if (sentence.system) {
        system = *sentence.system;
    } else if (sentence.count > 0) {
        system = sentence.used[0].id.system;
    }
    const int number = MessageBlockOf(system);
    for (int i = 0; i < sentence.count; ++i) {
        m_used.Add(sentence.used[i].id);
    }
    if (number >= 0) {
        protocol::GsaBlock& block = m_gsa.block[number];
        block.valid = 1;
        block.optMode = sentence.optMode;
        block.posMode = sentence.posMode;
        block.pdop = sentence.pdop;
        block.hdop = sentence.hdop;
        block.vdop = sentence.vdop;
        for (int i = 0; i < sentence.count; ++i) {
            const GsaSentence::Used& used = sentence.used[i];
            const std::uint8_t prn = used.number <= 255 ? static_cast<std::uint8_t>(used.number) : used.id.svid;
            const std::uint8_t* last = block.prn + block.validPrnNum;
            if (block.validPrnNum < protocol::kGsaPrns &&
                std::find<const std::uint8_t*>(block.prn, last, prn) == last) {
                block.prn[block.validPrnNum++] = prn;
            }
        }
    }
    LeaveSentence();
}

void EpochBuilder::TakeGsv(const SentenceHead& head, const GsvSentence& gsv)
{
    EnterCycle(MakeGsvSignature(head, gsv), false, kNoTime, gsv.number <= 1);
    if (!m_gsvSeen) {
        m_gsvSeen = true;
        m_current = 1 - m_current;
        m_lists[m_current].Clear();
        m_gsv = {};
    }
    m_messages |= Bit(protocol::MsgTypeGsv);
    SatelliteList& list = m_lists[m_current];
    list.Add(gsv);
    const TalkerSystem talker = SystemOfTalker(head.talker[0], head.talker[1]);
    int number = MessageBlockOf(System::Gps);
    if (talker) {
        list.MarkSystem(*talker);
        number = MessageBlockOf(*talker);
    } else if (gsv.count > 0) {
        number = MessageBlockOf(gsv.entry[0].id.system);
    }
    if (number >= 0) {
        protocol::GsvBlock& block = m_gsv.block[number];
        block.gsvNum = static_cast<std::uint16_t>(std::clamp(gsv.total, 0, 65535));
        block.gsvNo = static_cast<std::uint16_t>(std::clamp(gsv.number, 0, 65535));
        for (int i = 0; i < gsv.count && block.satellitesNum < protocol::kGsvRows; ++i) {
            const GsvSentence::Entry& entry = gsv.entry[i];
            block.row[block.satellitesNum++] = {static_cast<std::uint16_t>(entry.number), entry.elevation,
                                                entry.azimuth, entry.cn0, gsv.signalId};
        }
    }
    LeaveSentence();
}

void EpochBuilder::Emit()
{
    m_emitted = true;
    if (m_ignore) {
        m_messages = 0;
        m_gsvSeen = false;
        return;
    }
    if (m_messages == 0 && !m_hasPosition) {
        return;
    }
    m_told.position = m_told.position || m_hasPosition;
    m_told.satellites = m_told.satellites || m_gsvSeen;
    RecordSink& sink = m_output.BeginRecords();
    if (m_hasPosition) {
        EmitPosition(sink);
        // What comes between this and the next position, without a time of its own, is the next one's.
        m_speedSeen = false;
        m_speed = 0;
        m_trueHeadingSeen = false;
    }
    if (m_gsvSeen) {
        EmitSatellites(sink);
    }
    EmitMessages(sink);
}

void EpochBuilder::EmitPosition(RecordSink& sink)
{
    const bool valid = m_valid.rank > 0;
    const Candidate& chosen = valid ? m_valid : m_invalid;
    m_emittedValid = valid;
    if (valid && m_time.Known() && m_time.key == m_lastFixKey && chosen.position.latitude == m_lastFixLatitude &&
        chosen.position.longitude == m_lastFixLongitude) {
        return; // the fix that went out before, told once more
    }
    if (!valid && m_time.Known() && m_time.key == m_lastFixKey) {
        return;
    }

    protocol::FixRecord fix{};
    if (chosen.position.present) {
        fix.longitude = chosen.position.longitude;
        fix.latitude = chosen.position.latitude;
    }
    fix.altitude = m_altitude;
    if (m_time.Known()) {
        const CivilDate date =
            m_date.Known() && (m_dateTrusted || !valid) ? m_date : m_calendar.DateAt(m_time.SecondOfDay());
        fix.year = static_cast<std::uint32_t>(date.year);
        fix.month = static_cast<std::uint32_t>(date.month);
        fix.day = static_cast<std::uint32_t>(date.day);
        fix.hour = static_cast<std::uint32_t>(m_time.hour);
        fix.minute = static_cast<std::uint32_t>(m_time.minute);
        fix.second = m_time.second;
        if (valid && date.Known()) {
            m_calendar.Trust(date, m_time.SecondOfDay());
        }
    }
    fix.fixMode = valid ? chosen.fixMode : static_cast<std::uint8_t>(protocol::FixInvalid);
    fix.speed = m_speed;
    fix.heading = m_course;
    fix.pdop = m_pdop;
    fix.hdop = m_hdop;
    fix.vdop = m_vdop;

    if (valid) {
        m_lastFixKey = m_time.key;
        m_lastFixLatitude = fix.latitude;
        m_lastFixLongitude = fix.longitude;
    }
    m_fixes.Send(sink, fix, chosen.position.present, m_trueHeadingSeen ? m_trueHeading : m_course);
}

void EpochBuilder::EmitSatellites(RecordSink& sink)
{
    m_gsvSeen = false;
    const SatelliteList* list = &m_lists[m_current];
    const SatelliteList& before = m_lists[1 - m_current];
    bool incomplete = false;
    for (const System system : kListOrder) {
        incomplete = incomplete || (before.HasSystem(system) && !list->HasSystem(system));
    }
    if (incomplete) {
        // A receiver may list its constellations in turns, or its cycle may have been taken to end too early:
        // a constellation stays for one list more.
        m_joined = *list;
        for (const System system : kListOrder) {
            if (before.HasSystem(system) && !list->HasSystem(system)) {
                m_joined.AddSystem(before, system);
            }
        }
        list = &m_joined;
    }
    protocol::Cn0Record cn0;
    list->Fill(cn0, m_used);
    sink.OnCn0(cn0);
    protocol::SatPosRecord satPos;
    list->Fill(satPos, m_used);
    sink.OnSatPos(satPos);
    protocol::KpiCn0Record kpi;
    list->Fill(kpi, m_used);
    sink.OnKpiCn0(kpi);
}

template <typename Message>
void EpochBuilder::EmitMessage(RecordSink& sink, std::uint32_t msgType, const Message& message)
{
    if ((m_messages >> msgType & 1) == 0) {
        return;
    }
    std::uint8_t record[protocol::kMessageHeaderSize + sizeof(Message)];
    std::memcpy(record, &msgType, sizeof msgType);
    std::memcpy(record + protocol::kMessageHeaderSize, &message, sizeof message);
    sink.OnMessage(msgType, record, sizeof message);
}

void EpochBuilder::EmitMessages(RecordSink& sink)
{
    EmitMessage(sink, protocol::MsgTypeGga, m_gga);
    EmitMessage(sink, protocol::MsgTypeRmc, m_rmc);
    EmitMessage(sink, protocol::MsgTypeGsv, m_gsv);
    EmitMessage(sink, protocol::MsgTypeGsa, m_gsa);
    EmitMessage(sink, protocol::MsgTypeGll, m_gll);
    EmitMessage(sink, protocol::MsgTypeVtg, m_vtg);
    EmitMessage(sink, protocol::MsgTypeZda, m_zda);
    m_messages = 0;
}

} // namespace codec
