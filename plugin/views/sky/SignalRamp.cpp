// SPDX-License-Identifier: MIT
#include "views/sky/SignalRamp.h"

QColor SignalRamp(int cn0)
{
    // The channels are cut and not rounded.
    if (cn0 < 25) {
        return QColor(255, static_cast<int>(cn0 * 10.2), 0);
    }
    if (cn0 == 25) {
        return QColor(255, 255, 0);
    }
    if (cn0 < 50) {
        return QColor(static_cast<int>(510 - cn0 * 10.2), 255, 0);
    }
    return QColor(0, 255, 0);
}
