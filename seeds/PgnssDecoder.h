// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#if defined(_WIN32)
#define PGNSS_EXPORT __declspec(dllexport)
#else
#define PGNSS_EXPORT __attribute__((visibility("default")))
#endif

// The seed decoder's two entry points. Paths are UTF-8, zero-terminated; times are Unix seconds. Each returns 0
// or an error code of docs/seed-format.md. They keep no state and may be called from any thread.

extern "C" {

/// Checks the whole seed and tells its validity. The two times are written only on success.
PGNSS_EXPORT int GetPgnssDataValidTime(const char* seedPath, std::uint32_t* validStart, std::uint32_t* validEnd);

/// Expands the seed for `time` into the files of an existing directory. `mode` is 1.
PGNSS_EXPORT int ParsePgnssData(const char* seedPath, const char* outputDirectory, std::uint32_t time, int mode);
}
