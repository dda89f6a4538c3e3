// SPDX-License-Identifier: MIT
#include "tools/log/Numbers.h"

#include <charconv>
#include <cmath>

namespace tools {

namespace {

constexpr char kReplacement[] = "\xEF\xBF\xBD"; ///< U+FFFD

/// Length of the well-formed UTF-8 character at `i`, or 0.
std::size_t Utf8Length(std::string_view bytes, std::size_t i)
{
    const auto at = [&](std::size_t k) { return static_cast<unsigned char>(k < bytes.size() ? bytes[k] : 0); };
    const unsigned char first = at(i);
    if (first < 0x80) {
        return 1;
    }
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4) {
        return 0;
    }
    for (std::size_t k = 1; k < length; ++k) {
        if ((at(i + k) & 0xC0) != 0x80) {
            return 0;
        }
    }
    const unsigned char second = at(i + 1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool outside = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
    return overlong || outside ? 0 : length;
}

template <typename EscapeAscii> std::string Escaped(std::string_view bytes, EscapeAscii escape)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = Utf8Length(bytes, i);
        if (length == 1) {
            escape(text, bytes[i]);
        } else if (length == 0) {
            text += kReplacement;
        } else {
            text.append(bytes, i, length);
        }
        i += length == 0 ? 1 : length;
    }
    return text;
}

} // namespace

void AppendFixed(std::string& text, double value, int decimals)
{
    char digits[400];
    const std::to_chars_result result =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, decimals);
    std::string_view number(digits, static_cast<std::size_t>(result.ptr - digits));
    if (number.substr(0, 1) == "-" && number.find_first_of("123456789in") == std::string_view::npos) {
        number.remove_prefix(1);
    }
    text += number;
}

void AppendPadded(std::string& text, unsigned value, int digits)
{
    const std::string number = std::to_string(value);
    for (int i = static_cast<int>(number.size()); i < digits; ++i) {
        text += '0';
    }
    text += number;
}

std::string JsonEscaped(std::string_view bytes)
{
    return Escaped(bytes, [](std::string& text, char c) {
        constexpr char hex[] = "0123456789abcdef";
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            text += "\\u00";
            text += hex[c >> 4];
            text += hex[c & 0xF];
        } else {
            text += c;
        }
    });
}

std::string XmlEscaped(std::string_view bytes)
{
    return Escaped(bytes, [](std::string& text, char c) {
        if (c == '&') {
            text += "&amp;";
        } else if (c == '<') {
            text += "&lt;";
        } else if (c == '>') {
            text += "&gt;";
        } else if (static_cast<unsigned char>(c) < 0x20) {
            text += kReplacement;
        } else {
            text += c;
        }
    });
}

} // namespace tools
