// SPDX-License-Identifier: MIT
#pragma once

namespace seeds {

/// What the decoder's entry points return. docs/seed-format.md lists the numbers; they never change.
enum class SeedError : int {
    None = 0,
    Argument = 1,     ///< a null or empty argument, or another mode than 1
    CannotRead = 2,   ///< the seed does not exist or cannot be read
    TooShort = 3,     ///< the file ends before its header or before the length that the header tells
    NoSeed = 4,       ///< the first bytes are not a seed's
    Version = 5,      ///< a seed of another version
    Header = 6,       ///< the header's check is wrong
    TooLong = 7,      ///< bytes behind the length that the header tells, or a file beyond 16 MiB
    Check = 8,        ///< the check of the whole file is wrong
    Section = 9,      ///< a section of unknown type or system, of wrong length, or one that comes twice
    Value = 10,       ///< a value is out of range
    Span = 11,        ///< the validity is empty, too long, or not in the time that file names can tell
    Missing = 12,     ///< a section is missing, or the orbits do not cover the validity
    OutsideSpan = 13, ///< the asked time is outside the validity
    NoDirectory = 14, ///< the output directory does not exist
    CannotWrite = 15, ///< an output file cannot be written; none of this call is left
    NoMemory = 16,
};

/// One line for a person.
const char* TextOf(SeedError error);

} // namespace seeds
