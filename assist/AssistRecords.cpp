#include "AssistRecords.h"

#include "codec/Protocol.h"

#include <array>

QByteArray UtcTimeRecord(const QDateTime& time)
{
    const QDateTime utc = time.toUTC();
    const QDate date = utc.date();
    const QTime clock = utc.time();
    std::array<std::uint8_t, 12> record = {};
    gnss::WriteU16(&record[0], static_cast<std::uint16_t>(date.year()));
    record[2] = static_cast<std::uint8_t>(date.month());
    record[3] = static_cast<std::uint8_t>(date.day());
    record[4] = static_cast<std::uint8_t>(clock.hour());
    record[5] = static_cast<std::uint8_t>(clock.minute());
    record[6] = static_cast<std::uint8_t>(clock.second());
    gnss::WriteU16(&record[8], static_cast<std::uint16_t>(clock.msec()));
    record[10] = 1;
    return QByteArray(reinterpret_cast<const char*>(record.data()), static_cast<int>(record.size()));
}
