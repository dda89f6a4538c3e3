// SPDX-License-Identifier: MIT
#pragma once

// Byte images of the records that cross the codec boundary: little-endian, natural alignment unless a
// record says otherwise, no version field. Free of Qt: the codec, the virtual receiver and the views share it.
// Eight-bit numbers are std::uint8_t, letters are char: the views print the first as numbers and the second
// as letters.

#include "protocol/Constellations.h"
#include "protocol/FieldList.h"

#include <cstddef>
#include <cstdint>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the record images are little-endian");

namespace protocol {

/// Fix modes of FixRecord, PositionRecord and CompassRecord (the numbers of NMEA's GGA quality field).
enum FixMode : std::uint8_t {
    FixInvalid = 0,
    FixAutonomous = 1,
    FixDifferential = 2,
    FixPps = 3,
    FixRtkFixed = 4,
    FixRtkFloat = 5,
    FixEstimated = 6,
    FixManual = 7,
    FixSimulated = 8,
};

// --- callback 0 -------------------------------------------------------------------------------------------

constexpr std::size_t kNmeaSlots = 32;
constexpr std::size_t kNmeaSlotSize = 128;

/// Up to 32 sentences, each NUL-terminated in its slot, with the line end as received.
struct NmeaText {
    char slot[kNmeaSlots][kNmeaSlotSize];
    std::uint8_t count; ///< slots in use, 0 to 32
};
static_assert(sizeof(NmeaText) == 4097 && offsetof(NmeaText, count) == 4096);

// --- callback 3 -------------------------------------------------------------------------------------------

enum PackageDirection : std::uint8_t { PackageReceived = 0, PackageSent = 1 };

/// One frame that crossed the link.
struct PackageRecord {
    std::uint8_t type;      ///< frame class
    std::uint8_t direction; ///< PackageReceived, otherwise sent
    std::uint16_t subType;  ///< command or report id
    std::uint16_t length;   ///< payload length in bytes
};
static_assert(sizeof(PackageRecord) == 6 && offsetof(PackageRecord, length) == 4);

// --- callback 100: one u8 count, then the entries from byte 1 on, unaligned ---------------------------------

#pragma pack(push, 1)
struct Cn0Entry {
    char constellation;
    std::uint8_t svid;
    std::uint8_t cn0;       ///< dB-Hz; 0 = not tracked
    std::uint8_t inuseFlag; ///< non-zero: used in the fix
    float carrierFreq;      ///< MHz
};

template <std::size_t Capacity> struct Cn0RecordOf {
    std::uint8_t count;
    Cn0Entry entry[Capacity];
};
using Cn0Record = Cn0RecordOf<255>; ///< the largest; a record on the boundary ends with its last entry
#pragma pack(pop)
static_assert(sizeof(Cn0Entry) == 8 && offsetof(Cn0Entry, carrierFreq) == 4 && offsetof(Cn0Record, entry) == 1);

// --- callback 101 -----------------------------------------------------------------------------------------

struct PositionRecord {
    double latitude;  ///< degrees, north positive
    double longitude; ///< degrees, east positive
    double altitude;  ///< metres; no view reads it
    std::uint8_t fixMode;
};
static_assert(sizeof(PositionRecord) == 32 && offsetof(PositionRecord, fixMode) == 24);
/// It may come without its tail padding.
constexpr std::size_t kPositionRecordMinSize = offsetof(PositionRecord, fixMode) + sizeof(PositionRecord::fixMode);

// --- callback 102: u8 count, one unread byte, then the entries ---------------------------------------------

struct SatPosEntry {
    char constellation;
    std::uint8_t svid;
    std::uint8_t elevation; ///< degrees, 0 to 90
    std::uint8_t reserved;
    std::uint16_t azimuth;  ///< degrees clockwise from north, 0 to 359
    std::uint8_t inuseFlag; ///< non-zero: used in the fix
    std::uint8_t cn0;       ///< dB-Hz; 0 = not tracked
};

template <std::size_t Capacity> struct SatPosRecordOf {
    std::uint8_t count;
    std::uint8_t reserved;
    SatPosEntry entry[Capacity];
};
using SatPosRecord = SatPosRecordOf<255>;
static_assert(sizeof(SatPosEntry) == 8 && offsetof(SatPosEntry, cn0) == 7 && offsetof(SatPosRecord, entry) == 2);

// --- callback 103 -----------------------------------------------------------------------------------------

struct CompassRecord {
    float heading; ///< degrees clockwise from north
    std::uint8_t fixMode;
};
static_assert(sizeof(CompassRecord) == 8 && offsetof(CompassRecord, fixMode) == 4);
/// It may come without its tail padding.
constexpr std::size_t kCompassRecordMinSize = offsetof(CompassRecord, fixMode) + sizeof(CompassRecord::fixMode);

// --- callbacks 200 and 600 --------------------------------------------------------------------------------

struct FixRecord {
    double longitude; ///< degrees, west negative
    double latitude;  ///< degrees, south negative
    double altitude;  ///< metres above mean sea level
    std::uint32_t year;
    std::uint32_t month; ///< 1 to 12
    std::uint32_t day;
    std::uint32_t hour;
    std::uint32_t minute;
    std::uint32_t padding;
    double second; ///< UTC second with fraction
    std::uint8_t fixMode;
    std::uint8_t padding2[3];
    float speed;   ///< ground speed, m/s
    float heading; ///< degrees
    float pdop;
    float hdop;
    float vdop;
};
static_assert(sizeof(FixRecord) == 80 && offsetof(FixRecord, second) == 48 && offsetof(FixRecord, speed) == 60 &&
              offsetof(FixRecord, vdop) == 76);

struct KpiFixRecord {
    double longitude;
    double latitude;
    double altitude;
    std::uint32_t year;
    std::uint32_t month;
    std::uint32_t day;
    std::uint32_t hour;
    std::uint32_t minute;
    std::uint32_t padding;
    double second;
    float speed;   ///< m/s
    float heading; ///< degrees
};
static_assert(sizeof(KpiFixRecord) == 64 && offsetof(KpiFixRecord, speed) == 56 &&
              offsetof(KpiFixRecord, heading) == 60);

// --- callback 601: u8 count, then the entries from byte 1 on ------------------------------------------------

struct KpiCn0Entry {
    char constellation;
    std::uint8_t group;
    std::uint8_t inuseFlag; ///< 1: counts as used
    std::uint8_t cn0;       ///< dB-Hz
};

template <std::size_t Capacity> struct KpiCn0RecordOf {
    std::uint8_t count;
    KpiCn0Entry entry[Capacity];
};
using KpiCn0Record = KpiCn0RecordOf<255>;
static_assert(sizeof(KpiCn0Entry) == 4 && offsetof(KpiCn0Entry, cn0) == 3 && offsetof(KpiCn0Record, entry) == 1);

// --- callback 400 -----------------------------------------------------------------------------------------

struct CbRecvAckType {
    std::uint16_t commandId;
    std::uint16_t status; ///< an AckStatus
};
static_assert(sizeof(CbRecvAckType) == 4 && offsetof(CbRecvAckType, status) == 2);

/// The payload of RptAck.
constexpr auto kAckFields = Fields(&CbRecvAckType::commandId, &CbRecvAckType::status);
static_assert(LengthOf(kAckFields) == 4 && LastOffset(kAckFields) == 2);

} // namespace protocol

#include "protocol/MessageRecords.h"
