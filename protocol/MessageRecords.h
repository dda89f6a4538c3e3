// SPDX-License-Identifier: MIT
#pragma once

// Payloads of MessageRecord (callback 300). A record is a u32 msgType, then from its fifth byte on one of
// these images; alignment counts from the payload's first byte, so inside the record the doubles are
// unaligned and must be copied out before they are read.

#include "protocol/Constellations.h"

#include <cstddef>
#include <cstdint>

namespace protocol {

enum MessageType : std::uint32_t {
    MsgTypeGga = 0,
    MsgTypeRmc = 1,
    MsgTypeGsv = 2,
    MsgTypeGsa = 3,
    MsgTypeGll = 4,
    MsgTypeVtg = 5,
    MsgTypeZda = 6,
    MsgTypeIgnored = 8,
    MsgTypeLoc = 100,
    MsgTypeMeas = 101,
    MsgTypePdrComm = 103,
    MsgTypePdrMeas = 104,
    MsgTypePdrLs = 105,
    MsgTypePpsSts = 106,
    MsgTypeFixMode = 107,
    MsgTypeNmeaMode = 108,
    MsgTypeTsensor = 109,
    MsgTypeFtmCn0 = 110,
};

constexpr std::size_t kMessageHeaderSize = sizeof(MessageType);
static_assert(kMessageHeaderSize == 4);

/// The GSV and GSA messages have a block for each constellation of kBlockOrder.
constexpr std::size_t kMessageBlocks = kBlockOrder.size();

// Coordinates keep the sentence's form ddmm.mmmm and dddmm.mmmm, times hhmmss.sss, dates ddmmyy.

struct MsgGga {
    std::uint8_t valid;
    double utcTime;
    double latitude;
    char latDirection;
    double longitude;
    char lonDirection;
    std::uint8_t mode; ///< fix quality
    std::uint8_t svNumInUse;
    float hdop;
    double altitude; ///< metres
    char altitudeUnits;
};
static_assert(sizeof(MsgGga) == 64 && offsetof(MsgGga, hdop) == 44 && offsetof(MsgGga, altitudeUnits) == 56);

struct MsgRmc {
    std::uint8_t valid;
    double utcTime;
    char posStatus;
    double latitude;
    char latDirection;
    double longitude;
    char lonDirection;
    float knotSpd;
    float course;       ///< degrees
    std::uint32_t date; ///< ddmmyy
    float magDec;       ///< degrees
    char magDecDir;
    char mode;
};
static_assert(sizeof(MsgRmc) == 72 && offsetof(MsgRmc, knotSpd) == 52 && offsetof(MsgRmc, mode) == 69);

struct MsgGll {
    std::uint8_t valid;
    double latitude;
    char latDirection;
    double longitude;
    char lonDirection;
    double utcTime;
    char status;
};
static_assert(sizeof(MsgGll) == 56 && offsetof(MsgGll, status) == 48);

struct MsgVtg {
    std::uint8_t valid;
    float trueCourse;
    float magCourse;
    float knotSpd;
    float kmSpeed;
    char mode;
};
static_assert(sizeof(MsgVtg) == 24 && offsetof(MsgVtg, mode) == 20);

struct MsgZda {
    std::uint8_t valid;
    double utcTime;
    std::uint32_t date;
    std::int8_t hourBias;
    std::int8_t minBias;
};
static_assert(sizeof(MsgZda) == 24 && offsetof(MsgZda, minBias) == 21);

constexpr std::size_t kGsvRows = 36;

struct GsvRow {
    std::uint16_t prn;
    std::uint16_t elev;
    std::uint16_t azim;
    std::uint16_t cn0;
    std::uint16_t freq; ///< NMEA signal id
};
static_assert(sizeof(GsvRow) == 10 && offsetof(GsvRow, freq) == 8);

struct GsvBlock {
    std::uint16_t gsvNum;        ///< sentences in the group
    std::uint16_t gsvNo;         ///< number of the last sentence taken
    std::uint16_t satellitesNum; ///< rows that count
    GsvRow row[kGsvRows];
};
static_assert(sizeof(GsvBlock) == 366 && offsetof(GsvBlock, row) == 6);

struct MsgGsv {
    std::uint16_t reserved;
    GsvBlock block[kMessageBlocks];
};
static_assert(sizeof(MsgGsv) == 1832 && offsetof(MsgGsv, block) == 2);

constexpr std::size_t kGsaPrns = 12;

struct GsaBlock {
    std::uint8_t valid;
    char optMode;
    std::uint8_t posMode;
    std::uint8_t validPrnNum;
    std::uint8_t prn[kGsaPrns];
    float pdop;
    float hdop;
    float vdop;
};
static_assert(sizeof(GsaBlock) == 28 && offsetof(GsaBlock, prn) == 4 && offsetof(GsaBlock, vdop) == 24);

struct MsgGsa {
    std::uint32_t reserved;
    GsaBlock block[kMessageBlocks];
};
static_assert(sizeof(MsgGsa) == 144 && offsetof(MsgGsa, block) == 4);

/// The chip's navigation solution.
struct MsgLoc {
    std::uint32_t validMask;
    std::uint32_t padding;
    std::uint64_t timestamp; ///< milliseconds since the GPS epoch, 1980-01-06
    double latitude;         ///< degrees
    double longitude;        ///< degrees
    double clkBias;          ///< metres
    double clkDrift;         ///< m/s
    double speede;           ///< m/s
    double speedn;
    double speedu;
    float altitude; ///< metres
    float heading;  ///< degrees
    float posAcc;   ///< metres
    float speedAcc; ///< m/s
};
static_assert(sizeof(MsgLoc) == 88 && offsetof(MsgLoc, altitude) == 72 && offsetof(MsgLoc, speedAcc) == 84);

constexpr std::size_t kMeasEntries = 50;

struct MeasEntry {
    std::uint8_t svid;
    std::uint8_t constellation;
    std::uint8_t cn0;
    std::uint8_t inuseFlag;
    std::uint8_t satFlag;
    std::uint8_t padding[3];
    double carrierFreq;                     ///< MHz
    double psr;                             ///< metres
    double doppler;                         ///< Hz
    double carrierPhase;                    ///< cycles
    double satPosX, satPosY, satPosZ;       ///< metres, ECEF
    double satSpeedX, satSpeedY, satSpeedZ; ///< m/s, ECEF
};
static_assert(sizeof(MeasEntry) == 88);

struct MsgMeas {
    std::uint8_t reserved[16];
    MeasEntry entry[kMeasEntries];
};
static_assert(sizeof(MsgMeas) == 4416 && offsetof(MsgMeas, entry) == 16);

struct MsgPdrComm {
    double deltaTime; ///< seconds
    std::uint8_t context;
    std::uint8_t isStatic;
    std::uint8_t pvtState;
    std::uint8_t padding;
    std::uint16_t inuseNum;
    std::uint16_t padding2;
    float qop;
    float hdop;
    float ems;
};
static_assert(sizeof(MsgPdrComm) == 32 && offsetof(MsgPdrComm, inuseNum) == 12 && offsetof(MsgPdrComm, ems) == 24);

struct PdrMeasEntry {
    std::uint8_t svid;
    std::uint8_t gnssType;
    std::uint8_t inuseFlag;
    std::uint8_t shape;
    float psrNs;
};
static_assert(sizeof(PdrMeasEntry) == 8 && offsetof(PdrMeasEntry, psrNs) == 4);

struct MsgPdrMeas {
    std::uint32_t reserved;
    PdrMeasEntry entry[kMeasEntries];
};
static_assert(sizeof(MsgPdrMeas) == 404 && offsetof(MsgPdrMeas, entry) == 4);

struct MsgPdrLs {
    double latitude;
    double longitude;
    double speede;
    double speedn;
    double speedu;
    float altitude;
    float qop;
    float hdop;
    float ems;
    std::uint16_t inuseNum;
    std::uint8_t isLsFix;
    std::uint8_t isRaimSucc;
};
static_assert(sizeof(MsgPdrLs) == 64 && offsetof(MsgPdrLs, inuseNum) == 56 &&
              offsetof(MsgPdrLs, isRaimSucc) == 59);

struct MsgPpsSts {
    std::uint8_t isEnabled;
};
struct MsgFixMode {
    std::uint32_t modeMask;
};
struct MsgNmeaMode {
    std::uint32_t nmeaMask;
};
struct MsgTsensor {
    std::int16_t temperature; ///< degrees Celsius
};
struct MsgFtmCn0 {
    std::uint32_t testStatus;
    std::int32_t satCn0;
    std::int32_t freqBias;
    std::int32_t freqDrift;
};
static_assert(sizeof(MsgFtmCn0) == 16 && offsetof(MsgFtmCn0, freqDrift) == 12);
static_assert(sizeof(MsgPpsSts) == 1 && sizeof(MsgFixMode) == 4 && sizeof(MsgNmeaMode) == 4 &&
              sizeof(MsgTsensor) == 2);

/// Payload bytes up to the end of the last field of a message (tail padding may be absent). One table for the
/// codec, the receiver and the view.
struct MessageLayout {
    std::uint32_t msgType;
    const char* name;
    std::size_t minPayload;
    std::size_t fullPayload;
};

constexpr MessageLayout kMessageLayouts[] = {
    {MsgTypeGga, "GGA", offsetof(MsgGga, altitudeUnits) + sizeof(MsgGga::altitudeUnits), sizeof(MsgGga)},
    {MsgTypeRmc, "RMC", offsetof(MsgRmc, mode) + sizeof(MsgRmc::mode), sizeof(MsgRmc)},
    {MsgTypeGsv, "GSV", sizeof(MsgGsv), sizeof(MsgGsv)},
    {MsgTypeGsa, "GSA", sizeof(MsgGsa), sizeof(MsgGsa)},
    {MsgTypeGll, "GLL", offsetof(MsgGll, status) + sizeof(MsgGll::status), sizeof(MsgGll)},
    {MsgTypeVtg, "VTG", offsetof(MsgVtg, mode) + sizeof(MsgVtg::mode), sizeof(MsgVtg)},
    {MsgTypeZda, "ZDA", offsetof(MsgZda, minBias) + sizeof(MsgZda::minBias), sizeof(MsgZda)},
    {MsgTypeLoc, "Loc", sizeof(MsgLoc), sizeof(MsgLoc)},
    {MsgTypeMeas, "Meas", sizeof(MsgMeas), sizeof(MsgMeas)},
    {MsgTypePdrComm, "PdrComm", offsetof(MsgPdrComm, ems) + sizeof(MsgPdrComm::ems), sizeof(MsgPdrComm)},
    {MsgTypePdrMeas, "PdrMeas", sizeof(MsgPdrMeas), sizeof(MsgPdrMeas)},
    {MsgTypePdrLs, "PdrLs", offsetof(MsgPdrLs, isRaimSucc) + sizeof(MsgPdrLs::isRaimSucc), sizeof(MsgPdrLs)},
    {MsgTypePpsSts, "PpsSts", sizeof(MsgPpsSts), sizeof(MsgPpsSts)},
    {MsgTypeFixMode, "FixMode", sizeof(MsgFixMode), sizeof(MsgFixMode)},
    {MsgTypeNmeaMode, "NmeaMode", sizeof(MsgNmeaMode), sizeof(MsgNmeaMode)},
    {MsgTypeTsensor, "Tsensor", sizeof(MsgTsensor), sizeof(MsgTsensor)},
    {MsgTypeFtmCn0, "FtmCn0", sizeof(MsgFtmCn0), sizeof(MsgFtmCn0)},
};

/// The layout of a message type, or null.
constexpr const MessageLayout* FindMessageLayout(std::uint32_t msgType)
{
    for (const MessageLayout& layout : kMessageLayouts) {
        if (layout.msgType == msgType) {
            return &layout;
        }
    }
    return nullptr;
}

} // namespace protocol
