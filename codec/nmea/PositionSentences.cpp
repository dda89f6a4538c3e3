// SPDX-License-Identifier: MIT
#include "codec/nmea/PositionSentences.h"

#include "codec/nmea/FieldValues.h"

#include <algorithm>
#include <cstddef>

namespace codec {

namespace {

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

} // namespace

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

} // namespace codec
