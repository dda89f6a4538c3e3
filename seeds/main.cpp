// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "receiver/TextNumbers.h"
#include "receiver/Utc.h"
#include "seeds/ModelSky.h"
#include "seeds/SampleScenes.h"
#include "seeds/SeedFile.h"

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace {

using cli::Arguments;
using seeds::SeedError;

constexpr int kUsage = 64;
constexpr std::int64_t kDay = 86400;

constexpr char kHelp[] =
    R"(pgnss-seed: writes and reads seeds of predicted assistance data

usage: pgnss-seed write FILE [DAYS [UTC]]   a seed of the virtual receiver's sky from UTC on
                                            (7 days from an hour before now)
       pgnss-seed show FILE                 tells a seed's validity and content
       pgnss-seed expand FILE DIR [UTC]     writes the items for a moment (now) into a folder
       pgnss-seed scenes DIR                writes the sample scene library into a folder

UTC is written as 2026-03-14T09:26:53. The exit status is the decoder's error code; 64 for bad usage.
)";

bool TakeTime(const Arguments& words, std::int64_t usual, std::int64_t& seconds)
{
    receiver::Millis utc = usual * 1000;
    if (words.size() > 2 && !receiver::ParseUtc(words[2], utc)) {
        return false;
    }
    seconds = utc / 1000;
    return true;
}

int Report(SeedError error)
{
    if (error != SeedError::None) {
        std::fprintf(stderr, "pgnss-seed: %s (%d)\n", seeds::TextOf(error), static_cast<int>(error));
    }
    return static_cast<int>(error);
}

std::string UtcText(std::uint32_t seconds)
{
    const receiver::UtcFields f = receiver::ToFields(seconds * receiver::Millis{1000});
    std::string text;
    const char* behind[] = {"-", "-", "T", ":", ":", "Z"};
    const int values[] = {f.year, f.month, f.day, f.hour, f.minute, f.second};
    for (std::size_t i = 0; i < 6; ++i) {
        receiver::AppendInteger(text, values[i], i == 0 ? 4 : 2);
        text += behind[i];
    }
    return text;
}

int Write(const Arguments& words, std::int64_t now)
{
    std::int64_t days = 7;
    std::int64_t start = 0;
    if ((words.size() > 1 && !receiver::ParseInteger(words[1], days)) || days < 1 || days > 60 ||
        !TakeTime(words, now - 3600, start)) {
        return kUsage;
    }
    if (start < seeds::kEarliestSeedTime || start + days * kDay > seeds::kLatestSeedTime) {
        return Report(SeedError::Span);
    }
    const seeds::Seed seed =
        seeds::MakeModelSeed(static_cast<std::uint32_t>(now), static_cast<std::uint32_t>(start),
                             static_cast<std::uint32_t>(start + days * kDay));
    return Report(seeds::WriteWholeFile(words[0], seeds::PackSeed(seed)) ? SeedError::None
                                                                         : SeedError::CannotWrite);
}

int Show(const Arguments& words)
{
    seeds::Seed seed;
    const SeedError error = seeds::ReadSeedFile(words[0], seed);
    if (error != SeedError::None) {
        return Report(error);
    }
    std::printf("valid %s to %s\n", UtcText(seed.validStart).c_str(), UtcText(seed.validEnd).c_str());
    for (std::size_t i = 0; i < protocol::kAssistSystems; ++i) {
        const auto& sets = seed.systems[i].sets;
        std::printf("%s: %zu sets of orbits, %zu satellites in the first\n",
                    seeds::FilePrefix(static_cast<protocol::AssistSystem>(i)), sets.size(),
                    sets.front().orbits.size());
    }
    return 0;
}

int Expand(const Arguments& words, std::int64_t now)
{
    std::int64_t time = 0;
    if (!TakeTime(words, now, time)) {
        return kUsage;
    }
    seeds::Seed seed;
    std::vector<seeds::OutputFile> files;
    SeedError error = seeds::ReadSeedFile(words[0], seed);
    if (error == SeedError::None) {
        const bool tells = time >= 0 && time <= seeds::kLatestSeedTime;
        error = tells ? seeds::ExpandSeed(seed, static_cast<std::uint32_t>(time), files) : SeedError::OutsideSpan;
    }
    return Report(error == SeedError::None ? seeds::WriteFiles(words[1], files) : error);
}

int WriteScenes(const Arguments& words)
{
    return Report(seeds::WriteSampleScenes(words[0]));
}

} // namespace

int main(int argc, char** argv)
{
    const std::int64_t now = static_cast<std::int64_t>(std::time(nullptr));
    return cli::RunCommand(kHelp, kUsage,
                           {{"write", 1, 3, [now](const Arguments& words) { return Write(words, now); }},
                            {"show", 1, 1, Show},
                            {"expand", 2, 3, [now](const Arguments& words) { return Expand(words, now); }},
                            {"scenes", 1, 1, WriteScenes}},
                           argc, argv);
}
