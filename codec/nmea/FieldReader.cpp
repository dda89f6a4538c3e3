// SPDX-License-Identifier: MIT
#include "codec/nmea/FieldReader.h"

namespace codec {

namespace {

constexpr int kMaxDigits = 15;

constexpr double kPowersOfTen[kMaxDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

} // namespace

double Decimal::Value() const
{
    return static_cast<double>(mantissa) / kPowersOfTen[decimals];
}

void FieldReader::Skip(int count)
{
    for (int i = 0; i < count && HasField(); ++i) {
        Skip();
    }
}

const char* FieldReader::Text(std::size_t& length)
{
    const char* begin = m_next;
    if (!HasField()) {
        length = 0;
        return m_end;
    }
    Skip();
    length = static_cast<std::size_t>(m_next - 1 - begin);
    return begin;
}

Decimal FieldReader::Number()
{
    Decimal number;
    if (!HasField()) {
        return number;
    }
    const char* p = m_next;
    bool negative = false;
    if (p < m_end && (*p == '-' || *p == '+')) {
        negative = *p == '-';
        ++p;
    }
    int digits = 0;
    int significant = 0;
    bool overflow = false;
    while (p < m_end && IsDigit(*p)) {
        number.mantissa = number.mantissa * 10 + (*p - '0');
        significant += number.mantissa != 0 ? 1 : 0;
        overflow = overflow || significant > kMaxDigits;
        if (overflow) {
            number.mantissa = 0;
        }
        ++digits;
        ++p;
    }
    if (p < m_end && *p == '.') {
        ++p;
        while (p < m_end && IsDigit(*p)) {
            if (significant < kMaxDigits && number.decimals < kMaxDigits) {
                number.mantissa = number.mantissa * 10 + (*p - '0');
                significant += number.mantissa != 0 ? 1 : 0;
                ++number.decimals;
            }
            ++digits;
            ++p;
        }
    }
    const bool whole = p >= m_end || *p == ',';
    m_next = p;
    Skip();
    if (!whole || digits == 0 || overflow) {
        return {};
    }
    number.present = true;
    if (negative) {
        number.mantissa = -number.mantissa;
    }
    return number;
}

int FieldReader::Count() const
{
    if (!HasField()) {
        return 0;
    }
    int count = 1;
    for (const char* p = m_next; p < m_end; ++p) {
        count += *p == ',' ? 1 : 0;
    }
    return count;
}

} // namespace codec
