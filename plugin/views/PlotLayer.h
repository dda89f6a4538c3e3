// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPixmap>
#include <QSize>

#include <functional>
#include <vector>

class QPainter;
class QWidget;

/// The part of a plot that is the same from one record to the next, kept as an opaque picture: rings, lines and
/// labels cost far more to draw than to copy.
class PlotLayer {
public:
    /// Draws the layer at the painter's origin, as large as the view. `draw` makes it, over `background`, when
    /// the view's size, font or palette, the device's pixel ratio or one of the values in `state` has changed.
    void Paint(QPainter& painter, const QWidget& view, const QColor& background, const std::vector<double>& state,
               const std::function<void(QPainter&)>& draw);

private:
    QPixmap m_picture;
    QSize m_size;
    qreal m_ratio = 0.0;
    QFont m_font;
    qint64 m_palette = 0;
    QColor m_background;
    std::vector<double> m_state;
};
