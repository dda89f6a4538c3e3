// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/ByteImage.h"

#include <string_view>

namespace protocol {

/// The check of the codec's images over a text.
inline std::uint32_t Crc32(std::string_view bytes)
{
    return protocol::Crc32(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace protocol
