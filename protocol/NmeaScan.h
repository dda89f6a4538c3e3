// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace protocol {

// Finds well-shaped NMEA sentences in bytes of any kind. Free of Qt: the windows and the command line share it.
// It looks at the shape alone: no checksum is computed, and the bytes inside a sentence may have any value.

constexpr std::size_t kNmeaShortest = 10; ///< bytes of the shortest sentence, line end included
constexpr std::size_t kNmeaLongest = 127; ///< of the longest; what goes on beyond is dropped

/// A sentence of which only the beginning has been seen. Starts zeroed.
struct NmeaBuff {
    char text[kNmeaLongest + 1];
    std::uint32_t length; ///< bytes of `text` in use, 0 outside a sentence
};
static_assert(sizeof(NmeaBuff) == 132);

/// A sentence from its '$' to its LF. Not NUL-terminated; valid until the scan goes on or the input goes.
struct NmeaSentence {
    const char* text = nullptr;
    std::size_t length = 0;
};

/// Tells whether a sentence of `length` bytes, at least kNmeaShortest, whose last byte is LF is complete.
using NmeaEnding = bool (*)(const char* text, std::size_t length);

/// It ends in CR LF.
bool EndsInLine(const char* text, std::size_t length);
/// It ends in '*', two bytes of any value, CR and LF.
bool EndsInChecksum(const char* text, std::size_t length);

/// Reads on from `p`, which moves, to the next sentence, and tells whether there was one before `end`.
/// `buff` carries a sentence from one block of input to the next; what is found depends on the bytes alone
/// and not on their division into blocks. A '$' inside a sentence begins a new one and drops the old.
bool NextNmeaSentence(NmeaBuff& buff, const char*& p, const char* end, NmeaEnding ending, NmeaSentence& sentence);

} // namespace protocol
