// SPDX-License-Identifier: MIT
#include "receiver/AtCommands.h"

#include "protocol/CommandFrames.h"
#include "receiver/TextNumbers.h"

#include <string_view>
#include <vector>

namespace receiver {

void CarryOutAtLine(const std::string& line, const AtFrameHandler& handleFrame, const AtAnswer& answer)
{
    const std::string_view text(line);
    const std::string_view hexPrefix(protocol::kAtHexCommand);
    const std::string start = std::string(protocol::kAtStartPrefix) + '=';
    if (text.substr(0, hexPrefix.size()) == hexPrefix) {
        const std::string_view digits = text.substr(hexPrefix.size());
        std::vector<std::uint8_t> bytes;
        const auto digit = [](char c) {
            return c >= '0' && c <= '9'   ? c - '0'
                   : c >= 'a' && c <= 'f' ? c - 'a' + 10
                   : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                          : -1;
        };
        bool good = digits.size() % 2 == 0;
        for (std::size_t i = 0; good && i < digits.size(); i += 2) {
            good = digit(digits[i]) >= 0 && digit(digits[i + 1]) >= 0;
            bytes.push_back(static_cast<std::uint8_t>(digit(digits[i]) * 16 + digit(digits[i + 1])));
        }
        protocol::FrameView frame;
        if (!good || !protocol::ReadFrame(bytes.data(), bytes.size(), frame)) {
            answer("ERROR\r\n");
            return;
        }
        handleFrame(frame);
        return;
    }
    // The other forms have a frame of the same meaning, whose acknowledgement follows the "OK".
    if (text == "AT") {
        answer("OK\r\n");
        return;
    }
    protocol::FrameView frame;
    std::uint8_t payload[protocol::LengthOf(protocol::kStartFields)] = {};
    if (text == protocol::kAtStop) {
        frame.id = protocol::CmdStop;
    } else if (text.substr(0, start.size()) == start) {
        int numbers = 0;
        bool good = true;
        Split(text.substr(start.size()), ',', [&](std::string_view piece) {
            std::int64_t value = 0;
            good = good && ParseInteger(piece, value);
            ++numbers;
        });
        if (!good || numbers != 4) {
            answer("ERROR\r\n");
            return;
        }
        frame.id = protocol::CmdStart;
        frame.word1 = protocol::kStartWord;
        frame.payload = payload;
        frame.payloadLength = sizeof payload;
    } else {
        answer("ERROR\r\n");
        return;
    }
    answer("OK\r\n");
    handleFrame(frame);
}

} // namespace receiver
