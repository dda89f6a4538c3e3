// SPDX-License-Identifier: MIT
#include "seeds/SeedErrors.h"

namespace seeds {

const char* TextOf(SeedError error)
{
    switch (error) {
    case SeedError::None:
        return "good";
    case SeedError::Argument:
        return "bad argument";
    case SeedError::CannotRead:
        return "the seed cannot be read";
    case SeedError::TooShort:
        return "the seed is cut short";
    case SeedError::NoSeed:
        return "this is no seed";
    case SeedError::Version:
        return "the seed is of another version";
    case SeedError::Header:
        return "the seed's header is damaged";
    case SeedError::TooLong:
        return "the seed is too long";
    case SeedError::Check:
        return "the seed is damaged";
    case SeedError::Section:
        return "the seed has a bad section";
    case SeedError::Value:
        return "the seed has a value out of range";
    case SeedError::Span:
        return "the seed's validity is impossible";
    case SeedError::Missing:
        return "the seed is incomplete";
    case SeedError::OutsideSpan:
        return "the time is outside the seed's validity";
    case SeedError::NoDirectory:
        return "the output directory does not exist";
    case SeedError::CannotWrite:
        return "the output cannot be written";
    case SeedError::NoMemory:
        return "out of memory";
    }
    return "unknown error";
}

} // namespace seeds
