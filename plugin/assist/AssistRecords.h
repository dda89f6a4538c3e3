// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>

// The byte images of the records that several windows inject. All fields are little-endian.

/// A place in degrees and metres.
struct ReferencePosition {
    double longitude = 0.0;
    double latitude = 0.0;
    double altitude = 0.0;
};

/// False for what lies below zero by more than the rounding of a typed coordinate (1e-8).
bool IsNotNegative(double value);

/// The 12-byte UTC time record of command 1028: u16 year; u8 month, day, hour, minute, second, 0; u16
/// millisecond; u8 1, 0. The time is converted to UTC.
QByteArray UtcTimeRecord(const QDateTime& time);

/// The 14-byte reference time record of command 513: u16 GPS week, low 10 bits; u32 time of week in seconds; u32
/// 83; u32 1. The time is taken in 32 bits and without leap seconds, so one before 1980-01-06 wraps.
QByteArray ReferenceTimeRecord(qint64 unixSeconds);

/// The 20-byte reference position record of command 770: u32 latitude magnitude in units of pi/2^24; i32
/// longitude in units of pi/2^23; u32 1; u16 altitude magnitude in metres, low 16 bits; u8 1 for a southern
/// latitude; u8 1 for a negative altitude; 4 bytes 0.
QByteArray ReferencePositionRecord(const ReferencePosition& position);

/// The 21-byte position record of command 514: double longitude, double latitude in degrees; u32 10; u8 0.
QByteArray ScenePositionRecord(double longitude, double latitude);
