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
    {"valid", offsetof(gnss::MsgGga, valid), K::U8},
    {"UtcTime", offsetof(gnss::MsgGga, utcTime), K::NmeaTime},
    {"Latitude", offsetof(gnss::MsgGga, latitude), K::Coordinate},
    {"LatDirection", offsetof(gnss::MsgGga, latDirection), K::Char},
    {"Longitude", offsetof(gnss::MsgGga, longitude), K::Coordinate},
    {"LonDirection", offsetof(gnss::MsgGga, lonDirection), K::Char},
    {"Mode", offsetof(gnss::MsgGga, mode), K::U8},
    {"SvNumInUse", offsetof(gnss::MsgGga, svNumInUse), K::U8},
    {"HDOP", offsetof(gnss::MsgGga, hdop), K::F32},
    {"Altitude", offsetof(gnss::MsgGga, altitude), K::F64},
    {"AltitudeUnits", offsetof(gnss::MsgGga, altitudeUnits), K::Char},
};

constexpr MessageField kRmc[] = {
    {"valid", offsetof(gnss::MsgRmc, valid), K::U8},
    {"UtcTime", offsetof(gnss::MsgRmc, utcTime), K::NmeaTime},
    {"PosStatus", offsetof(gnss::MsgRmc, posStatus), K::Char},
    {"Latitude", offsetof(gnss::MsgRmc, latitude), K::Coordinate},
    {"LatDirection", offsetof(gnss::MsgRmc, latDirection), K::Char},
    {"Longitude", offsetof(gnss::MsgRmc, longitude), K::Coordinate},
    {"LonDirection", offsetof(gnss::MsgRmc, lonDirection), K::Char},
    {"KnotSpd", offsetof(gnss::MsgRmc, knotSpd), K::F32},
    {"Course", offsetof(gnss::MsgRmc, course), K::F32},
    {"Date", offsetof(gnss::MsgRmc, date), K::NmeaDate},
    {"MagDec", offsetof(gnss::MsgRmc, magDec), K::F32},
    {"MagDecDir", offsetof(gnss::MsgRmc, magDecDir), K::Char},
    {"Mode", offsetof(gnss::MsgRmc, mode), K::Char},
};

constexpr MessageField kGsvRow[] = {
    {"Prn", offsetof(gnss::GsvRow, prn), K::U16},   {"Elev", offsetof(gnss::GsvRow, elev), K::U16},
    {"Azim", offsetof(gnss::GsvRow, azim), K::U16}, {"Cn0", offsetof(gnss::GsvRow, cn0), K::U16},
    {"Freq", offsetof(gnss::GsvRow, freq), K::U16},
};

constexpr std::size_t kGsaFirstPrn = offsetof(gnss::GsaBlock, prn);

constexpr MessageField kGsa[] = {
    {"valid", offsetof(gnss::GsaBlock, valid), K::U8},
    {"OptMode", offsetof(gnss::GsaBlock, optMode), K::Char},
    {"PosMode", offsetof(gnss::GsaBlock, posMode), K::U8},
    {"ValidPrnNum", offsetof(gnss::GsaBlock, validPrnNum), K::U8},
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
    {"Pdop", offsetof(gnss::GsaBlock, pdop), K::F32},
    {"Hdop", offsetof(gnss::GsaBlock, hdop), K::F32},
    {"Vdop", offsetof(gnss::GsaBlock, vdop), K::F32},
};

constexpr MessageField kGll[] = {
    {"valid", offsetof(gnss::MsgGll, valid), K::U8},
    {"Latitude", offsetof(gnss::MsgGll, latitude), K::Coordinate},
    {"LatDirection", offsetof(gnss::MsgGll, latDirection), K::Char},
    {"Longitude", offsetof(gnss::MsgGll, longitude), K::Coordinate},
    {"LonDirection", offsetof(gnss::MsgGll, lonDirection), K::Char},
    {"UtcTime", offsetof(gnss::MsgGll, utcTime), K::NmeaTime},
    {"Satatus", offsetof(gnss::MsgGll, status), K::Char}, // the name is spelled so
};

constexpr MessageField kVtg[] = {
    {"valid", offsetof(gnss::MsgVtg, valid), K::U8},
    {"TrueCourse", offsetof(gnss::MsgVtg, trueCourse), K::F32},
    {"MagCourse", offsetof(gnss::MsgVtg, magCourse), K::F32},
    {"KnotSpd", offsetof(gnss::MsgVtg, knotSpd), K::F32},
    {"KmSpeed", offsetof(gnss::MsgVtg, kmSpeed), K::F32},
    {"Mode", offsetof(gnss::MsgVtg, mode), K::Char},
};

constexpr MessageField kZda[] = {
    {"valid", offsetof(gnss::MsgZda, valid), K::U8},     {"UtcTime", offsetof(gnss::MsgZda, utcTime), K::NmeaTime},
    {"Date", offsetof(gnss::MsgZda, date), K::NmeaDate}, {"HourBias", offsetof(gnss::MsgZda, hourBias), K::I8},
    {"MinBias", offsetof(gnss::MsgZda, minBias), K::I8},
};

constexpr MessageField kLoc[] = {
    {"validMask", offsetof(gnss::MsgLoc, validMask), K::U32},
    {"timestamp", offsetof(gnss::MsgLoc, timestamp), K::U64},
    {"latitude", offsetof(gnss::MsgLoc, latitude), K::F64},
    {"longitude", offsetof(gnss::MsgLoc, longitude), K::F64},
    {"clkBias", offsetof(gnss::MsgLoc, clkBias), K::F64},
    {"clkDrift", offsetof(gnss::MsgLoc, clkDrift), K::F64},
    {"speede", offsetof(gnss::MsgLoc, speede), K::F64},
    {"speedn", offsetof(gnss::MsgLoc, speedn), K::F64},
    {"speedu", offsetof(gnss::MsgLoc, speedu), K::F64},
    {"altitude", offsetof(gnss::MsgLoc, altitude), K::F32},
    {"heading", offsetof(gnss::MsgLoc, heading), K::F32},
    {"posAcc", offsetof(gnss::MsgLoc, posAcc), K::F32},
    {"speedAcc", offsetof(gnss::MsgLoc, speedAcc), K::F32},
};

constexpr MessageField kMeasRow[] = {
    {"svid", offsetof(gnss::MeasEntry, svid), K::U8},
    {"constellation", offsetof(gnss::MeasEntry, constellation), K::U8},
    {"cn0", offsetof(gnss::MeasEntry, cn0), K::U8},
    {"inuseFlag", offsetof(gnss::MeasEntry, inuseFlag), K::U8},
    {"satFlag", offsetof(gnss::MeasEntry, satFlag), K::U8},
    {"carrierFreq", offsetof(gnss::MeasEntry, carrierFreq), K::F64},
    {"psr", offsetof(gnss::MeasEntry, psr), K::F64},
    {"doppler", offsetof(gnss::MeasEntry, doppler), K::F64},
    {"carrierPhase", offsetof(gnss::MeasEntry, carrierPhase), K::F64},
    {"satPosX", offsetof(gnss::MeasEntry, satPosX), K::F64},
    {"satPosY", offsetof(gnss::MeasEntry, satPosY), K::F64},
    {"satPosZ", offsetof(gnss::MeasEntry, satPosZ), K::F64},
    {"satSpeedX", offsetof(gnss::MeasEntry, satSpeedX), K::F64},
    {"satSpeedY", offsetof(gnss::MeasEntry, satSpeedY), K::F64},
    {"satSpeedZ", offsetof(gnss::MeasEntry, satSpeedZ), K::F64},
};

// The last two messages of dead reckoning show values beside names that are not theirs, and so it is meant: here
// the middle float stands beside the name of the last one, whose value opens a row without a name.
constexpr MessageField kPdrComm[] = {
    {"deltaTime", offsetof(gnss::MsgPdrComm, deltaTime), K::F64},
    {"context", offsetof(gnss::MsgPdrComm, context), K::U8},
    {"isStatic", offsetof(gnss::MsgPdrComm, isStatic), K::U8},
    {"pvtState", offsetof(gnss::MsgPdrComm, pvtState), K::U8},
    {"inuseNum", offsetof(gnss::MsgPdrComm, inuseNum), K::U16},
    {"qop", offsetof(gnss::MsgPdrComm, qop), K::F32},
    {"ems", offsetof(gnss::MsgPdrComm, hdop), K::F32},
    {nullptr, offsetof(gnss::MsgPdrComm, ems), K::F32},
};

constexpr MessageField kPdrMeasRow[] = {
    {"svid", offsetof(gnss::PdrMeasEntry, svid), K::U8},
    {"gnssType", offsetof(gnss::PdrMeasEntry, gnssType), K::U8},
    {"inuseFlag", offsetof(gnss::PdrMeasEntry, inuseFlag), K::U8},
    {"shape", offsetof(gnss::PdrMeasEntry, shape), K::U8},
    {"psrNs", offsetof(gnss::PdrMeasEntry, psrNs), K::F32},
};

// Here the latitude comes twice, so that from the third row on each value stands one row below its name.
constexpr MessageField kPdrLs[] = {
    {"latitude", offsetof(gnss::MsgPdrLs, latitude), K::F64},
    {"longitude", offsetof(gnss::MsgPdrLs, longitude), K::F64},
    {"speede", offsetof(gnss::MsgPdrLs, latitude), K::F64},
    {"speedn", offsetof(gnss::MsgPdrLs, speede), K::F64},
    {"speedu", offsetof(gnss::MsgPdrLs, speedn), K::F64},
    {"altitude", offsetof(gnss::MsgPdrLs, speedu), K::F64},
    {"qop", offsetof(gnss::MsgPdrLs, altitude), K::F32},
    {"hdop", offsetof(gnss::MsgPdrLs, qop), K::F32},
    {"ems", offsetof(gnss::MsgPdrLs, hdop), K::F32},
    {"inuseNum", offsetof(gnss::MsgPdrLs, ems), K::F32},
    {"isLsFix", offsetof(gnss::MsgPdrLs, inuseNum), K::U16},
    {"isRaimSucc", offsetof(gnss::MsgPdrLs, isLsFix), K::U8},
    {nullptr, offsetof(gnss::MsgPdrLs, isRaimSucc), K::U8},
};

constexpr MessageField kPpsSts[] = {{"isEnabled", 0, K::U8}};
constexpr MessageField kFixMode[] = {{"modeMask", 0, K::U32}};
constexpr MessageField kNmeaMode[] = {{"nmeaMask", 0, K::U32}};
constexpr MessageField kTsensor[] = {{"temperature", 0, K::I16}};

constexpr MessageField kFtmCn0[] = {
    {"testStatus", offsetof(gnss::MsgFtmCn0, testStatus), K::U32},
    {"satCn0", offsetof(gnss::MsgFtmCn0, satCn0), K::I32},
    {"freqBias", offsetof(gnss::MsgFtmCn0, freqBias), K::I32},
    {"freqDrift", offsetof(gnss::MsgFtmCn0, freqDrift), K::I32},
};

constexpr MessageShape kShapes[] = {
    {gnss::MsgTypeGga, kGga, std::size(kGga)},
    {gnss::MsgTypeRmc, kRmc, std::size(kRmc)},
    {gnss::MsgTypeGsv, kGsvRow, std::size(kGsvRow), offsetof(gnss::MsgGsv, block), gnss::kMessageBlocks,
     sizeof(gnss::GsvBlock), offsetof(gnss::GsvBlock, row), gnss::kGsvRows, sizeof(gnss::GsvRow)},
    {gnss::MsgTypeGsa, kGsa, std::size(kGsa), offsetof(gnss::MsgGsa, block), gnss::kMessageBlocks,
     sizeof(gnss::GsaBlock)},
    {gnss::MsgTypeGll, kGll, std::size(kGll)},
    {gnss::MsgTypeVtg, kVtg, std::size(kVtg)},
    {gnss::MsgTypeZda, kZda, std::size(kZda)},
    {gnss::MsgTypeLoc, kLoc, std::size(kLoc)},
    {gnss::MsgTypeMeas, kMeasRow, std::size(kMeasRow), offsetof(gnss::MsgMeas, entry), 1, 0, 0, gnss::kMeasEntries,
     sizeof(gnss::MeasEntry)},
    {gnss::MsgTypePdrComm, kPdrComm, std::size(kPdrComm)},
    {gnss::MsgTypePdrMeas, kPdrMeasRow, std::size(kPdrMeasRow), offsetof(gnss::MsgPdrMeas, entry), 1, 0, 0,
     gnss::kMeasEntries, sizeof(gnss::PdrMeasEntry)},
    {gnss::MsgTypePdrLs, kPdrLs, std::size(kPdrLs)},
    {gnss::MsgTypePpsSts, kPpsSts, std::size(kPpsSts)},
    {gnss::MsgTypeFixMode, kFixMode, std::size(kFixMode)},
    {gnss::MsgTypeNmeaMode, kNmeaMode, std::size(kNmeaMode)},
    {gnss::MsgTypeTsensor, kTsensor, std::size(kTsensor)},
    {gnss::MsgTypeFtmCn0, kFtmCn0, std::size(kFtmCn0)},
};
static_assert(std::size(kShapes) == std::size(gnss::kMessageLayouts));

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
