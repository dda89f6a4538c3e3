// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>
#include <QRgb>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <vector>

class QPainter;

/// The dots of a track. A dot is an ellipse of 5 by 5 with its corner 3 left of and 3 above its position, filled
/// and outlined in one colour and not smoothed. It is drawn once and then stamped on whole device pixels, and a
/// position that has been stamped is not stamped again, so that a million dots cost little more than a thousand.
class TrackDots {
public:
    /// Empties the picture. `size` is that of the plot in logical pixels, its middle the origin of all positions.
    void Begin(const QSize& size, qreal devicePixelRatio);

    /// Stamps a dot `x` right of and `y` below the middle, in logical pixels. What isn't a number or lies outside
    /// of the picture leaves nothing.
    void Add(double x, double y);

    /// Stamps a dot in red over all others.
    void AddLast(double x, double y);

    /// Draws the picture over a plot whose top left corner is the painter's origin.
    void Paint(QPainter& painter) const;

private:
    /// A run of pixels of the dot, relative to the dot's position.
    struct Span {
        int row;
        int column;
        int length;
    };

    void RenderDot(qreal devicePixelRatio);
    bool Locate(double x, double y, int& column, int& row) const;
    void Stamp(int column, int row, QRgb colour);

    QImage m_image;
    QRgb* m_bits = nullptr; ///< the image's pixels
    QRect m_pixels;         ///< the image's extent
    QRect m_touched;        ///< device pixels that may differ from the empty picture
    std::vector<Span> m_dot;
    QRect m_dotBox; ///< the dot's pixels, relative to its position
    qreal m_ratio = 0.0;
    int m_middleX = 0;
    int m_middleY = 0;
    double m_fromX = 0.0; ///< positions from which a dot reaches the picture, in device pixels from the middle;
    double m_toX = 0.0;   ///< the upper ones are the first that don't
    double m_fromY = 0.0;
    double m_toY = 0.0;
    std::size_t m_stride = 0;            ///< positions in a row of m_stamped
    std::vector<std::uint8_t> m_stamped; ///< one byte a position from which a dot reaches the picture
};
