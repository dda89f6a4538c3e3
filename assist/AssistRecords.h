#pragma once

#include <QByteArray>
#include <QDateTime>

// The byte images of the records that several windows inject. All fields are little-endian.

/// The 12-byte UTC time record of command 1028: u16 year; u8 month, day, hour, minute, second, 0; u16
/// millisecond; u8 1, 0. The time is converted to UTC.
QByteArray UtcTimeRecord(const QDateTime& time);
