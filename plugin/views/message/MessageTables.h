// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/MessageRecords.h"
#include "views/RecordField.h"

#include <cstddef>
#include <cstdint>
#include <iterator>

/// Where a field of a message stands and under which name it is shown.
struct MessageField {
    const char* label;
    std::size_t offset; ///< bytes from the start of the block, or of the row in a table
    FieldKind kind;
};

/// How the payload of a message type is shown: blocks that each fill one model. A block of one row is shown with
/// a line per field, a block of several rows as a table with a column per field.
struct MessageShape {
    std::uint32_t msgType;
    const MessageField* fields;
    std::size_t fieldCount;
    std::size_t blockOffset = 0; ///< bytes before the first block
    std::size_t blocks = 1;
    std::size_t blockSize = 0; ///< bytes from one block to the next
    std::size_t rowOffset = 0; ///< bytes before the rows of a block
    std::size_t rows = 1;
    std::size_t rowSize = 0; ///< bytes from one row to the next

    constexpr bool IsTable() const { return rows > 1; }
};

namespace message_tables {

using K = FieldKind;

constexpr MessageField kGga[] = {
    {"valid", offsetof(protocol::MsgGga, valid), K::U8},
    {"UtcTime", offsetof(protocol::MsgGga, utcTime), K::NmeaTime},
    {"Latitude", offsetof(protocol::MsgGga, latitude), K::Coordinate},
    {"LatDirection", offsetof(protocol::MsgGga, latDirection), K::Char},
    {"Longitude", offsetof(protocol::MsgGga, longitude), K::Coordinate},
    {"LonDirection", offsetof(protocol::MsgGga, lonDirection), K::Char},
    {"Mode", offsetof(protocol::MsgGga, mode), K::U8},
    {"SvNumInUse", offsetof(protocol::MsgGga, svNumInUse), K::U8},
    {"HDOP", offsetof(protocol::MsgGga, hdop), K::F32},
    {"Altitude", offsetof(protocol::MsgGga, altitude), K::F64},
    {"AltitudeUnits", offsetof(protocol::MsgGga, altitudeUnits), K::Char},
};

constexpr MessageField kRmc[] = {
    {"valid", offsetof(protocol::MsgRmc, valid), K::U8},
    {"UtcTime", offsetof(protocol::MsgRmc, utcTime), K::NmeaTime},
    {"PosStatus", offsetof(protocol::MsgRmc, posStatus), K::Char},
    {"Latitude", offsetof(protocol::MsgRmc, latitude), K::Coordinate},
    {"LatDirection", offsetof(protocol::MsgRmc, latDirection), K::Char},
    {"Longitude", offsetof(protocol::MsgRmc, longitude), K::Coordinate},
    {"LonDirection", offsetof(protocol::MsgRmc, lonDirection), K::Char},
    {"KnotSpd", offsetof(protocol::MsgRmc, knotSpd), K::F32},
    {"Course", offsetof(protocol::MsgRmc, course), K::F32},
    {"Date", offsetof(protocol::MsgRmc, date), K::NmeaDate},
    {"MagDec", offsetof(protocol::MsgRmc, magDec), K::F32},
    {"MagDecDir", offsetof(protocol::MsgRmc, magDecDir), K::Char},
    {"Mode", offsetof(protocol::MsgRmc, mode), K::Char},
};

constexpr MessageField kGsvRow[] = {
    {"Prn", offsetof(protocol::GsvRow, prn), K::U16},   {"Elev", offsetof(protocol::GsvRow, elev), K::U16},
    {"Azim", offsetof(protocol::GsvRow, azim), K::U16}, {"Cn0", offsetof(protocol::GsvRow, cn0), K::U16},
    {"Freq", offsetof(protocol::GsvRow, freq), K::U16},
};

constexpr std::size_t kGsaFirstPrn = offsetof(protocol::GsaBlock, prn);

constexpr MessageField kGsa[] = {
    {"valid", offsetof(protocol::GsaBlock, valid), K::U8},
    {"OptMode", offsetof(protocol::GsaBlock, optMode), K::Char},
    {"PosMode", offsetof(protocol::GsaBlock, posMode), K::U8},
    {"ValidPrnNum", offsetof(protocol::GsaBlock, validPrnNum), K::U8},
    {"Prn1", kGsaFirstPrn, K::U8},
    {"Prn2", kGsaFirstPrn + 1, K::U8},
    {"Prn3", kGsaFirstPrn + 2, K::U8},
    {"Prn4", kGsaFirstPrn + 3, K::U8},
    {"Prn5", kGsaFirstPrn + 4, K::U8},
    {"Prn6", kGsaFirstPrn + 5, K::U8},
    {"Prn7", kGsaFirstPrn + 6, K::U8},
    {"Prn8", kGsaFirstPrn + 7, K::U8},
    {"Prn9", kGsaFirstPrn + 8, K::U8},
    {"Prn10", kGsaFirstPrn + 9, K::U8},
    {"Prn11", kGsaFirstPrn + 10, K::U8},
    {"Prn12", kGsaFirstPrn + 11, K::U8},
    {"Pdop", offsetof(protocol::GsaBlock, pdop), K::F32},
    {"Hdop", offsetof(protocol::GsaBlock, hdop), K::F32},
    {"Vdop", offsetof(protocol::GsaBlock, vdop), K::F32},
};

constexpr MessageField kGll[] = {
    {"valid", offsetof(protocol::MsgGll, valid), K::U8},
    {"Latitude", offsetof(protocol::MsgGll, latitude), K::Coordinate},
    {"LatDirection", offsetof(protocol::MsgGll, latDirection), K::Char},
    {"Longitude", offsetof(protocol::MsgGll, longitude), K::Coordinate},
    {"LonDirection", offsetof(protocol::MsgGll, lonDirection), K::Char},
    {"UtcTime", offsetof(protocol::MsgGll, utcTime), K::NmeaTime},
    {"Satatus", offsetof(protocol::MsgGll, status), K::Char}, // the name is spelled so
};

constexpr MessageField kVtg[] = {
    {"valid", offsetof(protocol::MsgVtg, valid), K::U8},
    {"TrueCourse", offsetof(protocol::MsgVtg, trueCourse), K::F32},
    {"MagCourse", offsetof(protocol::MsgVtg, magCourse), K::F32},
    {"KnotSpd", offsetof(protocol::MsgVtg, knotSpd), K::F32},
    {"KmSpeed", offsetof(protocol::MsgVtg, kmSpeed), K::F32},
    {"Mode", offsetof(protocol::MsgVtg, mode), K::Char},
};

constexpr MessageField kZda[] = {
    {"valid", offsetof(protocol::MsgZda, valid), K::U8},
    {"UtcTime", offsetof(protocol::MsgZda, utcTime), K::NmeaTime},
    {"Date", offsetof(protocol::MsgZda, date), K::NmeaDate},
    {"HourBias", offsetof(protocol::MsgZda, hourBias), K::I8},
    {"MinBias", offsetof(protocol::MsgZda, minBias), K::I8},
};

constexpr MessageField kLoc[] = {
    {"validMask", offsetof(protocol::MsgLoc, validMask), K::U32},
    {"timestamp", offsetof(protocol::MsgLoc, timestamp), K::U64},
    {"latitude", offsetof(protocol::MsgLoc, latitude), K::F64},
    {"longitude", offsetof(protocol::MsgLoc, longitude), K::F64},
    {"clkBias", offsetof(protocol::MsgLoc, clkBias), K::F64},
    {"clkDrift", offsetof(protocol::MsgLoc, clkDrift), K::F64},
    {"speede", offsetof(protocol::MsgLoc, speede), K::F64},
    {"speedn", offsetof(protocol::MsgLoc, speedn), K::F64},
    {"speedu", offsetof(protocol::MsgLoc, speedu), K::F64},
    {"altitude", offsetof(protocol::MsgLoc, altitude), K::F32},
    {"heading", offsetof(protocol::MsgLoc, heading), K::F32},
    {"posAcc", offsetof(protocol::MsgLoc, posAcc), K::F32},
    {"speedAcc", offsetof(protocol::MsgLoc, speedAcc), K::F32},
};

constexpr MessageField kMeasRow[] = {
    {"svid", offsetof(protocol::MeasEntry, svid), K::U8},
    {"constellation", offsetof(protocol::MeasEntry, constellation), K::U8},
    {"cn0", offsetof(protocol::MeasEntry, cn0), K::U8},
    {"inuseFlag", offsetof(protocol::MeasEntry, inuseFlag), K::U8},
    {"satFlag", offsetof(protocol::MeasEntry, satFlag), K::U8},
    {"carrierFreq", offsetof(protocol::MeasEntry, carrierFreq), K::F64},
    {"psr", offsetof(protocol::MeasEntry, psr), K::F64},
    {"doppler", offsetof(protocol::MeasEntry, doppler), K::F64},
    {"carrierPhase", offsetof(protocol::MeasEntry, carrierPhase), K::F64},
    {"satPosX", offsetof(protocol::MeasEntry, satPosX), K::F64},
    {"satPosY", offsetof(protocol::MeasEntry, satPosY), K::F64},
    {"satPosZ", offsetof(protocol::MeasEntry, satPosZ), K::F64},
    {"satSpeedX", offsetof(protocol::MeasEntry, satSpeedX), K::F64},
    {"satSpeedY", offsetof(protocol::MeasEntry, satSpeedY), K::F64},
    {"satSpeedZ", offsetof(protocol::MeasEntry, satSpeedZ), K::F64},
};

// The last two messages of dead reckoning show values beside names that are not theirs, and so it is meant: here
// the middle float stands beside the name of the last one, whose value opens a row without a name.
constexpr MessageField kPdrComm[] = {
    {"deltaTime", offsetof(protocol::MsgPdrComm, deltaTime), K::F64},
    {"context", offsetof(protocol::MsgPdrComm, context), K::U8},
    {"isStatic", offsetof(protocol::MsgPdrComm, isStatic), K::U8},
    {"pvtState", offsetof(protocol::MsgPdrComm, pvtState), K::U8},
    {"inuseNum", offsetof(protocol::MsgPdrComm, inuseNum), K::U16},
    {"qop", offsetof(protocol::MsgPdrComm, qop), K::F32},
    {"ems", offsetof(protocol::MsgPdrComm, hdop), K::F32},
    {nullptr, offsetof(protocol::MsgPdrComm, ems), K::F32},
};

constexpr MessageField kPdrMeasRow[] = {
    {"svid", offsetof(protocol::PdrMeasEntry, svid), K::U8},
    {"gnssType", offsetof(protocol::PdrMeasEntry, gnssType), K::U8},
    {"inuseFlag", offsetof(protocol::PdrMeasEntry, inuseFlag), K::U8},
    {"shape", offsetof(protocol::PdrMeasEntry, shape), K::U8},
    {"psrNs", offsetof(protocol::PdrMeasEntry, psrNs), K::F32},
};

// Here the latitude comes twice, so that from the third row on each value stands one row below its name.
constexpr MessageField kPdrLs[] = {
    {"latitude", offsetof(protocol::MsgPdrLs, latitude), K::F64},
    {"longitude", offsetof(protocol::MsgPdrLs, longitude), K::F64},
    {"speede", offsetof(protocol::MsgPdrLs, latitude), K::F64},
    {"speedn", offsetof(protocol::MsgPdrLs, speede), K::F64},
    {"speedu", offsetof(protocol::MsgPdrLs, speedn), K::F64},
    {"altitude", offsetof(protocol::MsgPdrLs, speedu), K::F64},
    {"qop", offsetof(protocol::MsgPdrLs, altitude), K::F32},
    {"hdop", offsetof(protocol::MsgPdrLs, qop), K::F32},
    {"ems", offsetof(protocol::MsgPdrLs, hdop), K::F32},
    {"inuseNum", offsetof(protocol::MsgPdrLs, ems), K::F32},
    {"isLsFix", offsetof(protocol::MsgPdrLs, inuseNum), K::U16},
    {"isRaimSucc", offsetof(protocol::MsgPdrLs, isLsFix), K::U8},
    {nullptr, offsetof(protocol::MsgPdrLs, isRaimSucc), K::U8},
};

constexpr MessageField kPpsSts[] = {{"isEnabled", 0, K::U8}};
constexpr MessageField kFixMode[] = {{"modeMask", 0, K::U32}};
constexpr MessageField kNmeaMode[] = {{"nmeaMask", 0, K::U32}};
constexpr MessageField kTsensor[] = {{"temperature", 0, K::I16}};

constexpr MessageField kFtmCn0[] = {
    {"testStatus", offsetof(protocol::MsgFtmCn0, testStatus), K::U32},
    {"satCn0", offsetof(protocol::MsgFtmCn0, satCn0), K::I32},
    {"freqBias", offsetof(protocol::MsgFtmCn0, freqBias), K::I32},
    {"freqDrift", offsetof(protocol::MsgFtmCn0, freqDrift), K::I32},
};

constexpr MessageShape kShapes[] = {
    {protocol::MsgTypeGga, kGga, std::size(kGga)},
    {protocol::MsgTypeRmc, kRmc, std::size(kRmc)},
    {protocol::MsgTypeGsv, kGsvRow, std::size(kGsvRow), offsetof(protocol::MsgGsv, block),
     protocol::kMessageBlocks, sizeof(protocol::GsvBlock), offsetof(protocol::GsvBlock, row), protocol::kGsvRows,
     sizeof(protocol::GsvRow)},
    {protocol::MsgTypeGsa, kGsa, std::size(kGsa), offsetof(protocol::MsgGsa, block), protocol::kMessageBlocks,
     sizeof(protocol::GsaBlock)},
    {protocol::MsgTypeGll, kGll, std::size(kGll)},
    {protocol::MsgTypeVtg, kVtg, std::size(kVtg)},
    {protocol::MsgTypeZda, kZda, std::size(kZda)},
    {protocol::MsgTypeLoc, kLoc, std::size(kLoc)},
    {protocol::MsgTypeMeas, kMeasRow, std::size(kMeasRow), offsetof(protocol::MsgMeas, entry), 1, 0, 0,
     protocol::kMeasEntries, sizeof(protocol::MeasEntry)},
    {protocol::MsgTypePdrComm, kPdrComm, std::size(kPdrComm)},
    {protocol::MsgTypePdrMeas, kPdrMeasRow, std::size(kPdrMeasRow), offsetof(protocol::MsgPdrMeas, entry), 1, 0, 0,
     protocol::kMeasEntries, sizeof(protocol::PdrMeasEntry)},
    {protocol::MsgTypePdrLs, kPdrLs, std::size(kPdrLs)},
    {protocol::MsgTypePpsSts, kPpsSts, std::size(kPpsSts)},
    {protocol::MsgTypeFixMode, kFixMode, std::size(kFixMode)},
    {protocol::MsgTypeNmeaMode, kNmeaMode, std::size(kNmeaMode)},
    {protocol::MsgTypeTsensor, kTsensor, std::size(kTsensor)},
    {protocol::MsgTypeFtmCn0, kFtmCn0, std::size(kFtmCn0)},
};
static_assert(std::size(kShapes) == std::size(protocol::kMessageLayouts));

} // namespace message_tables

/// The shape of a message type; null for a type that is not shown.
constexpr const MessageShape* FindMessageShape(std::uint32_t msgType)
{
    for (const MessageShape& shape : message_tables::kShapes) {
        if (shape.msgType == msgType) {
            return &shape;
        }
    }
    return nullptr;
}
