// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"
#include "codec/nmea/PositionSentences.h"
#include "codec/nmea/SatelliteSentences.h"
#include "codec/nmea/TimeFields.h"
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

/// A true heading in degrees; false when the sentence carries none or marks it invalid.
bool ReadHeading(SentenceType type, FieldReader fields, float& heading);

constexpr double kMetresPerSecondPerKnot = 1852.0 / 3600.0;

} // namespace codec
