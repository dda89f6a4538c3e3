// SPDX-License-Identifier: MIT
#pragma once

// The boundary of the codec: these ten functions and nothing else are exported. Calls before InitGnssUtils
// and after DeinitGnss are harmless and do nothing.

#include <cstdint>

#define GNSS_UTILS_EXPORT __attribute__((visibility("default")))

extern "C" {

/// Brings the codec into its first state: no callbacks, nothing held back. Always 0.
GNSS_UTILS_EXPORT int InitGnssUtils();

/// Sets the callback of a GnssCbType, `void callback(const void* data, int length)`; null removes it. A
/// callback is called from inside GnssDecode only, on the caller's thread; its data is valid for the call.
GNSS_UTILS_EXPORT void RegGnssCallbacks(std::uint32_t type, void* callback);

/// Sets `void handler(const char* file, int line, const char* function, const char* format, va_list)`.
GNSS_UTILS_EXPORT void RegLogHandle(void* handler);

/// major * 10000 + minor * 100 + patch
GNSS_UTILS_EXPORT int GetLibVersion();

/// Tells the product number. Both forms of the link are understood whatever it is.
GNSS_UTILS_EXPORT void SetChipType(std::uint32_t chipType);

/// Takes received bytes, cut anywhere.
GNSS_UTILS_EXPORT void GnssDecode(const std::uint8_t* data, std::uint32_t length);

/// Writes the frame of a command into `out` and returns its length, or -1 when it cannot be framed. Id 512
/// copies the payload as it is. AT wrapping is the caller's.
GNSS_UTILS_EXPORT int GnssEncode(std::uint32_t id, const void* payload, std::uint32_t payloadLength, void* out,
                                 std::uint32_t outSize);

/// 0: keep the receiver awake, so that each of its sleep notices gives callback 500. Otherwise only a notice
/// that says work is waiting does. The state after InitGnssUtils is 1.
GNSS_UTILS_EXPORT void GnssSleepSwitch(std::uint32_t flag);

/// Local east, north, up in metres, exact on WGS 84. The arrays hold latitude, longitude (degrees), height
/// (metres), or longitude first: a second element outside -90 to 90 means latitude first; else a first
/// element outside it means longitude first; else two heights of exactly 0 mean longitude first; every other
/// call is latitude first.
GNSS_UTILS_EXPORT void Lla2Enu(const double ref[3], const double pos[3], double enu[3]);

/// Drops callbacks and state until the next InitGnssUtils. `mode` has no meaning.
GNSS_UTILS_EXPORT void DeinitGnss(std::uint32_t mode);
}
