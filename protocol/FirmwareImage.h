// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace protocol {

// The firmware image file: a script of messages for the chip's loader. docs/firmware-image.md describes it.
// Free of Qt: the windows, the image tool and the tests share it.
//
//   offset 0   4 bytes   header, of any content
//          4   u16       length L of the first record's message, little-endian
//          6   L bytes   the message
//              ...       further records to the end of the file

constexpr std::size_t kImageHeaderSize = 4;
constexpr std::size_t kImageLengthSize = sizeof(std::uint16_t);
static_assert(kImageHeaderSize == 4 && kImageLengthSize == 2);
constexpr char kTerminatingStart[] = {0x51, 0x55, 0x49, 0x54, 0x20};

/// Reads up to `size` bytes into `out` and returns how many there were.
using ImageSource = std::function<std::size_t(char* out, std::size_t size)>;

struct FirmwareRecord {
    std::string message;  ///< what the file really holds of it, also when its length promises more
    bool skipped = false; ///< its length is written as 0: nothing is sent and nothing answered
    bool whole = true;    ///< false when the file ends inside the record

    /// The message that makes the chip leave its loader: it is sent, never answered, and ends the load.
    bool Terminates() const;
};

/// Walks an image from its beginning to the end of the file.
class FirmwareImage {
public:
    explicit FirmwareImage(ImageSource source) : m_source(std::move(source)) {}

    /// Passes over the header; false when the file has fewer bytes.
    bool ReadHeader();

    /// The next record; false at the end of the file. A file that ends inside a record gives what is there of it.
    bool Next(FirmwareRecord& record);

private:
    ImageSource m_source;
};

} // namespace protocol
