#pragma once

#include "protocol/ByteImage.h"

#include <string_view>

namespace vrx {

/// The check of the codec's images over a text.
inline std::uint32_t Crc32(std::string_view bytes)
{
    return gnss::Crc32(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace vrx
