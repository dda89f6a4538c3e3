// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/LinkFrame.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace codec {

/// What a byte means to the scanner.
enum ByteClass : std::uint8_t { Plain, Control, Cr, Lf, Dollar, Plus, Flag };

struct ByteClasses {
    std::uint8_t of[256] = {};
    constexpr ByteClasses()
    {
        for (int c = 0; c < 0x20; ++c) {
            of[c] = Control;
        }
        Set(0x7F, Control);
        Set('$', Dollar);
        Set('+', Plus);
        Set(protocol::kFrameFlag, Flag);
        Set('\r', Cr);
        Set('\n', Lf);
    }
    constexpr void Set(std::uint8_t byte, ByteClass byteClass) { of[byte] = byteClass; }
};
constexpr ByteClasses kByteClasses;

/// What the body of a sentence holds, between the '$' and the checksum's '*'.
struct BodyScan {
    std::uint8_t checksum = 0;
    bool special = false; ///< a byte that needs the byte-wise road
    bool plus = false;
    bool star = false;
};

// Every sentence goes through this, so it is there to be inlined.

/// Sixteen bytes at a time; gcc and clang make vector instructions of it on every machine that has them.
using Bytes16 = std::uint8_t __attribute__((vector_size(16)));

struct BodyScanner {
    Bytes16 sum{};
    Bytes16 special{};
    Bytes16 plus{};
    Bytes16 star{};

    void Take(const Bytes16& bytes)
    {
        sum ^= bytes;
        special |= static_cast<Bytes16>(bytes < 0x20) | static_cast<Bytes16>(bytes == '$') |
                   static_cast<Bytes16>((bytes | 1) == 0x7F);
        plus |= static_cast<Bytes16>(bytes == '+');
        star |= static_cast<Bytes16>(bytes == '*');
    }
    static std::uint64_t Halves(const Bytes16& bytes, bool folded)
    {
        std::uint64_t half[2];
        std::memcpy(half, &bytes, sizeof half);
        return folded ? half[0] ^ half[1] : half[0] | half[1];
    }
};

inline BodyScan ScanBody(const std::uint8_t* p, std::size_t length)
{
    BodyScanner scanner;
    Bytes16 bytes;
    for (; length >= sizeof bytes; length -= sizeof bytes, p += sizeof bytes) {
        std::memcpy(&bytes, p, sizeof bytes);
        scanner.Take(bytes);
    }
    // The rest is filled up with a letter, whose share is taken out of the checksum again.
    constexpr std::uint8_t filler = 'A';
    std::memset(&bytes, filler, sizeof bytes);
    std::memcpy(&bytes, p, length);
    scanner.Take(bytes);
    std::uint64_t sum = BodyScanner::Halves(scanner.sum, true);
    sum ^= sum >> 32;
    sum ^= sum >> 16;
    sum ^= sum >> 8;
    const std::uint8_t share = (sizeof bytes - length) % 2 == 0 ? 0 : filler;
    return {static_cast<std::uint8_t>(sum ^ share), BodyScanner::Halves(scanner.special, false) != 0,
            BodyScanner::Halves(scanner.plus, false) != 0, BodyScanner::Halves(scanner.star, false) != 0};
}

} // namespace codec
