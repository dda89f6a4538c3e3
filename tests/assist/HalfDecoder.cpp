// SPDX-License-Identifier: MIT
// A seed decoder that lacks an entry point.

#include <cstdint>

extern "C" __attribute__((visibility("default"))) int GetPgnssDataValidTime(const char*, std::uint32_t* start,
                                                                            std::uint32_t* end)
{
    *start = 0;
    *end = UINT32_MAX;
    return 0;
}
