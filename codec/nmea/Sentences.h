// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"
#include "codec/nmea/Satellites.h"
#include "protocol/Records.h"

#include <cstddef>
#include <cstdint>

namespace codec {

/// The sentences that feed records. Everything else is text.
enum class SentenceType : std::uint8_t { Other, Gga, Rmc, Gll, Gns, Vtg, Zda, Gsa, Gsv, Hdt, Ths };

/// The address of a sentence and where its fields lie.
struct SentenceHead {
    SentenceType type = SentenceType::Other;
    char talker[2] = {0, 0};
    const char* fields = nullptr; ///< first byte of the first field
    const char* end = nullptr;    ///< the '*'
};

/// Reads the address of a checked sentence of `length` bytes from '$' to the checksum's last digit.
SentenceHead ReadHead(const char* text, std::size_t length);

constexpr std::int64_t kNoTime = -1;

/// UTC time of day. Second 60 is a leap second and stays one.
struct UtcTime {
    std::int64_t key = kNoTime; ///< the same for the same time and ascending within a day
    int hour = 0;
    int minute = 0;
    double second = 0;
    double raw = 0; ///< hhmmss.sss as a number

    bool Known() const { return key != kNoTime; }
    int SecondOfDay() const { return hour * 3600 + minute * 60 + static_cast<int>(second); }
};

struct CivilDate {
    int year = 0; ///< 0 = unknown
    int month = 0;
    int day = 0;

    bool Known() const { return year != 0; }
};

CivilDate NextDay(CivilDate date);

/// A coordinate pair, both in degrees and as it stands in the sentence.
struct SentencePosition {
    bool present = false; ///< both numbers and both letters are there and in range
    double latitude = 0;  ///< degrees, north positive
    double longitude = 0; ///< degrees, east positive
    double rawLatitude = 0;
    double rawLongitude = 0;
    char latDirection = 0;
    char lonDirection = 0;
};

/// What one GGA, RMC, GLL or GNS tells; a sentence leaves alone what it does not carry.
struct PositionSentence {
    UtcTime time;
    SentencePosition position;
    bool valid = false; ///< marked valid and with a position
    std::uint8_t fixMode = protocol::FixInvalid;
    bool hasAltitude = false;
    double altitude = 0; ///< metres above mean sea level
    bool hasHdop = false;
    float hdop = 0;
    bool hasSpeed = false;
    float knots = 0;
    bool hasCourse = false;
    float course = 0;
    CivilDate date;
};

// Each reads the fields behind the address and fills the record that shows the sentence.
PositionSentence ReadGga(FieldReader fields, protocol::MsgGga& record);
PositionSentence ReadRmc(FieldReader fields, protocol::MsgRmc& record);
PositionSentence ReadGll(FieldReader fields, protocol::MsgGll& record);
PositionSentence ReadGns(FieldReader fields);

struct VtgSentence {
    bool hasSpeed = false;
    float metresPerSecond = 0;
    bool hasCourse = false;
    float course = 0;
};
VtgSentence ReadVtg(FieldReader fields, protocol::MsgVtg& record);

struct ZdaSentence {
    UtcTime time;
    CivilDate date;
};
ZdaSentence ReadZda(FieldReader fields, protocol::MsgZda& record);

struct GsaSentence {
    char optMode = 0;
    std::uint8_t posMode = 0;
    int count = 0;
    struct Used {
        SatelliteId id;
        int number = 0;
    } used[protocol::kGsaPrns];
    bool hasPdop = false, hasHdop = false, hasVdop = false;
    float pdop = 0, hdop = 0, vdop = 0;
    TalkerSystem system;
    int systemId = 0;
};
GsaSentence ReadGsa(FieldReader fields, TalkerSystem talker);

struct GsvSentence {
    int total = 0;
    int number = 0;
    std::uint8_t signalId = 0; ///< as in the sentence; 0 when it has none
    int count = 0;
    struct Entry {
        SatelliteId id;
        int number = 0;
        bool hasDirection = false;
        std::uint8_t elevation = 0;
        std::uint16_t azimuth = 0;
        std::uint8_t cn0 = 0;
    } entry[5];
};
GsvSentence ReadGsv(FieldReader fields, TalkerSystem talker);

/// A true heading in degrees; false when the sentence carries none or marks it invalid.
bool ReadHeading(SentenceType type, FieldReader fields, float& heading);

constexpr double kMetresPerSecondPerKnot = 1852.0 / 3600.0;

} // namespace codec
