// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"
#include "codec/nmea/TimeFields.h"
#include "protocol/Records.h"

#include <cstdint>

namespace codec {

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

} // namespace codec
