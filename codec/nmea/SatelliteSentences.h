// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"
#include "codec/nmea/Satellites.h"
#include "protocol/Records.h"

#include <cstdint>

namespace codec {

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

} // namespace codec
