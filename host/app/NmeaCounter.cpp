// SPDX-License-Identifier: MIT
#include "host/app/NmeaCounter.h"

#include <QList>

namespace {

constexpr std::size_t kMaxLine = 512;

int HexDigit(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return -1;
}

/// Whether `line`, from behind the start character, ends in the checksum of what stands before it; cuts it off.
bool CutChecksum(std::string& line)
{
    const std::size_t star = line.rfind('*');
    if (star == std::string::npos || star + 3 != line.size()) {
        return false;
    }
    const int high = HexDigit(line[star + 1]);
    const int low = HexDigit(line[star + 2]);
    int sum = 0;
    for (std::size_t i = 0; i < star; ++i) {
        sum ^= static_cast<unsigned char>(line[i]);
    }
    line.resize(star);
    return high >= 0 && low >= 0 && sum == high * 16 + low;
}

/// "123519.00" and "123519" are one time.
QByteArray TimeKey(QByteArray time)
{
    if (time.contains('.')) {
        while (time.endsWith('0')) {
            time.chop(1);
        }
        if (time.endsWith('.')) {
            time.chop(1);
        }
    }
    return time;
}

bool IsValidFix(const QByteArray& type, const QList<QByteArray>& fields)
{
    const auto field = [&fields](int i) { return fields.value(i); };
    if (type == "GGA") {
        return !field(2).isEmpty() && !field(6).isEmpty() && field(6) != "0";
    }
    if (type == "RMC") {
        return !field(3).isEmpty() && field(2) == "A";
    }
    if (type == "GLL") {
        return !field(1).isEmpty() && field(6) == "A";
    }
    if (type == "GNS") {
        return !field(2).isEmpty() && !field(6).isEmpty() && field(6).count('N') != field(6).size();
    }
    return false;
}

} // namespace

void NmeaCounter::Feed(const char* bytes, qint64 length)
{
    m_bytes += length;
    for (qint64 i = 0; i < length; ++i) {
        TakeByte(bytes[i]);
    }
}

void NmeaCounter::TakeByte(char byte)
{
    if (byte == '$' || byte == '!') {
        m_line.clear();
        m_inLine = true;
    } else if (!m_inLine) {
        return;
    } else if (byte == '\r' || byte == '\n') {
        TakeLine();
        m_inLine = false;
    } else if (byte < ' ' || byte > '~' || m_line.size() >= kMaxLine) {
        m_inLine = false;
    } else {
        m_line += byte;
    }
}

void NmeaCounter::TakeLine()
{
    if (!CutChecksum(m_line)) {
        return;
    }
    ++m_sentences;
    TakeSentence(QByteArray::fromStdString(m_line).split(','));
}

void NmeaCounter::TakeSentence(const QList<QByteArray>& fields)
{
    const QByteArray& name = fields.constFirst();
    if (name.size() != 5) {
        return;
    }
    const QByteArray type = name.right(3);
    if (type == "GSV") {
        TakeGsv(fields);
    } else if (IsValidFix(type, fields)) {
        const QByteArray time = TimeKey(fields.value(type == "GLL" ? 5 : 1));
        if (!time.isEmpty()) {
            m_fixTimes.insert(time);
        }
    }
}

void NmeaCounter::TakeGsv(const QList<QByteArray>& fields)
{
    // Behind three numbers come groups of four; a single field behind the last group is the signal id.
    const QByteArray talker = fields.constFirst().left(2);
    const QByteArray signal = fields.size() % 4 == 1 ? fields.constLast() : QByteArray();
    QSet<QByteArray>& group = m_groups[talker + signal];
    if (fields.value(2) == "1") {
        group.clear();
    }
    for (int i = 4; i + 3 < fields.size(); i += 4) {
        if (!fields[i].isEmpty() && !fields[i + 1].isEmpty() && !fields[i + 2].isEmpty()) {
            group.insert(talker + fields[i]);
        }
    }
}

int NmeaCounter::Satellites() const
{
    QSet<QByteArray> all;
    for (const QSet<QByteArray>& group : m_groups) {
        all += group;
    }
    return all.size();
}
