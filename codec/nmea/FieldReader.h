// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace codec {

/// A decimal number as it stands in a field: mantissa / 10^decimals. At most 15 digits count, so that the
/// division below is the correctly rounded value; further decimals are cut.
struct Decimal {
    bool present = false; ///< the field was not empty and held a number and nothing else
    std::int64_t mantissa = 0;
    int decimals = 0;

    double Value() const;
};

/// Walks the comma-separated fields of a sentence in place.
class FieldReader {
public:
    /// `begin` is the first byte of the first field, `end` the '*' of the checksum.
    FieldReader(const char* begin, const char* end) : m_next(begin), m_end(end) {}

    /// True while a field is left, also an empty one.
    bool HasField() const { return m_next <= m_end; }

    /// Moves past one field.
    void Skip();
    void Skip(int count);

    /// First character of a field, or NUL when it is empty or missing.
    char Letter();
    Decimal Number();
    /// A whole number; decimals are cut. `present` false leaves 0.
    int Integer(bool& present);
    int Integer();
    /// Start and length of a field.
    const char* Text(std::size_t& length);

    /// Fields left, counted without moving.
    int Count() const;

private:
    static bool IsDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

    const char* m_next;
    const char* m_end;
};

// Satellite lists are made of these.

inline void FieldReader::Skip()
{
    while (m_next < m_end && *m_next != ',') {
        ++m_next;
    }
    ++m_next;
}

inline char FieldReader::Letter()
{
    const char letter = m_next < m_end && *m_next != ',' ? *m_next : '\0';
    if (HasField()) {
        Skip();
    }
    return letter;
}

inline int FieldReader::Integer(bool& present)
{
    present = false;
    if (!HasField()) {
        return 0;
    }
    const char* p = m_next;
    const bool negative = p < m_end && *p == '-';
    if (p < m_end && (*p == '-' || *p == '+')) {
        ++p;
    }
    int value = 0;
    int digits = 0;
    for (; p < m_end && IsDigit(*p); ++p) {
        value = digits < 9 ? value * 10 + (*p - '0') : value;
        ++digits;
    }
    bool good = digits > 0 && digits <= 9;
    if (p < m_end && *p == '.') {
        ++p;
        while (p < m_end && IsDigit(*p)) {
            ++p;
        }
    }
    good = good && (p >= m_end || *p == ',');
    m_next = p;
    Skip();
    present = good;
    if (!good) {
        return 0;
    }
    return negative ? -value : value;
}

inline int FieldReader::Integer()
{
    bool present = false;
    return Integer(present);
}

} // namespace codec
