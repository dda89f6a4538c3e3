// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

/// How a field of a record image is read, and how it is shown.
enum class FieldKind : std::uint8_t {
    U8,
    I8,
    U16,
    I16,
    U32,
    I32,
    U64,
    Char, ///< one letter; NUL, an empty field of the sentence, is no text
    F32,  ///< six significant digits, as every floating value
    F64,
    Coordinate, ///< f64 dddmm.mmmm with its direction in the ninth byte, shown in degrees
    NmeaTime,   ///< f64 hhmmss.sss, shown as h:m:s
    NmeaDate,   ///< u32 ddmmyy, shown as year-month-day
    Hex8,       ///< u8, shown as 0x1F
    Hex16,      ///< u16, shown alike
    Direction,  ///< u8, 0 is "receive" and all else "send"
};

/// Bytes that a field of the kind takes.
std::size_t FieldSize(FieldKind kind);

/// The text of the field at byte `offset` of a record of `size` bytes. The field need not be aligned. Empty when
/// the record doesn't hold it whole: what was not received is not shown as zero.
QString FieldText(const char* record, std::size_t size, std::size_t offset, FieldKind kind);

/// A floating value in general notation with six significant digits.
QString GeneralText(double value);
