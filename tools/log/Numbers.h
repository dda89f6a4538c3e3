// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace tools {

// Numbers as text, the same in every locale.

/// With exactly `decimals` decimals; "-0.00" becomes "0.00".
void AppendFixed(std::string& text, double value, int decimals);

/// A whole number with leading zeros to `digits` digits.
void AppendPadded(std::string& text, unsigned value, int digits);

/// The content of a JSON string: quotes, backslashes and control characters escaped, and what is no UTF-8
/// replaced, so that the result is valid whatever the bytes are.
std::string JsonEscaped(std::string_view bytes);

/// The content of an XML element, with the same care.
std::string XmlEscaped(std::string_view bytes);

} // namespace tools
