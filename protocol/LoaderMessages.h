// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Crc32.h"
#include "protocol/FieldList.h"

#include <array>
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

struct LoaderHeader {
    std::array<char, 4> magic = {{'V', 'L', 'D', 'R'}};
    LoaderMessage kind{};
    std::uint16_t length = 0; ///< of the payload
};
constexpr auto kLoaderHeaderFields =
    Fields(&LoaderHeader::magic, &LoaderHeader::kind, Zeros<1>(), &LoaderHeader::length);
constexpr std::size_t kLoaderHeaderSize = LengthOf(kLoaderHeaderFields);
static_assert(kLoaderHeaderSize == 8 && LastOffset(kLoaderHeaderFields) == 6 && kLoaderMagic.size() == 4);

constexpr std::size_t kLoaderCheckSize = sizeof(std::uint32_t);
constexpr std::size_t kLoaderFieldSize = sizeof(std::uint32_t); ///< the number that each payload begins with
constexpr std::size_t kLongestLoaderMessage = 65535;            ///< what a record of an image holds
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

/// The header of a message of at least kLoaderHeaderSize bytes.
inline LoaderHeader ReadLoaderHeader(std::string_view message)
{
    return Unpacked<LoaderHeader>(message.data(), message.size(), kLoaderHeaderFields);
}

/// A whole message; `rest` must leave it within kLongestLoaderMessage.
inline std::string MakeLoaderMessage(LoaderMessage kind, std::uint32_t number, std::string_view rest = {})
{
    LoaderHeader header;
    header.kind = kind;
    header.length = static_cast<std::uint16_t>(kLoaderFieldSize + rest.size());
    const std::vector<std::uint8_t> bytes = Packed(header, kLoaderHeaderFields);
    std::string message(bytes.begin(), bytes.end());
    AppendU32(message, number);
    message += rest;
    AppendU32(message, Crc32(message));
    return message;
}

} // namespace protocol
