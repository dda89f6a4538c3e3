// SPDX-License-Identifier: MIT
#include "views/FixTexts.h"

#include "protocol/Records.h"
#include "views/RecordConversions.h"
#include "views/RecordField.h"

#include <QDate>
#include <QTime>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

using protocol::FixRecord;

// The record's length from which on it holds what a text needs, in the order of the texts.
constexpr std::size_t kNeeded[] = {
    0,
    offsetof(FixRecord, latitude),
    offsetof(FixRecord, altitude),
    offsetof(FixRecord, year),
    offsetof(FixRecord, hour),
    offsetof(FixRecord, fixMode),
    offsetof(FixRecord, fixMode) + 1,
    offsetof(FixRecord, heading),
    offsetof(FixRecord, pdop),
    offsetof(FixRecord, hdop),
    offsetof(FixRecord, vdop),
    sizeof(FixRecord),
};
static_assert(std::size(kNeeded) == kFixTextCount);

FixRecord ReadFix(const char* record, std::size_t size)
{
    FixRecord fix{};
    std::memcpy(&fix, record, std::min(size, sizeof(fix)));
    return fix;
}

QString Padded(quint32 value)
{
    return QString("%1").arg(value, 2, 10, QLatin1Char('0'));
}

QString Pad(int value)
{
    return QString::number(value).rightJustified(2, '0');
}

} // namespace

QStringList FixTexts(const char* record, std::size_t size, const QString& firstFixText)
{
    const FixRecord fix = ReadFix(record, size);
    QStringList texts = {
        firstFixText,
        CoordinateText(fix.longitude, 'E', 'W'),
        CoordinateText(fix.latitude, 'N', 'S'),
        GeneralText(fix.altitude) + 'm',
        Padded(fix.year) + '-' + Padded(fix.month) + '-' + Padded(fix.day),
        Padded(fix.hour) + ':' + Padded(fix.minute) + ':' + SecondsText(fix.second),
        GetFixModeText(fix.fixMode),
        GeneralText(static_cast<double>(fix.speed)) + "m/s",
        GeneralText(static_cast<double>(fix.heading)) + "°",
        GeneralText(static_cast<double>(fix.pdop)),
        GeneralText(static_cast<double>(fix.hdop)),
        GeneralText(static_cast<double>(fix.vdop)),
    };
    for (int i = 0; i < kFixTextCount; ++i) {
        if (size < kNeeded[i]) {
            texts[i].clear();
        }
    }
    return texts;
}

QString CoordinateText(double degrees, char positive, char negative)
{
    QString text = QString::asprintf("%.8f", degrees);
    if (degrees >= 0) {
        return text + positive;
    }
    return text.remove('-') + negative;
}

QString SecondsText(double second)
{
    if (!std::isfinite(second)) {
        return GeneralText(second);
    }
    const int whole = WholePart(second);
    // The product is rounded to single precision before it is cut: that alone is right for every millisecond.
    const auto hundredths = static_cast<float>((second - whole) * 100.0);
    const int cut = std::abs(std::clamp(WholePart(static_cast<double>(hundredths)), -99, 99));
    return Pad(whole) + '.' + Pad(cut);
}

QString FixAltitudeText(const char* record, std::size_t size)
{
    return size < offsetof(FixRecord, year) ? QString() : GeneralText(ReadFix(record, size).altitude);
}

QDateTime FixDateTime(const char* record, std::size_t size)
{
    const FixRecord fix = ReadFix(record, size);
    if (size < offsetof(FixRecord, fixMode) || !std::isfinite(fix.second)) {
        return QDateTime();
    }
    // A year of other than four digits is no date, nor is any field that lies beyond an int.
    if (fix.year < 1000 || fix.year > 9999) {
        return QDateTime();
    }
    const auto number = [](quint32 value) { return static_cast<int>(std::min(value, 100U)); };
    const QDate date(static_cast<int>(fix.year), number(fix.month), number(fix.day));
    const QTime time(number(fix.hour), number(fix.minute), WholePart(fix.second));
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}
