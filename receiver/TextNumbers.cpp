// SPDX-License-Identifier: MIT
#include "receiver/TextNumbers.h"

#include <charconv>
#include <cmath>

namespace receiver {

void AppendInteger(std::string& out, std::int64_t value, int width)
{
    char digits[24];
    const std::uint64_t magnitude =
        value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
    const auto end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
    const int length = static_cast<int>(end - digits);
    if (value < 0) {
        out.push_back('-');
    }
    if (length < width) {
        out.append(static_cast<std::size_t>(width - length), '0');
    }
    out.append(digits, end);
}

void AppendFixed(std::string& out, double value, int decimals, int width)
{
    std::int64_t scale = 1;
    for (int i = 0; i < decimals; ++i) {
        scale *= 10;
    }
    const std::int64_t scaled = std::llround(value * static_cast<double>(scale));
    const std::int64_t magnitude = scaled < 0 ? -scaled : scaled;
    if (scaled < 0) {
        out.push_back('-');
    }
    AppendInteger(out, magnitude / scale, width);
    if (decimals > 0) {
        out.push_back('.');
        AppendInteger(out, magnitude % scale, decimals);
    }
}

void AppendHexByte(std::string& out, std::uint8_t value, bool upperCase)
{
    const char* digits = upperCase ? "0123456789ABCDEF" : "0123456789abcdef";
    out.push_back(digits[value >> 4]);
    out.push_back(digits[value & 15]);
}

namespace {

template <typename Number> bool Parse(std::string_view text, Number& value)
{
    Number parsed{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        return false;
    }
    value = parsed;
    return true;
}

} // namespace

bool ParseDouble(std::string_view text, double& value)
{
    double parsed = 0.0;
    if (!Parse(text, parsed) || !std::isfinite(parsed)) {
        return false;
    }
    value = parsed;
    return true;
}

bool ParseInteger(std::string_view text, std::int64_t& value)
{
    return Parse(text, value);
}

bool ParseUnsigned64(std::string_view text, std::uint64_t& value)
{
    return Parse(text, value);
}

} // namespace receiver
