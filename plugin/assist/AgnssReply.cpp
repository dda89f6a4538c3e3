// SPDX-License-Identifier: MIT
#include "assist/AgnssReply.h"

#include "protocol/AgnssTags.h"

#include <QCoreApplication>

namespace {

constexpr quint32 headerSize = 4;
constexpr quint32 recordOverhead = headerSize + 1;

/// Translation context of the item names.
class AgnssReply {
    Q_DECLARE_TR_FUNCTIONS(AgnssReply)
};

using protocol::Constellation;
using protocol::TagOf;

struct AgnssWords {
    quint16 tag;
    const char* name;
    const char* encodeDebug;
};

// Some of the debug texts name another item; they are known by that name.
constexpr AgnssWords agnssWords[] = {
    {TagOf(Constellation::Gps, protocol::AgnssRtc), "GPS RTC", "agnss gps ref time retLen err: "},
    {TagOf(Constellation::Gps, protocol::AgnssEph), "GPS EPH", "agnss gps eph retLen err: "},
    {TagOf(Constellation::Gps, protocol::AgnssUtc), "GPS UTC", "agnss gps UTC retLen err: "},
    {TagOf(Constellation::Gps, protocol::AgnssIon), "GPS ION", "agnss gps ion retLen err: "},
    {TagOf(Constellation::Gps, protocol::AgnssRti), "GPS RTI", "agnss gps rti retLen err: "},
    {TagOf(Constellation::Gps, protocol::AgnssAux), "GPS AUX", "ref time retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssRtc), QT_TRANSLATE_NOOP("AgnssReply", "GLO 预测时间"),
     "agnss ganss ref time retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssEph), QT_TRANSLATE_NOOP("AgnssReply", "GLO 星历"),
     "agnss ganss eph retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssUtc), QT_TRANSLATE_NOOP("AgnssReply", "GLO UTC时间"),
     "ref time retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssIon), "GLO ION", "agnss ganss ion retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssRti), "GLO RTI", "agnss ganss rti retLen err: "},
    {TagOf(Constellation::Glonass, protocol::AgnssAux), "GLO AUX", "agnss ganss auxi retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssRtc), QT_TRANSLATE_NOOP("AgnssReply", "BDS 预测时间"),
     "agnss ganss ref time retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssEph), QT_TRANSLATE_NOOP("AgnssReply", "BDS 星历"),
     "agnss ganss eph retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssUtc), QT_TRANSLATE_NOOP("AgnssReply", "BDS UTC时间"),
     "ref time retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssIon), "BDS ION", "agnss ganss ion retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssRti), "BDS RTI", "agnss ganss rti retLen err: "},
    {TagOf(Constellation::Beidou, protocol::AgnssAux), "BDS AUX", "agnss ganss auxi retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssRtc), QT_TRANSLATE_NOOP("AgnssReply", "GAL 预测时间"),
     "agnss ganss ref time retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssEph), QT_TRANSLATE_NOOP("AgnssReply", "GAL 星历"),
     "agnss ganss eph retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssUtc), QT_TRANSLATE_NOOP("AgnssReply", "GAL UTC时间"),
     "ref time retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssIon), "GAL ION", "agnss ganss ion retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssRti), "GAL RTI", "agnss ganss rti retLen err: "},
    {TagOf(Constellation::Galileo, protocol::AgnssAux), "GAL AUX", "agnss ganss auxi retLen err: "},
};

constexpr bool EachTagHasItsWords()
{
    std::size_t row = 0;
    for (const protocol::AgnssTag& tag : protocol::kAgnssTags) {
        if (agnssWords[row++].tag != tag.tag) {
            return false;
        }
    }
    return row == sizeof(agnssWords) / sizeof(agnssWords[0]);
}
static_assert(EachTagHasItsWords());

QString TimeoutText(const QString& name)
{
    return AgnssReply::tr("AGNSS注入%1 ACK超时").arg(name);
}

} // namespace

quint8 AgnssChecksum(const quint8* record, quint16 payloadLength)
{
    const auto count = static_cast<quint16>(payloadLength + headerSize);
    quint8 sum = 0;
    for (quint16 i = 0; i < count; ++i) {
        sum = static_cast<quint8>(sum + record[i]);
    }
    return sum;
}

AgnssWalk::Step AgnssWalk::Next(AgnssRecord& record)
{
    const auto left = static_cast<quint32>(m_body.size() - m_offset);
    if (left < recordOverhead) {
        return Step::End;
    }
    const auto* bytes = reinterpret_cast<const quint8*>(m_body.constData()) + m_offset;
    const quint16 length = protocol::ReadU16(bytes + 2);
    const quint32 size = length + recordOverhead;
    if (left < size || AgnssChecksum(bytes, length) != bytes[size - 1]) {
        return Step::Broken;
    }
    record.tag = protocol::ReadU16(bytes);
    record.payload = m_body.mid(m_offset + static_cast<int>(headerSize), length);
    m_offset += static_cast<int>(size);
    return Step::Record;
}

InjectOutcome InjectAgnssRecord(const Injector& injector, const AgnssRecord& record)
{
    const protocol::AgnssTag* tag = protocol::FindAgnssTag(record.tag);
    if (tag == nullptr) {
        return injector.RunEmpty(TimeoutText(QString()));
    }
    const AgnssWords& words = agnssWords[tag - protocol::kAgnssTags];
    InjectItem item;
    item.commandId = tag->commandId;
    item.payload = record.payload;
    item.column = tag->column;
    item.encodeDebug = words.encodeDebug;
    item.timeoutStatus = TimeoutText(AgnssReply::tr(words.name));
    // Only the GPS items are counted by what the codec accepts; it is meant so.
    item.countBeforeEncoding = tag->tag >= TagOf(Constellation::Glonass, protocol::AgnssRtc);
    return injector.Run(item);
}
