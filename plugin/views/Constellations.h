// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

#include <array>

/// A constellation as the satellite views show it.
struct Constellation {
    char letter;
    const char* label;    ///< in the legend
    int red, green, blue; ///< its colour
    const char* picture;  ///< begins the names of its two check pictures; null without a legend row
    const char* flag;     ///< picture at the head of its group; null without one
    int counter;          ///< its place in the counters of the signal table; 0 without one

    QColor Colour() const { return QColor(red, green, blue); }
};

/// In the order in which groups are drawn. The first five have a row in the legend, in the same order.
constexpr std::array<Constellation, 7> kConstellations = {{
    {'C', "BDS", 203, 65, 84, "bds", "China", 5},
    {'R', "GLN", 0, 128, 128, "glo", "Russia", 2},
    {'G', "GPS", 96, 56, 17, "gps", "American", 1},
    {'E', "GAL", 88, 131, 215, "gal", "European", 3},
    {'J', "QZS", 159, 43, 104, "qzs", "Japan", 4},
    {'S', "SBA", 142, 68, 173, nullptr, nullptr, 0},
    {'I', "IRN", 243, 156, 18, nullptr, nullptr, 0},
}};

constexpr int kLegendRows = 5;

/// The place of a letter in kConstellations, or -1.
constexpr int ConstellationIndex(char letter)
{
    for (std::size_t i = 0; i < kConstellations.size(); ++i) {
        if (kConstellations[i].letter == letter) {
            return static_cast<int>(i);
        }
    }
    return -1;
}
