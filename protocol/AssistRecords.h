// SPDX-License-Identifier: MIT
#pragma once

// The records of time and place that the host injects, ids 1028, 513, 770 and 514: packed, little-endian. Free of
// Qt: the windows write them, the virtual receiver reads them.

#include "protocol/FieldList.h"

#include <array>
#include <cstdint>

namespace protocol {

/// Id 1028: UTC.
struct UtcTimeRecord {
    std::uint16_t year = 0;
    std::uint8_t month = 0; ///< 1 to 12
    std::uint8_t day = 0;
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    std::uint16_t millisecond = 0;
    std::uint8_t rest = 1;
};
constexpr auto kUtcTimeFields = Fields(&UtcTimeRecord::year, &UtcTimeRecord::month, &UtcTimeRecord::day,
                                       &UtcTimeRecord::hour, &UtcTimeRecord::minute, &UtcTimeRecord::second,
                                       Zeros<1>(), &UtcTimeRecord::millisecond, &UtcTimeRecord::rest, Zeros<1>());
static_assert(LengthOf(kUtcTimeFields) == 12 && LastOffset(kUtcTimeFields) == 11);

/// Id 513: GPS time without leap seconds.
struct ReferenceTimeRecord {
    std::uint16_t week = 0;       ///< low 10 bits of the GPS week
    std::uint32_t timeOfWeek = 0; ///< seconds
    std::array<std::uint32_t, 2> rest = {{83, 1}};
};
constexpr auto kReferenceTimeFields =
    Fields(&ReferenceTimeRecord::week, &ReferenceTimeRecord::timeOfWeek, &ReferenceTimeRecord::rest);
static_assert(LengthOf(kReferenceTimeFields) == 14 && LastOffset(kReferenceTimeFields) == 6);

constexpr std::uint32_t kGpsEpochSeconds = 315964800; ///< Unix seconds of 1980-01-06
constexpr std::uint32_t kSecondsPerWeek = 604800;
constexpr std::uint16_t kWeeksPerTurn = 1024; ///< what ten bits of the week count

// The units go with these very numbers: whole fractions of a circle come out whole only so.
constexpr double kLatitudeUnit = 1.87253514146196e-07;  ///< radians, pi / 2^24
constexpr double kLongitudeUnit = 3.74507028292392e-07; ///< radians, pi / 2^23

/// Id 770: a place with its signs apart.
struct ReferencePositionRecord {
    std::uint32_t latitude = 0; ///< magnitude in kLatitudeUnit
    std::int32_t longitude = 0; ///< in kLongitudeUnit
    std::uint32_t rest = 1;
    std::uint16_t altitude = 0;     ///< magnitude in metres, low 16 bits
    std::uint8_t southern = 0;      ///< 1 for a southern latitude
    std::uint8_t belowSeaLevel = 0; ///< 1 for a negative altitude
};
constexpr auto kReferencePositionFields =
    Fields(&ReferencePositionRecord::latitude, &ReferencePositionRecord::longitude, &ReferencePositionRecord::rest,
           &ReferencePositionRecord::altitude, &ReferencePositionRecord::southern,
           &ReferencePositionRecord::belowSeaLevel, Zeros<4>());
static_assert(LengthOf(kReferencePositionFields) == 20 && LastOffset(kReferencePositionFields) == 16);

/// Id 514: a place in degrees.
struct ScenePositionRecord {
    double longitude = 0.0;
    double latitude = 0.0;
    std::uint32_t rest = 10;
};
constexpr auto kScenePositionFields = Fields(&ScenePositionRecord::longitude, &ScenePositionRecord::latitude,
                                             &ScenePositionRecord::rest, Zeros<1>());
static_assert(LengthOf(kScenePositionFields) == 21 && LastOffset(kScenePositionFields) == 20);

} // namespace protocol
