// A seed decoder with only its two entry points, for tests. Each can be left out at compile time
// (-DFAKE_WITHOUT_<name>). Its seeds are text: a line "NAME CONTENT" for each file that comes out.

#include <cstdint>
#include <fstream>
#include <string>

#define FAKE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

std::uint32_t spanStart = 0;
std::uint32_t spanEnd = 0xFFFFFFFF;
int validResult = 0;
int parseResult = 0;
std::string calls;

} // namespace

#ifndef FAKE_WITHOUT_GetPgnssDataValidTime
FAKE_EXPORT int GetPgnssDataValidTime(const char* seed, std::uint32_t* start, std::uint32_t* end)
{
    calls += std::string("valid ") + seed + '\n';
    if (!std::ifstream(seed).is_open()) {
        return 17;
    }
    *start = spanStart;
    *end = spanEnd;
    return validResult;
}
#endif
#ifndef FAKE_WITHOUT_ParsePgnssData
FAKE_EXPORT int ParsePgnssData(const char* seed, const char* folder, std::uint32_t time, int flag)
{
    calls += std::string("parse ") + seed + ' ' + folder + ' ' + std::to_string(time) + ' ' +
             std::to_string(flag) + '\n';
    std::ifstream lines(seed);
    std::string name;
    std::string content;
    while (lines >> name >> content) {
        std::ofstream(std::string(folder) + '/' + name) << content;
    }
    return parseResult;
}
#endif

// What the test presses. Not part of a decoder.
FAKE_EXPORT const char* FakeDecoderCalls()
{
    return calls.c_str();
}
FAKE_EXPORT void FakeDecoderSpan(std::uint32_t start, std::uint32_t end)
{
    spanStart = start;
    spanEnd = end;
}
FAKE_EXPORT void FakeDecoderResults(int valid, int parse)
{
    validResult = valid;
    parseResult = parse;
}
