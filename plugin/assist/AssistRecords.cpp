// SPDX-License-Identifier: MIT
#include "assist/AssistRecords.h"

#include "protocol/AssistRecords.h"

#include <cmath>
#include <vector>

namespace {

constexpr double roundedPi = 3.1415926536; // goes with the units of the record

template <typename Record, typename List> QByteArray Bytes(const Record& record, const List& fields)
{
    const std::vector<std::uint8_t> bytes = protocol::Packed(record, fields);
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<int>(bytes.size()));
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
    protocol::UtcTimeRecord record;
    record.year = static_cast<std::uint16_t>(date.year());
    record.month = static_cast<std::uint8_t>(date.month());
    record.day = static_cast<std::uint8_t>(date.day());
    record.hour = static_cast<std::uint8_t>(clock.hour());
    record.minute = static_cast<std::uint8_t>(clock.minute());
    record.second = static_cast<std::uint8_t>(clock.second());
    record.millisecond = static_cast<std::uint16_t>(clock.msec());
    return Bytes(record, protocol::kUtcTimeFields);
}

QByteArray ReferenceTimeRecord(qint64 unixSeconds)
{
    const quint32 sinceEpoch = static_cast<quint32>(unixSeconds) - protocol::kGpsEpochSeconds;
    protocol::ReferenceTimeRecord record;
    record.week = static_cast<std::uint16_t>(sinceEpoch / protocol::kSecondsPerWeek % protocol::kWeeksPerTurn);
    record.timeOfWeek = sinceEpoch % protocol::kSecondsPerWeek;
    return Bytes(record, protocol::kReferenceTimeFields);
}

QByteArray ReferencePositionRecord(const ReferencePosition& position)
{
    const double latitude = (std::fabs(position.latitude) / 180.0) * roundedPi / protocol::kLatitudeUnit;
    const double longitude = (position.longitude / 180.0) * roundedPi / protocol::kLongitudeUnit;
    protocol::ReferencePositionRecord record;
    record.latitude = static_cast<std::uint32_t>(WholePart(latitude));
    record.longitude = static_cast<std::int32_t>(WholePart(longitude));
    record.altitude = static_cast<std::uint16_t>(WholePart(std::fabs(position.altitude)));
    record.southern = IsNotNegative(position.latitude) ? 0 : 1;
    record.belowSeaLevel = IsNotNegative(position.altitude) ? 0 : 1;
    return Bytes(record, protocol::kReferencePositionFields);
}

QByteArray ScenePositionRecord(double longitude, double latitude)
{
    protocol::ScenePositionRecord record;
    record.longitude = longitude;
    record.latitude = latitude;
    return Bytes(record, protocol::kScenePositionFields);
}
