// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <cstddef>

constexpr int kFixTextCount = 12;

/// What the table of the latest fix shows: first fix, longitude, latitude, altitude, UTC date, UTC time, fix mode,
/// speed, heading, PDOP, HDOP, VDOP. `record` is a FixRecord of `size` bytes; what it doesn't hold is empty.
QStringList FixTexts(const char* record, std::size_t size, const QString& firstFixText);

/// Eight decimals of a degree without a sign, then the letter of the side on which the value lies; zero lies on
/// the positive one.
QString CoordinateText(double degrees, char positive, char negative);

/// Seconds with two decimals, cut and not rounded: 59.999 is "59.99".
QString SecondsText(double second);

/// The altitude as a plain number, in metres.
QString FixAltitudeText(const char* record, std::size_t size);

/// Date and whole second of a FixRecord in UTC; invalid when they make no time of day in a calendar.
QDateTime FixDateTime(const char* record, std::size_t size);
