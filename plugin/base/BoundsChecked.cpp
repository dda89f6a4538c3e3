// SPDX-License-Identifier: MIT
#include "base/BoundsChecked.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

int memcpy_s(void* destination, std::size_t destinationSize, const void* source, std::size_t count)
{
    if (count == 0) {
        return 0;
    }
    if (destination == nullptr) {
        return EINVAL;
    }
    if (source == nullptr || destinationSize < count) {
        std::memset(destination, 0, destinationSize);
        return source == nullptr ? EINVAL : ERANGE;
    }
    std::memcpy(destination, source, count);
    return 0;
}

int strcpy_s(char* destination, std::size_t destinationSize, const char* source)
{
    if (destination == nullptr || destinationSize == 0) {
        return EINVAL;
    }
    if (source == nullptr) {
        destination[0] = '\0';
        return EINVAL;
    }
    const std::size_t length = std::strlen(source);
    if (length >= destinationSize) {
        destination[0] = '\0';
        return ERANGE;
    }
    std::memcpy(destination, source, length + 1);
    return 0;
}

int memset_s(void* destination, std::size_t destinationSize, int value, std::size_t count)
{
    if (destination == nullptr) {
        return EINVAL;
    }
    const bool fits = count <= destinationSize;
    std::memset(destination, value, fits ? count : destinationSize);
    return fits ? 0 : ERANGE;
}

int sprintf_s(char* destination, std::size_t destinationSize, const char* format, ...)
{
    if (destination == nullptr || destinationSize == 0) {
        return -1;
    }
    if (format == nullptr) {
        destination[0] = '\0';
        return -1;
    }
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(destination, destinationSize, format, arguments);
    va_end(arguments);
    if (length < 0 || static_cast<std::size_t>(length) >= destinationSize) {
        destination[0] = '\0';
        return -1;
    }
    return length;
}

int vsnprintf_s(char* destination, std::size_t destinationSize, std::size_t count, const char* format,
                std::va_list arguments)
{
    if (destination == nullptr || destinationSize == 0) {
        return -1;
    }
    if (format == nullptr) {
        destination[0] = '\0';
        return -1;
    }
    const std::size_t room = count < destinationSize ? count + 1 : destinationSize;
    const int length = std::vsnprintf(destination, room, format, arguments);
    if (length < 0) {
        destination[0] = '\0';
        return -1;
    }
    if (static_cast<std::size_t>(length) < room) {
        return length;
    }
    if (room == destinationSize && count >= destinationSize) {
        // The caller asked for more than the buffer holds: that is an error, not a cut.
        destination[0] = '\0';
        return -1;
    }
    return static_cast<int>(room - 1);
}
