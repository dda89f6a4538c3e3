// A codec with only the exports, for tests: it records what it is told and calls back what it is asked to.
// Each export can be left out at compile time (-DFAKE_WITHOUT_<name>).

#include <cstdarg>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#define FAKE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using Callback = void (*)(const void*, int);
using LogHandler = void (*)(const char*, int, const char*, const char*, va_list);

struct Registered {
    std::uint32_t type;
    Callback callback;
};

Registered registered[64];
int registeredCount = 0;
LogHandler logHandler = nullptr;
std::string calls;
int encodeResult = 0;

void Note(const char* name, std::uint32_t value)
{
    calls += name;
    calls += ' ';
    calls += std::to_string(value);
    calls += '\n';
}

} // namespace

#ifndef FAKE_WITHOUT_InitGnssUtils
FAKE_EXPORT int InitGnssUtils()
{
    Note("InitGnssUtils", 0);
    const char* ordered = std::getenv("FAKE_INIT_RESULT");
    return ordered != nullptr ? ordered[0] - '0' : 0;
}
#endif
#ifndef FAKE_WITHOUT_RegGnssCallbacks
FAKE_EXPORT void RegGnssCallbacks(std::uint32_t type, void* callback)
{
    Note("RegGnssCallbacks", type);
    if (registeredCount < 64) {
        registered[registeredCount++] = {type, reinterpret_cast<Callback>(callback)};
    }
}
#endif
#ifndef FAKE_WITHOUT_RegLogHandle
FAKE_EXPORT void RegLogHandle(void* handler)
{
    Note("RegLogHandle", 0);
    logHandler = reinterpret_cast<LogHandler>(handler);
}
#endif
#ifndef FAKE_WITHOUT_GetLibVersion
FAKE_EXPORT int GetLibVersion()
{
    return 4711;
}
#endif
#ifndef FAKE_WITHOUT_SetChipType
FAKE_EXPORT void SetChipType(std::uint32_t product)
{
    Note("SetChipType", product);
}
#endif
#ifndef FAKE_WITHOUT_GnssDecode
FAKE_EXPORT void GnssDecode(const std::uint8_t*, std::uint32_t count)
{
    Note("GnssDecode", count);
}
#endif
#ifndef FAKE_WITHOUT_GnssEncode
// Gives the payload back as the frame, or the result that was ordered.
FAKE_EXPORT int GnssEncode(std::uint32_t id, const void* payload, std::uint32_t length, void* out,
                           std::uint32_t outSize)
{
    Note("GnssEncode", id);
    if (encodeResult != 0) {
        return encodeResult;
    }
    if (length > outSize) {
        return -1;
    }
    std::memcpy(out, payload, length);
    return static_cast<int>(length);
}
#endif
#ifndef FAKE_WITHOUT_GnssSleepSwitch
FAKE_EXPORT void GnssSleepSwitch(std::uint32_t flag)
{
    Note("GnssSleepSwitch", flag);
}
#endif
#ifndef FAKE_WITHOUT_Lla2Enu
FAKE_EXPORT void Lla2Enu(const double* reference, const double* position, double* enu)
{
    for (int i = 0; i < 3; ++i) {
        enu[i] = position[i] - reference[i];
    }
}
#endif
#ifndef FAKE_WITHOUT_DeinitGnss
FAKE_EXPORT void DeinitGnss(std::uint32_t flag)
{
    Note("DeinitGnss", flag);
}
#endif

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
    for (int i = 0; i < registeredCount; ++i) {
        if (registered[i].type == type) {
            registered[i].callback(data, length);
        }
    }
}
FAKE_EXPORT void FakeLog(const char* file, int line, const char* function, const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    if (logHandler != nullptr) {
        logHandler(file, line, function, format, arguments);
    }
    va_end(arguments);
}
