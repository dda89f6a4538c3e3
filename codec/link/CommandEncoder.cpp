// SPDX-License-Identifier: MIT
#include "codec/link/CommandEncoder.h"

#include "codec/link/Hex.h"
#include "protocol/CommandFrames.h"

#include <climits>
#include <cstring>

namespace codec {

namespace {

bool BeginsWith(const std::uint8_t* data, std::size_t length, const char* text)
{
    const std::size_t size = std::strlen(text);
    return length >= size && std::memcmp(data, text, size) == 0;
}

SentCommand Describe(std::uint16_t id, std::uint16_t word1, std::size_t payloadLength)
{
    SentCommand command;
    command.found = true;
    command.package.type = protocol::kFrameClass;
    command.package.direction = protocol::PackageSent;
    command.package.subType = id;
    command.package.length = static_cast<std::uint16_t>(payloadLength);
    command.start =
        id == protocol::CmdStart || (id == protocol::CmdConstellations &&
                                     (word1 == protocol::kHotStartWord || word1 == protocol::kColdStartWord));
    return command;
}

/// The header of a frame in AT form; its length is that of the digits.
SentCommand DescribeHex(const std::uint8_t* digits, std::size_t count)
{
    std::uint8_t header[protocol::kFrameHeaderSize];
    if (count < 2 * protocol::kFrameOverhead || count % 2 != 0) {
        return {};
    }
    for (std::size_t i = 0; i < protocol::kFrameHeaderSize; ++i) {
        header[i] = static_cast<std::uint8_t>(HexDigit(digits[2 * i]) << 4 | HexDigit(digits[2 * i + 1]));
    }
    if (protocol::ClaimedFrameLength(header, sizeof header) != count / 2) {
        return {};
    }
    return Describe(protocol::ReadU16(header + protocol::kFrameIdAt),
                    protocol::ReadU16(header + protocol::kFrameWord1At),
                    protocol::ReadU16(header + protocol::kFrameLengthAt));
}

} // namespace

int EncodeCommand(std::uint32_t id, const void* payload, std::size_t payloadLength, void* out, std::size_t outSize)
{
    if (out == nullptr || (payload == nullptr && payloadLength > 0)) {
        return -1;
    }
    if (id == protocol::CmdPassThrough) {
        if (payloadLength == 0 || payloadLength > outSize || payloadLength > INT_MAX) {
            return -1;
        }
        std::memmove(out, payload, payloadLength);
        return static_cast<int>(payloadLength);
    }
    const protocol::CommandForm* form = protocol::FindCommand(id);
    if (form == nullptr || payloadLength > protocol::kMaxFramePayload) {
        return -1;
    }
    const std::size_t length = protocol::WriteFrame(static_cast<std::uint8_t*>(out), outSize, form->id, 0,
                                                    form->word2, payload, payloadLength);
    return length == 0 ? -1 : static_cast<int>(length);
}

SentCommand ReadSentCommand(const std::uint8_t*& data, std::size_t& length)
{
    SentCommand command;
    std::size_t used = length;
    protocol::FrameView frame;
    const std::size_t claimed = protocol::ClaimedFrameLength(data, length);
    if (claimed != 0 && claimed <= length && protocol::ReadFrame(data, claimed, frame)) {
        command = Describe(frame.id, frame.word1, frame.payloadLength);
        used = claimed;
    } else if (BeginsWith(data, length, "AT+")) {
        const void* lineFeed = std::memchr(data, '\n', length);
        if (lineFeed != nullptr) {
            used = static_cast<std::size_t>(static_cast<const std::uint8_t*>(lineFeed) - data) + 1;
        }
        if (BeginsWith(data, used, protocol::kAtHexCommand)) {
            constexpr std::size_t prefix = sizeof protocol::kAtHexCommand - 1;
            std::size_t digits = 0;
            while (prefix + digits < used && HexDigit(data[prefix + digits]) >= 0) {
                ++digits;
            }
            command = DescribeHex(data + prefix, digits);
        } else if (BeginsWith(data, used, protocol::kAtStartPrefix)) {
            command = Describe(protocol::CmdStart, protocol::kStartWord, 0);
        } else if (BeginsWith(data, used, protocol::kAtStop)) {
            command = Describe(protocol::CmdStop, 0, 0);
        }
    }
    data += used;
    length -= used;
    return command;
}

} // namespace codec
