// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>

// The records that several windows inject, as bytes; protocol/AssistRecords.h has their layouts.

/// A place in degrees and metres.
struct ReferencePosition {
    double longitude = 0.0;
    double latitude = 0.0;
    double altitude = 0.0;
};

/// False for what lies below zero by more than the rounding of a typed coordinate (1e-8).
bool IsNotNegative(double value);

/// The record of command 1028. The time is converted to UTC.
QByteArray UtcTimeRecord(const QDateTime& time);

/// The record of command 513. The time is taken in 32 bits and without leap seconds, so one before 1980-01-06
/// wraps.
QByteArray ReferenceTimeRecord(qint64 unixSeconds);

/// The record of command 770.
QByteArray ReferencePositionRecord(const ReferencePosition& position);

/// The record of command 514, in degrees.
QByteArray ScenePositionRecord(double longitude, double latitude);
