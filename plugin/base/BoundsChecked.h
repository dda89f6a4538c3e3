// SPDX-License-Identifier: MIT
#pragma once

#include <cstdarg>
#include <cstddef>

// The bounds-checked functions with their usual contract: on a violated bound nothing is read or written
// beyond it and a non-zero error comes back. The printf family returns -1 on failure and never the length
// that would have been; vsnprintf_s with a smaller `count` cuts and reports the length written.

/// Copies `count` bytes. 0 on success; a violated bound leaves `destination` zeroed.
int memcpy_s(void* destination, std::size_t destinationSize, const void* source, std::size_t count);

/// Copies a string with its NUL. 0 on success; a violated bound leaves an empty string.
int strcpy_s(char* destination, std::size_t destinationSize, const char* source);

/// Sets `count` bytes. 0 on success; a violated bound sets `destinationSize` bytes.
int memset_s(void* destination, std::size_t destinationSize, int value, std::size_t count);

/// Formats into `destination`; -1 when the text and its NUL do not fit.
int sprintf_s(char* destination, std::size_t destinationSize, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

/// Formats at most `count` characters into `destination`.
int vsnprintf_s(char* destination, std::size_t destinationSize, std::size_t count, const char* format,
                std::va_list arguments) __attribute__((format(printf, 4, 0)));
