// SPDX-License-Identifier: MIT
#pragma once

#include "codec/nmea/FieldReader.h"

#include <algorithm>
#include <cstdint>

namespace codec {

inline std::uint8_t ToByte(int value)
{
    return static_cast<std::uint8_t>(std::clamp(value, 0, 255));
}

/// False, with `value` as it was, when the field holds no number.
inline bool ReadFloat(FieldReader& fields, float& value)
{
    const Decimal number = fields.Number();
    if (number.present) {
        value = static_cast<float>(number.Value());
    }
    return number.present;
}

} // namespace codec
