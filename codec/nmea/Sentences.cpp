// SPDX-License-Identifier: MIT
#include "codec/nmea/Sentences.h"

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

std::uint8_t ToByte(int value)
{
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

std::uint16_t ToWord(int value)
{
    return static_cast<std::uint16_t>(std::clamp(value, 0, 65535));
}

UtcTime ReadTime(FieldReader& fields)
{
    UtcTime time;
    std::size_t length = 0;
    const char* text = fields.Text(length);
    if (length < 6) {
        return time;
    }
    int digit[6];
    for (int i = 0; i < 6; ++i) {
        digit[i] = text[i] - '0';
        if (digit[i] < 0 || digit[i] > 9) {
            return time;
        }
    }
    std::int64_t nanos = 0;
    if (length > 6) {
        if (text[6] != '.') {
            return time;
        }
        std::int64_t unit = 100000000;
        for (std::size_t i = 7; i < length; ++i) {
            const int d = text[i] - '0';
            if (d < 0 || d > 9) {
                return time;
            }
            nanos += std::int64_t{d} * unit;
            unit /= 10;
        }
    }
    const int hour = digit[0] * 10 + digit[1];
    const int minute = digit[2] * 10 + digit[3];
    const int second = digit[4] * 10 + digit[5];
    if (hour > 23 || minute > 59 || second > 60) {
        return time;
    }
    constexpr std::int64_t nanosPerSecond = 1000000000;
    const std::int64_t secondNanos = second * nanosPerSecond + nanos;
    time.hour = hour;
    time.minute = minute;
    time.second = static_cast<double>(secondNanos) / static_cast<double>(nanosPerSecond);
    time.key = std::int64_t{hour * 100 + minute} * 100 * nanosPerSecond + secondNanos;
    time.raw = static_cast<double>(time.key) / static_cast<double>(nanosPerSecond);
    return time;
}

/// Degrees from ddmm.mmmm; the whole degrees are cut off in integers, so that nothing is lost.
double ToDegrees(const Decimal& number)
{
    std::int64_t scale = 100;
    for (int i = 0; i < number.decimals; ++i) {
        scale *= 10;
    }
    const std::int64_t degrees = number.mantissa / scale;
    const Decimal minutes{true, number.mantissa % scale, number.decimals};
    return static_cast<double>(degrees) + minutes.Value() / 60.0;
}

SentencePosition ReadPosition(FieldReader& fields)
{
    SentencePosition position;
    const Decimal latitude = fields.Number();
    position.latDirection = fields.Letter();
    const Decimal longitude = fields.Number();
    position.lonDirection = fields.Letter();
    position.rawLatitude = latitude.Value();
    position.rawLongitude = longitude.Value();
    const bool south = position.latDirection == 'S';
    const bool west = position.lonDirection == 'W';
    if (!latitude.present || !longitude.present || latitude.mantissa < 0 || longitude.mantissa < 0 ||
        !(south || position.latDirection == 'N') || !(west || position.lonDirection == 'E')) {
        return position;
    }
    position.latitude = ToDegrees(latitude);
    position.longitude = ToDegrees(longitude);
    position.present = position.latitude <= 90 && position.longitude <= 180;
    if (south) {
        position.latitude = -position.latitude;
    }
    if (west) {
        position.longitude = -position.longitude;
    }
    return position;
}

bool ReadFloat(FieldReader& fields, float& value)
{
    const Decimal number = fields.Number();
    if (number.present) {
        value = static_cast<float>(number.Value());
    }
    return number.present;
}

/// Fix mode of a mode letter; 'N' and letters that are not known give no fix.
std::uint8_t ModeOfLetter(char letter)
{
    switch (letter) {
    case 'A':
        return protocol::FixAutonomous;
    case 'D':
        return protocol::FixDifferential;
    case 'P':
        return protocol::FixPps;
    case 'R':
        return protocol::FixRtkFixed;
    case 'F':
        return protocol::FixRtkFloat;
    case 'E':
        return protocol::FixEstimated;
    case 'M':
        return protocol::FixManual;
    case 'S':
        return protocol::FixSimulated;
    default:
        return protocol::FixInvalid;
    }
}

int DaysInMonth(int year, int month)
{
    constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

CivilDate MakeDate(int year, int month, int day)
{
    if (year < 1980 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) {
        return {};
    }
    return {year, month, day};
}

std::uint32_t PackDate(const CivilDate& date)
{
    return static_cast<std::uint32_t>(date.day * 10000 + date.month * 100 + date.year % 100);
}

/// A date ddmmyy. Two digits of a year below 80 are in this century, since GPS time begins in 1980.
CivilDate ReadShortDate(FieldReader& fields, std::uint32_t& raw)
{
    std::size_t length = 0;
    FieldReader probe = fields;
    probe.Text(length);
    bool present = false;
    const int value = fields.Integer(present);
    if (!present || value < 0 || length != 6) {
        return {};
    }
    raw = static_cast<std::uint32_t>(value);
    const int year = value % 100;
    return MakeDate(year + (year < 80 ? 2000 : 1900), value / 100 % 100, value / 10000);
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

CivilDate NextDay(CivilDate date)
{
    if (++date.day > DaysInMonth(date.year, date.month)) {
        date.day = 1;
        if (++date.month > 12) {
            date.month = 1;
            ++date.year;
        }
    }
    return date;
}

PositionSentence ReadGga(FieldReader fields, protocol::MsgGga& record)
{
    PositionSentence result;
    record = {};
    result.time = ReadTime(fields);
    result.position = ReadPosition(fields);
    bool hasQuality = false;
    const int quality = fields.Integer(hasQuality);
    const int satellites = fields.Integer();
    result.hasHdop = ReadFloat(fields, result.hdop);
    const Decimal altitude = fields.Number();
    record.altitudeUnits = fields.Letter();
    result.valid = hasQuality && quality > protocol::FixInvalid && result.position.present;
    if (hasQuality && quality > protocol::FixInvalid) {
        result.fixMode = quality <= protocol::FixSimulated ? ToByte(quality)
                                                           : static_cast<std::uint8_t>(protocol::FixAutonomous);
    }
    result.hasAltitude = result.valid && altitude.present;
    result.altitude = altitude.Value();

    record.valid = 1;
    record.utcTime = result.time.raw;
    record.latitude = result.position.rawLatitude;
    record.latDirection = result.position.latDirection;
    record.longitude = result.position.rawLongitude;
    record.lonDirection = result.position.lonDirection;
    record.mode = ToByte(quality);
    record.svNumInUse = ToByte(satellites);
    record.hdop = result.hdop;
    record.altitude = result.altitude;
    return result;
}

PositionSentence ReadRmc(FieldReader fields, protocol::MsgRmc& record)
{
    PositionSentence result;
    record = {};
    result.time = ReadTime(fields);
    const char status = fields.Letter();
    result.position = ReadPosition(fields);
    result.hasSpeed = ReadFloat(fields, result.knots);
    result.hasCourse = ReadFloat(fields, result.course);
    result.date = ReadShortDate(fields, record.date);
    ReadFloat(fields, record.magDec);
    record.magDecDir = fields.Letter();
    record.mode = fields.Letter();
    // Before NMEA 2.3 there was no mode letter.
    const std::uint8_t mode =
        record.mode != 0 ? ModeOfLetter(record.mode) : static_cast<std::uint8_t>(protocol::FixAutonomous);
    if (status == 'A' && mode != protocol::FixInvalid) {
        result.fixMode = mode;
        result.valid = result.position.present;
    }

    record.valid = 1;
    record.utcTime = result.time.raw;
    record.posStatus = status;
    record.latitude = result.position.rawLatitude;
    record.latDirection = result.position.latDirection;
    record.longitude = result.position.rawLongitude;
    record.lonDirection = result.position.lonDirection;
    record.knotSpd = result.knots;
    record.course = result.course;
    return result;
}

PositionSentence ReadGll(FieldReader fields, protocol::MsgGll& record)
{
    PositionSentence result;
    record = {};
    result.position = ReadPosition(fields);
    result.time = ReadTime(fields);
    record.status = fields.Letter();
    const char modeLetter = fields.Letter();
    const std::uint8_t mode =
        modeLetter != 0 ? ModeOfLetter(modeLetter) : static_cast<std::uint8_t>(protocol::FixAutonomous);
    if (record.status == 'A' && mode != protocol::FixInvalid) {
        result.fixMode = mode;
        result.valid = result.position.present;
    }

    record.valid = 1;
    record.latitude = result.position.rawLatitude;
    record.latDirection = result.position.latDirection;
    record.longitude = result.position.rawLongitude;
    record.lonDirection = result.position.lonDirection;
    record.utcTime = result.time.raw;
    return result;
}

PositionSentence ReadGns(FieldReader fields)
{
    PositionSentence result;
    result.time = ReadTime(fields);
    result.position = ReadPosition(fields);
    std::size_t length = 0;
    const char* modes = fields.Text(length);
    // One letter a constellation: the best of them is the fix's.
    constexpr char order[] = {'R', 'F', 'P', 'D', 'A', 'E', 'M', 'S'};
    for (const char letter : order) {
        if (std::find(modes, modes + length, letter) != modes + length) {
            result.fixMode = ModeOfLetter(letter);
            break;
        }
    }
    fields.Skip();
    result.hasHdop = ReadFloat(fields, result.hdop);
    const Decimal altitude = fields.Number();
    result.valid = result.fixMode != protocol::FixInvalid && result.position.present;
    result.hasAltitude = result.valid && altitude.present;
    result.altitude = altitude.Value();
    return result;
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

GsaSentence ReadGsa(FieldReader fields, TalkerSystem talker)
{
    GsaSentence result;
    result.optMode = fields.Letter();
    result.posMode = ToByte(fields.Integer());
    FieldReader numbers = fields;
    fields.Skip(static_cast<int>(protocol::kGsaPrns));
    result.hasPdop = ReadFloat(fields, result.pdop);
    result.hasHdop = ReadFloat(fields, result.hdop);
    result.hasVdop = ReadFloat(fields, result.vdop);
    bool hasSystem = false;
    const int systemId = fields.Integer(hasSystem);
    result.system = hasSystem && SystemOfId(systemId) ? SystemOfId(systemId) : talker;
    result.systemId = hasSystem ? systemId : 0;
    for (std::size_t i = 0; i < protocol::kGsaPrns; ++i) {
        bool present = false;
        const int number = numbers.Integer(present);
        const SatelliteId id = present ? IdentifySatellite(result.system, number) : SatelliteId{};
        if (id.svid != 0) {
            result.used[result.count++] = {id, number};
        }
    }
    return result;
}

GsvSentence ReadGsv(FieldReader fields, TalkerSystem talker)
{
    GsvSentence result;
    result.total = fields.Integer();
    result.number = fields.Integer();
    fields.Skip();
    const int left = fields.Count();
    const int entries = std::min(left / 4, 5);
    for (int i = 0; i < entries; ++i) {
        GsvSentence::Entry& entry = result.entry[result.count];
        bool hasNumber = false;
        bool hasElevation = false;
        bool hasAzimuth = false;
        entry.number = fields.Integer(hasNumber);
        const int elevation = fields.Integer(hasElevation);
        const int azimuth = fields.Integer(hasAzimuth);
        const int cn0 = fields.Integer();
        if (!hasNumber) {
            continue;
        }
        entry.id = IdentifySatellite(talker, entry.number);
        if (entry.id.svid == 0) {
            continue;
        }
        entry.hasDirection = hasElevation && hasAzimuth;
        entry.elevation = static_cast<std::uint8_t>(std::clamp(elevation, 0, 90));
        entry.azimuth = ToWord(azimuth >= 0 ? azimuth % 360 : 0);
        entry.cn0 = static_cast<std::uint8_t>(std::clamp(cn0, 0, 99));
        ++result.count;
    }
    fields.Skip((left / 4 - entries) * 4);
    if (left % 4 == 1) {
        const char letter = fields.Letter();
        if (letter >= '0' && letter <= '9') {
            result.signalId = static_cast<std::uint8_t>(letter - '0');
        } else if (letter >= 'A' && letter <= 'F') {
            result.signalId = static_cast<std::uint8_t>(letter - 'A' + 10);
        }
    }
    return result;
}

bool ReadHeading(SentenceType type, FieldReader fields, float& heading)
{
    const bool present = ReadFloat(fields, heading);
    const char letter = fields.Letter();
    return present && (type == SentenceType::Hdt || letter != 'V');
}

} // namespace codec
