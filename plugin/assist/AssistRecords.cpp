// SPDX-License-Identifier: MIT
#include "assist/AssistRecords.h"

#include "protocol/LinkFrame.h"

#include <QtEndian>

#include <array>
#include <cmath>

namespace {

constexpr quint32 gpsEpoch = 315964800; ///< Unix seconds of 1980-01-06
constexpr quint32 secondsPerWeek = 604800;
constexpr quint32 weekMask = 0x3FF;

// The receiver's units go with these very numbers: whole fractions of a circle come out whole only so.
constexpr double roundedPi = 3.1415926536;
constexpr double latitudeUnit = 1.87253514146196e-07;
constexpr double longitudeUnit = 3.74507028292392e-07;

template <std::size_t size> QByteArray Bytes(const std::array<std::uint8_t, size>& record)
{
    return QByteArray(reinterpret_cast<const char*>(record.data()), static_cast<int>(record.size()));
}

void WriteU32(std::uint8_t* p, quint32 value)
{
    qToLittleEndian(value, p);
}

void WriteDouble(std::uint8_t* p, double value)
{
    quint64 bits = 0;
    static_assert(sizeof(bits) == sizeof(value));
    std::memcpy(&bits, &value, sizeof(bits));
    qToLittleEndian(bits, p);
}

/// The whole part, or 0 for what 64 bits do not hold.
qint64 WholePart(double value)
{
    constexpr double limit = 9.2e18;
    return std::fabs(value) < limit ? static_cast<qint64>(value) : 0;
}

} // namespace

bool IsNotNegative(double value)
{
    return value >= -1e-8;
}

QByteArray UtcTimeRecord(const QDateTime& time)
{
    const QDateTime utc = time.toUTC();
    const QDate date = utc.date();
    const QTime clock = utc.time();
    std::array<std::uint8_t, 12> record = {};
    protocol::WriteU16(&record[0], static_cast<std::uint16_t>(date.year()));
    record[2] = static_cast<std::uint8_t>(date.month());
    record[3] = static_cast<std::uint8_t>(date.day());
    record[4] = static_cast<std::uint8_t>(clock.hour());
    record[5] = static_cast<std::uint8_t>(clock.minute());
    record[6] = static_cast<std::uint8_t>(clock.second());
    protocol::WriteU16(&record[8], static_cast<std::uint16_t>(clock.msec()));
    record[10] = 1;
    return Bytes(record);
}

QByteArray ReferenceTimeRecord(qint64 unixSeconds)
{
    const quint32 sinceEpoch = static_cast<quint32>(unixSeconds) - gpsEpoch;
    std::array<std::uint8_t, 14> record = {};
    protocol::WriteU16(&record[0], static_cast<std::uint16_t>((sinceEpoch / secondsPerWeek) & weekMask));
    WriteU32(&record[2], sinceEpoch % secondsPerWeek);
    WriteU32(&record[6], 83);
    WriteU32(&record[10], 1);
    return Bytes(record);
}

QByteArray ReferencePositionRecord(const ReferencePosition& position)
{
    const double latitude = (std::fabs(position.latitude) / 180.0) * roundedPi / latitudeUnit;
    const double longitude = (position.longitude / 180.0) * roundedPi / longitudeUnit;
    std::array<std::uint8_t, 20> record = {};
    WriteU32(&record[0], static_cast<quint32>(WholePart(latitude)));
    WriteU32(&record[4], static_cast<quint32>(WholePart(longitude)));
    WriteU32(&record[8], 1);
    protocol::WriteU16(&record[12], static_cast<std::uint16_t>(WholePart(std::fabs(position.altitude))));
    record[14] = IsNotNegative(position.latitude) ? 0 : 1;
    record[15] = IsNotNegative(position.altitude) ? 0 : 1;
    return Bytes(record);
}

QByteArray ScenePositionRecord(double longitude, double latitude)
{
    std::array<std::uint8_t, 21> record = {};
    WriteDouble(&record[0], longitude);
    WriteDouble(&record[8], latitude);
    WriteU32(&record[16], 10);
    return Bytes(record);
}
