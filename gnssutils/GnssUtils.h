#pragma once

#include <cstdint>

#define GNSS_UTILS_EXPORT __attribute__((visibility("default")))

extern "C" {
GNSS_UTILS_EXPORT int InitGnssUtils();
GNSS_UTILS_EXPORT void RegGnssCallbacks(std::uint32_t type, void* callback);
GNSS_UTILS_EXPORT void RegLogHandle(void* handler);
GNSS_UTILS_EXPORT int GetLibVersion();
GNSS_UTILS_EXPORT void SetChipType(std::uint32_t chipType);
GNSS_UTILS_EXPORT void GnssDecode(const std::uint8_t* data, std::uint32_t length);
GNSS_UTILS_EXPORT int GnssEncode(std::uint32_t id, const void* payload, std::uint32_t payloadLength, void* out,
                                 std::uint32_t outSize);
GNSS_UTILS_EXPORT void GnssSleepSwitch(std::uint32_t mode);
GNSS_UTILS_EXPORT void Lla2Enu(const double ref[3], const double pos[3], double enu[3]);
GNSS_UTILS_EXPORT void DeinitGnss(std::uint32_t mode);
}
