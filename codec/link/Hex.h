// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace codec {

/// Value of a hexadecimal digit of either case, or -1.
constexpr int HexDigit(std::uint8_t c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace codec
