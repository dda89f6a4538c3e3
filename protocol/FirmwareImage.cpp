// SPDX-License-Identifier: MIT
#include "protocol/FirmwareImage.h"

#include "protocol/LinkFrame.h"

#include <algorithm>
#include <iterator>

namespace protocol {

bool FirmwareRecord::Terminates() const
{
    return message.size() >= std::size(kTerminatingStart) &&
           std::equal(std::begin(kTerminatingStart), std::end(kTerminatingStart), message.begin());
}

bool FirmwareImage::ReadHeader()
{
    char header[kImageHeaderSize];
    return m_source(header, sizeof header) == sizeof header;
}

bool FirmwareImage::Next(FirmwareRecord& record)
{
    std::uint8_t field[kImageLengthSize] = {};
    const std::size_t got = m_source(reinterpret_cast<char*>(field), sizeof field);
    if (got == 0) {
        return false;
    }
    // A lone byte at the end is the beginning of a record whose message is missing.
    const std::size_t length = ReadU16(field);
    record.skipped = got == sizeof field && length == 0;
    record.message.resize(got == sizeof field ? length : 0);
    if (!record.message.empty()) {
        record.message.resize(m_source(&record.message[0], length));
    }
    record.whole = got == sizeof field && record.message.size() == length;
    return true;
}

} // namespace protocol
