// SPDX-License-Identifier: MIT
#include "codec/epoch/EpochFix.h"

namespace codec {

namespace {

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

void EpochFix::BeginEpoch()
{
    m_emittedValid = false;
    m_hasPosition = false;
    m_time = {};
    m_date = {};
    m_dateTrusted = false;
    m_valid = {};
    m_invalid = {};
    m_altitudeRank = 0;
    m_hdopRank = 0;
}

void EpochFix::Restart()
{
    m_lastFixKey = kNoTime;
    m_altitude = 0;
}

void EpochFix::NoteDate(const CivilDate& date, bool trusted)
{
    if (!date.Known()) {
        return;
    }
    // A sentence that is marked invalid may bear the date of a clock that was never set.
    if (trusted || !m_dateTrusted) {
        m_date = date;
        m_dateTrusted = m_dateTrusted || trusted;
    }
    if (m_emittedValid && trusted && m_time.Known()) {
        m_calendar.Trust(date, m_time.SecondOfDay());
    }
}

void EpochFix::Take(SentenceType type, const PositionSentence& sentence, bool ignored)
{
    m_hasPosition = true;
    if (sentence.time.Known() && !m_time.Known()) {
        m_time = sentence.time;
    }
    const int rank = RankOf(type);
    Candidate& candidate = sentence.valid ? m_valid : m_invalid;
    if (rank > candidate.rank) {
        candidate = {rank, sentence.position, sentence.fixMode};
    }
    if (sentence.hasAltitude && rank > m_altitudeRank && !ignored) {
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
}

void EpochFix::Take(const ZdaSentence& sentence)
{
    if (sentence.time.Known() && !m_time.Known()) {
        m_time = sentence.time;
    }
    NoteDate(sentence.date, true);
}

void EpochFix::Take(const VtgSentence& sentence)
{
    if (sentence.hasSpeed && !m_speedSeen) {
        m_speed = sentence.metresPerSecond;
    }
    if (sentence.hasCourse) {
        m_course = sentence.course;
    }
}

void EpochFix::Take(const GsaSentence& sentence)
{
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
}

void EpochFix::TakeHeading(float heading)
{
    m_trueHeadingSeen = true;
    m_trueHeading = heading;
}

void EpochFix::Send(RecordSink& sink, FixOutput& fixes)
{
    EmitPosition(sink, fixes);
    // What comes between this and the next position, without a time of its own, is the next one's.
    m_speedSeen = false;
    m_speed = 0;
    m_trueHeadingSeen = false;
}

void EpochFix::EmitPosition(RecordSink& sink, FixOutput& fixes)
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
    fixes.Send(sink, fix, chosen.position.present, m_trueHeadingSeen ? m_trueHeading : m_course);
}

} // namespace codec
