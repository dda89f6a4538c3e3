// SPDX-License-Identifier: MIT
#include "codec/nmea/Sentences.h"

#include "codec/nmea/FieldValues.h"

#include <algorithm>

namespace codec {

namespace {

constexpr std::uint32_t Code(char a, char b, char c)
{
    return static_cast<std::uint32_t>(static_cast<unsigned char>(a)) << 16 |
           static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 8 | static_cast<unsigned char>(c);
}

SentenceType TypeOf(char a, char b, char c)
{
    switch (Code(a, b, c)) {
    case Code('G', 'G', 'A'):
        return SentenceType::Gga;
    case Code('R', 'M', 'C'):
        return SentenceType::Rmc;
    case Code('G', 'L', 'L'):
        return SentenceType::Gll;
    case Code('G', 'N', 'S'):
        return SentenceType::Gns;
    case Code('V', 'T', 'G'):
        return SentenceType::Vtg;
    case Code('Z', 'D', 'A'):
        return SentenceType::Zda;
    case Code('G', 'S', 'A'):
        return SentenceType::Gsa;
    case Code('G', 'S', 'V'):
        return SentenceType::Gsv;
    case Code('H', 'D', 'T'):
        return SentenceType::Hdt;
    case Code('T', 'H', 'S'):
        return SentenceType::Ths;
    default:
        return SentenceType::Other;
    }
}

std::uint32_t PackDate(const CivilDate& date)
{
    return static_cast<std::uint32_t>(date.day * 10000 + date.month * 100 + date.year % 100);
}

} // namespace

SentenceHead ReadHead(const char* text, std::size_t length)
{
    // '$', two letters of the talker, three of the type, ',' and later the '*' with two digits
    SentenceHead head;
    if (length < 10 || text[6] != ',' || text[1] == 'P') {
        return head;
    }
    head.type = TypeOf(text[3], text[4], text[5]);
    head.talker[0] = text[1];
    head.talker[1] = text[2];
    head.fields = text + 7;
    head.end = text + length - 3;
    return head;
}

VtgSentence ReadVtg(FieldReader fields, protocol::MsgVtg& record)
{
    VtgSentence result;
    record = {};
    result.hasCourse = ReadFloat(fields, result.course);
    fields.Skip();
    ReadFloat(fields, record.magCourse);
    fields.Skip();
    const Decimal knots = fields.Number();
    fields.Skip();
    const Decimal kilometres = fields.Number();
    fields.Skip();
    record.mode = fields.Letter();
    record.valid = 1;
    record.trueCourse = result.course;
    record.knotSpd = static_cast<float>(knots.Value());
    record.kmSpeed = static_cast<float>(kilometres.Value());
    if (record.mode == 'N') {
        return {};
    }
    result.hasSpeed = knots.present || kilometres.present;
    result.metresPerSecond =
        static_cast<float>(knots.present ? knots.Value() * kMetresPerSecondPerKnot : kilometres.Value() / 3.6);
    return result;
}

ZdaSentence ReadZda(FieldReader fields, protocol::MsgZda& record)
{
    ZdaSentence result;
    record = {};
    result.time = ReadTime(fields);
    const int day = fields.Integer();
    const int month = fields.Integer();
    const int year = fields.Integer();
    result.date = MakeDate(year, month, day);
    record.valid = 1;
    record.utcTime = result.time.raw;
    record.date = result.date.Known() ? PackDate(result.date) : 0;
    record.hourBias = static_cast<std::int8_t>(std::clamp(fields.Integer(), -128, 127));
    record.minBias = static_cast<std::int8_t>(std::clamp(fields.Integer(), -128, 127));
    return result;
}

bool ReadHeading(SentenceType type, FieldReader fields, float& heading)
{
    const bool present = ReadFloat(fields, heading);
    const char letter = fields.Letter();
    return present && (type == SentenceType::Hdt || letter != 'V');
}

} // namespace codec
