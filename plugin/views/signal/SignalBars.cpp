// SPDX-License-Identifier: MIT
#include "views/signal/SignalBars.h"

#include <algorithm>

namespace SignalBars {

Widths WidthsFor(int signalCount, int viewWidth)
{
    const int pitch = (viewWidth - signalCount * 5 + 1) / signalCount;
    const int width = pitch - 3;
    if (width > 63) {
        return {63, 66};
    }
    if (width < 25) {
        return {25, 28};
    }
    return {width, pitch};
}

int PixelsPerDb(int viewHeight)
{
    return std::max(0, viewHeight - kBaselineFromBottom) / 120;
}

int FirstColumnX(int columnCount, int barPitch, int viewWidth, int legendRight, bool legendBelowBaseline)
{
    constexpr int margin = 3;
    if (legendBelowBaseline) {
        return legendRight;
    }
    return std::max(margin, std::min(legendRight, viewWidth - margin - columnCount * barPitch));
}

std::vector<int> TextTops(const std::vector<int>& segmentTops, int firstTop, int textHeight, int baseline)
{
    std::vector<int> tops;
    if (segmentTops.empty()) {
        return tops;
    }
    tops.push_back(firstTop);
    for (std::size_t i = 1; i < segmentTops.size(); ++i) {
        const int top = std::max(segmentTops[i], tops.back() + textHeight);
        if (top + textHeight > baseline) {
            break;
        }
        tops.push_back(top);
    }
    return tops;
}

} // namespace SignalBars
