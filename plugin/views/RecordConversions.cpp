// SPDX-License-Identifier: MIT
#include "views/RecordConversions.h"

#include <QCoreApplication>

#include <cmath>
#include <iterator>
#include <limits>

namespace {

constexpr const char* kFixModeTexts[] = {
    QT_TRANSLATE_NOOP("RecordConversions", "无效"),
    QT_TRANSLATE_NOOP("RecordConversions", "自动"),
    QT_TRANSLATE_NOOP("RecordConversions", "差分"),
    "PPS",
    "FIXED",
    "FLOAT",
    QT_TRANSLATE_NOOP("RecordConversions", "估算"),
    QT_TRANSLATE_NOOP("RecordConversions", "手动"),
    QT_TRANSLATE_NOOP("RecordConversions", "模拟"),
};

} // namespace

QString GetFixModeText(std::uint8_t fixMode)
{
    if (fixMode >= std::size(kFixModeTexts)) {
        return QString();
    }
    return QCoreApplication::translate("RecordConversions", kFixModeTexts[fixMode]);
}

double NmeaToDegrees(double value, char direction)
{
    const int whole = WholePart(value / 100.0);
    // The product is meant to be rounded to single precision.
    const float hundredfold = static_cast<float>(whole) * 100.0F;
    const double minutes = value - static_cast<double>(hundredfold);
    const double degrees = whole + minutes / 60.0;
    // Without bit 2 'W' is 'S'.
    return (direction & ~4) == 'S' ? -degrees : degrees;
}

NmeaHms NmeaTimeToHms(double value)
{
    const int hour = WholePart(value / 10000.0);
    const double rest = value - hour * 10000.0;
    const int minute = WholePart(rest / 100.0);
    return {hour, minute, rest - minute * 100.0};
}

NmeaYmd NmeaDateToYmd(std::uint32_t value)
{
    const std::uint32_t year = value % 100;
    return {year < 50 ? 2000 + year : 1900 + year, value % 10000 / 100, value / 10000};
}

int WholePart(double value)
{
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= largest) {
        return largest;
    }
    if (value <= least) {
        return least;
    }
    return static_cast<int>(value);
}
