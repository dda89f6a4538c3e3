// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

/// The average signal strength of each cell of the sky, built up over time.
class SkyMap {
public:
    struct Cell {
        std::int32_t count;     ///< values folded in so far
        std::uint8_t elevation; ///< centre in degrees: 5, 15, ... 85, or 0 for what no band holds
        std::uint16_t azimuth;  ///< centre in degrees: 7, 22, ... 352, or 0 for what no sector holds
        std::uint8_t cn0;       ///< running average in dB-Hz, cut at every step
    };

    /// Averages a value into the cell of a direction, which is made when there is none.
    void Fold(std::uint8_t elevation, std::uint16_t azimuth, std::uint8_t cn0);

    void Clear();

    /// Grows whenever what Cells() shows changes: a cell's average, not its count.
    std::uint32_t Revision() const { return m_revision; }

    /// In the order in which they were made.
    const std::vector<Cell>& Cells() const { return cn0List; }

private:
    std::vector<Cell> cn0List;
    std::uint32_t m_revision = 0;
};
