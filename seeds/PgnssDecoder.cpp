// SPDX-License-Identifier: MIT
#include "seeds/PgnssDecoder.h"

#include "seeds/SeedFile.h"

#include <new>

using seeds::SeedError;

namespace {

constexpr int kOnlyMode = 1;

/// Runs an entry point's body; what it throws must not cross the boundary.
template <typename Body> int Guarded(Body body)
{
    try {
        return static_cast<int>(body());
    } catch (const std::bad_alloc&) {
        return static_cast<int>(SeedError::NoMemory);
    } catch (...) {
        // A path that the system cannot express.
        return static_cast<int>(SeedError::Argument);
    }
}

bool Empty(const char* text)
{
    return text == nullptr || *text == '\0';
}

} // namespace

int GetPgnssDataValidTime(const char* seedPath, std::uint32_t* validStart, std::uint32_t* validEnd)
{
    return Guarded([=] {
        if (Empty(seedPath) || validStart == nullptr || validEnd == nullptr) {
            return SeedError::Argument;
        }
        seeds::Seed seed;
        const SeedError error = seeds::ReadSeedFile(seedPath, seed);
        if (error == SeedError::None) {
            *validStart = seed.validStart;
            *validEnd = seed.validEnd;
        }
        return error;
    });
}

int ParsePgnssData(const char* seedPath, const char* outputDirectory, std::uint32_t time, int mode)
{
    return Guarded([=] {
        if (Empty(seedPath) || Empty(outputDirectory) || mode != kOnlyMode) {
            return SeedError::Argument;
        }
        seeds::Seed seed;
        std::vector<seeds::OutputFile> files;
        SeedError error = seeds::ReadSeedFile(seedPath, seed);
        if (error == SeedError::None) {
            error = seeds::ExpandSeed(seed, time, files);
        }
        return error == SeedError::None ? seeds::WriteFiles(outputDirectory, files) : error;
    });
}
