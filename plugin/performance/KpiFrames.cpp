// SPDX-License-Identifier: MIT
#include "performance/KpiFrames.h"

namespace {

// In the order of the enumerators.
constexpr const char* frameTexts[] = {
    "7e 04 19 00 01 00 03 00 00 00 0c 00 01 00 00 00 01 00 01 00 00 00 00 00 7e",
    "7e 04 0d 00 02 00 00 00 00 00 00 00 7e",
    "7e 04 12 00 03 00 03 00 00 00 05 00 01 00 01 00 01 7e",
    "7e 04 12 00 03 00 02 00 00 00 05 00 01 00 01 00 00 7e",
    "7e 04 13 00 03 00 04 01 00 00 06 00 03 00 02 00 ff 00 7e",
};

} // namespace

QByteArray KpiFrameBytes(KpiFrame frame)
{
    return QByteArray::fromHex(frameTexts[static_cast<int>(frame)]);
}
