// SPDX-License-Identifier: MIT
// A codec with only the exports, for tests: it records what it is told and calls back what it is asked to.
// An export is left out by giving it another name at compile time (-D<name>=...).

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#define FAKE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using Callback = void (*)(const void*, int);
using LogHandler = void (*)(const char*, int, const char*, const char*, va_list);

std::vector<std::pair<std::uint32_t, Callback>> registered;
LogHandler logHandler = nullptr;
std::string calls;
int encodeResult = 0;

void Note(const char* name, std::uint32_t value)
{
    calls += std::string(name) + ' ' + std::to_string(value) + '\n';
}

} // namespace

FAKE_EXPORT int InitGnssUtils()
{
    Note("InitGnssUtils", 0);
    const char* ordered = std::getenv("FAKE_INIT_RESULT");
    return ordered != nullptr ? ordered[0] - '0' : 0;
}
FAKE_EXPORT void RegGnssCallbacks(std::uint32_t type, void* callback)
{
    Note("RegGnssCallbacks", type);
    registered.emplace_back(type, reinterpret_cast<Callback>(callback));
}
FAKE_EXPORT void RegLogHandle(void* handler)
{
    Note("RegLogHandle", 0);
    logHandler = reinterpret_cast<LogHandler>(handler);
}
FAKE_EXPORT int GetLibVersion()
{
    return 4711;
}
FAKE_EXPORT void SetChipType(std::uint32_t product)
{
    Note("SetChipType", product);
}
FAKE_EXPORT void GnssDecode(const std::uint8_t*, std::uint32_t count)
{
    Note("GnssDecode", count);
}
// Gives the payload back as the frame, or the result that was ordered.
FAKE_EXPORT int GnssEncode(std::uint32_t id, const void* payload, std::uint32_t length, void* out,
                           std::uint32_t outSize)
{
    Note("GnssEncode", id);
    if (encodeResult != 0 || length > outSize) {
        return encodeResult != 0 ? encodeResult : -1;
    }
    std::memcpy(out, payload, length);
    return static_cast<int>(length);
}
FAKE_EXPORT void GnssSleepSwitch(std::uint32_t flag)
{
    Note("GnssSleepSwitch", flag);
}
FAKE_EXPORT void Lla2Enu(const double* reference, const double* position, double* enu)
{
    for (int i = 0; i < 3; ++i) {
        enu[i] = position[i] - reference[i];
    }
}
FAKE_EXPORT void DeinitGnss(std::uint32_t flag)
{
    Note("DeinitGnss", flag);
}

// What the test presses. Not part of a codec.
FAKE_EXPORT const char* FakeCalls()
{
    return calls.c_str();
}
FAKE_EXPORT void FakeSetEncodeResult(int result)
{
    encodeResult = result;
}
FAKE_EXPORT void FakeEmit(std::uint32_t type, const void* data, int length)
{
    for (std::size_t i = 0; i < registered.size(); ++i) {
        if (registered[i].first == type) {
            registered[i].second(data, length);
        }
    }
}
FAKE_EXPORT void FakeLog(const char* file, int line, const char* function, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    logHandler(file, line, function, format, arguments);
    va_end(arguments);
}
