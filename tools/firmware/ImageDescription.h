// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Makes an image file out of its description, a text with one command a line: docs/firmware-image.md lists them.
/// On failure `error` says what is wrong and in which line.
bool MakeImage(std::string_view description, std::string& image, std::string& error);
