// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

// Conversions of record fields that several views share.

/// A time of day as the sentence gives it.
struct NmeaHms {
    int hour;
    int minute;
    double second; ///< with its fraction
};

struct NmeaYmd {
    std::uint32_t year; ///< four digits
    std::uint32_t month;
    std::uint32_t day;
};

/// The text of a fix mode of FixRecord and CompassRecord; empty for a mode that there isn't.
QString GetFixModeText(std::uint8_t fixMode);

/// Degrees from a coordinate of the form dddmm.mmmm, negative for the directions 'S' and 'W'.
double NmeaToDegrees(double value, char direction);

/// Hour, minute and second from a time of the form hhmmss.sss.
NmeaHms NmeaTimeToHms(double value);

/// The date from its form ddmmyy; two-digit years below 50 belong to this century.
NmeaYmd NmeaDateToYmd(std::uint32_t value);

/// The whole part: 0 for no number, the outermost int for one that no int holds.
int WholePart(double value);
