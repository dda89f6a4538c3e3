// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Numbers to text and back, whatever the process's locale is.

namespace receiver {

/// Appends `value` with exactly `decimals` digits behind the point and at least `width` digits before it.
void AppendFixed(std::string& out, double value, int decimals, int width = 1);

/// Appends `value` with at least `width` digits, padded with zeros.
void AppendInteger(std::string& out, std::int64_t value, int width = 1);

void AppendHexByte(std::string& out, std::uint8_t value, bool upperCase);

/// The whole text must be a finite number.
bool ParseDouble(std::string_view text, double& value);
bool ParseInteger(std::string_view text, std::int64_t& value);
bool ParseUnsigned64(std::string_view text, std::uint64_t& value);

/// Splits at every `separator`; an empty text gives one empty piece. Calls `each` with the pieces.
template <typename Each> void Split(std::string_view text, char separator, Each each)
{
    for (;;) {
        const std::size_t at = text.find(separator);
        each(text.substr(0, at));
        if (at == std::string_view::npos) {
            return;
        }
        text.remove_prefix(at + 1);
    }
}

} // namespace receiver
