// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Crc32.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// What the virtual receiver's loader understands: the messages in the records of a firmware image. Shared with the
// image tool; docs/firmware-image.md describes them.
//
//   offset 0     "VLDR"
//          4     u8    kind
//          5     u8    0
//          6     u16   payload length n
//          8     n     payload
//          8+n   u32   CRC-32 of everything before it
//
// All fields are little-endian. The terminating message stands outside this form.

namespace protocol {

enum class LoaderMessage : std::uint8_t {
    Begin = 1, ///< u32 size of the firmware, then its version as text
    Data = 2,  ///< u32 offset, then the bytes from there on
    End = 3,   ///< u32 CRC-32 of the firmware
};

constexpr std::string_view kLoaderMagic = "VLDR";
constexpr std::string_view kLoaderQuit = "QUIT ";
constexpr std::size_t kLoaderHeaderSize = 8;
constexpr std::size_t kLoaderCheckSize = 4;
constexpr std::size_t kLoaderFieldSize = 4;          ///< the number that each payload begins with
constexpr std::size_t kLongestLoaderMessage = 65535; ///< what a record of an image holds
constexpr std::size_t kLongestFirmwareVersion = 64;

// What it answers. Every answer has two bytes.
constexpr std::string_view kAnswerBegin = "CG";
constexpr std::string_view kAnswerData = "C\x06";
constexpr std::string_view kAnswerEnd = "G\x06";
constexpr std::string_view kAnswerRefused = "C\x15";

inline void AppendU16(std::string& out, std::uint16_t value)
{
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>(value >> 8));
}

inline void AppendU32(std::string& out, std::uint32_t value)
{
    AppendU16(out, static_cast<std::uint16_t>(value & 0xFFFF));
    AppendU16(out, static_cast<std::uint16_t>(value >> 16));
}

inline std::uint32_t U32At(std::string_view bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | static_cast<std::uint8_t>(bytes[at + i]);
    }
    return value;
}

/// A whole message; `rest` must leave it within kLongestLoaderMessage.
inline std::string MakeLoaderMessage(LoaderMessage kind, std::uint32_t number, std::string_view rest = {})
{
    std::string message(kLoaderMagic);
    message.push_back(static_cast<char>(kind));
    message.push_back('\0');
    AppendU16(message, static_cast<std::uint16_t>(kLoaderFieldSize + rest.size()));
    AppendU32(message, number);
    message += rest;
    AppendU32(message, Crc32(message));
    return message;
}

} // namespace protocol
