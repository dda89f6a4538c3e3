// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

/// The geometry of the signal strength plot, in pixels.
namespace SignalBars {

constexpr int kBaselineFromBottom = 89;

struct Widths {
    int barWidth;
    int barPitch; ///< from one column to the next
};

/// Of the columns for a number of tracked signals, at least 1, in a view of a width.
Widths WidthsFor(int signalCount, int viewWidth);

/// Pixels per dB-Hz in a view of a height; 0 in one too low for a plot.
int PixelsPerDb(int viewHeight);

/// Where the first column starts: right of the legend as far as there is room to spare, else further left. In a
/// view so low that the legend reaches below the baseline it is always right of it.
int FirstColumnX(int columnCount, int barPitch, int viewWidth, int legendRight, bool legendBelowBaseline);

/// The tops of the strengths' texts in one column, strongest first. `segmentTops` are the tops of the column's
/// segments, strongest first. The strongest's text has its top at `firstTop`; the others stand inside the column,
/// each below its segment's top and below the text before it. Texts that no longer fit above the baseline are left
/// out.
std::vector<int> TextTops(const std::vector<int>& segmentTops, int firstTop, int textHeight, int baseline);

} // namespace SignalBars
