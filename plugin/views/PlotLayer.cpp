// SPDX-License-Identifier: MIT
#include "views/PlotLayer.h"

#include <QPainter>
#include <QWidget>

void PlotLayer::Paint(QPainter& painter, const QWidget& view, const QColor& background,
                      const std::vector<double>& state, const std::function<void(QPainter&)>& draw)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    if (m_picture.isNull() || m_size != view.size() || m_ratio != ratio || m_font != view.font() ||
        m_palette != view.palette().cacheKey() || m_background != background || m_state != state) {
        m_size = view.size();
        m_ratio = ratio;
        m_font = view.font();
        m_palette = view.palette().cacheKey();
        m_background = background;
        m_state = state;
        m_picture = QPixmap((QSizeF(m_size) * ratio).toSize().expandedTo(QSize(1, 1)));
        m_picture.setDevicePixelRatio(ratio);
        m_picture.fill(background);
        QPainter drawing(&m_picture);
        drawing.setFont(m_font);
        draw(drawing);
    }
    painter.drawPixmap(0, 0, m_picture);
}
