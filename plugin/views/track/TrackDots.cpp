// SPDX-License-Identifier: MIT
#include "views/track/TrackDots.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

/// Of a number that an int can hold; without a call, since it is wanted twice a point.
inline int Floor(double number)
{
    const int cut = static_cast<int>(number);
    return number < cut ? cut - 1 : cut;
}

} // namespace

void TrackDots::Begin(const QSize& size, qreal devicePixelRatio)
{
    const QSize pixels(std::max(1, static_cast<int>(std::ceil(size.width() * devicePixelRatio))),
                       std::max(1, static_cast<int>(std::ceil(size.height() * devicePixelRatio))));
    if (devicePixelRatio != m_ratio) {
        RenderDot(devicePixelRatio);
    }
    if (m_image.size() != pixels) {
        m_image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_touched = m_image.rect();
    }
    m_image.setDevicePixelRatio(devicePixelRatio);
    const QPoint middle(size.width() / 2, size.height() / 2);
    m_middleX = static_cast<int>(std::lround(middle.x() * devicePixelRatio));
    m_middleY = static_cast<int>(std::lround(middle.y() * devicePixelRatio));
    // Lines of 32-bit pixels follow one another without a gap.
    m_bits = reinterpret_cast<QRgb*>(m_image.bits());
    m_pixels = m_image.rect();
    for (int y = m_touched.top(); y <= m_touched.bottom(); ++y) {
        QRgb* line = m_bits + static_cast<std::ptrdiff_t>(y) * m_pixels.width();
        std::fill(line + m_touched.left(), line + m_touched.right() + 1, 0U);
    }
    m_touched = QRect();
    m_stride = static_cast<std::size_t>(pixels.width()) + static_cast<std::size_t>(m_dotBox.width());
    m_stamped.assign(m_stride * static_cast<std::size_t>(pixels.height() + m_dotBox.height()), 0);
    m_fromX = -m_dotBox.right() - m_middleX;
    m_toX = pixels.width() - m_dotBox.left() - m_middleX;
    m_fromY = -m_dotBox.bottom() - m_middleY;
    m_toY = pixels.height() - m_dotBox.top() - m_middleY;
}

void TrackDots::Add(double x, double y)
{
    int column = 0;
    int row = 0;
    if (!Locate(x, y, column, row)) {
        return;
    }
    std::uint8_t& stamped = m_stamped[static_cast<std::size_t>(row + m_dotBox.bottom()) * m_stride +
                                      static_cast<std::size_t>(column + m_dotBox.right())];
    if (stamped != 0) {
        return;
    }
    stamped = 1;
    Stamp(column, row, qRgb(0, 255, 0));
}

void TrackDots::AddLast(double x, double y)
{
    int column = 0;
    int row = 0;
    if (Locate(x, y, column, row)) {
        Stamp(column, row, qRgb(255, 0, 0));
    }
}

void TrackDots::Paint(QPainter& painter) const
{
    if (m_touched.isEmpty()) {
        return;
    }
    painter.drawImage(QPointF(m_touched.left() / m_ratio, m_touched.top() / m_ratio), m_image, QRectF(m_touched));
}

void TrackDots::RenderDot(qreal devicePixelRatio)
{
    m_ratio = devicePixelRatio;
    const int reach = static_cast<int>(std::ceil(6.0 * devicePixelRatio));
    QImage image(2 * reach, 2 * reach, QImage::Format_ARGB32_Premultiplied);
    image.fill(0U);
    QPainter painter(&image);
    painter.translate(reach, reach);
    painter.scale(devicePixelRatio, devicePixelRatio);
    painter.setPen(Qt::black);
    painter.setBrush(Qt::black);
    painter.drawEllipse(-3, -3, 5, 5);
    painter.end();

    m_dot.clear();
    m_dotBox = QRect();
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width();) {
            const int start = x;
            while (x < image.width() && line[x] != 0U) {
                ++x;
            }
            if (x > start) {
                m_dot.push_back({y - reach, start - reach, x - start});
                m_dotBox |= QRect(start - reach, y - reach, x - start, 1);
            } else {
                ++x;
            }
        }
    }
}

/// The device pixel of a position; false when no pixel of its dot lies in the picture.
bool TrackDots::Locate(double x, double y, int& column, int& row) const
{
    const double right = x * m_ratio + 0.5;
    const double down = y * m_ratio + 0.5;
    // The comparisons are false for what isn't a number.
    if (!(right >= m_fromX && right < m_toX && down >= m_fromY && down < m_toY)) {
        return false;
    }
    column = Floor(right) + m_middleX;
    row = Floor(down) + m_middleY;
    return true;
}

void TrackDots::Stamp(int column, int row, QRgb colour)
{
    const QRect box = m_dotBox.translated(column, row);
    const bool whole = m_pixels.contains(box);
    for (const Span& span : m_dot) {
        const int y = row + span.row;
        if (!whole && (y < 0 || y > m_pixels.bottom())) {
            continue;
        }
        int from = column + span.column;
        int to = from + span.length;
        if (!whole) {
            from = std::max(0, from);
            to = std::min(m_pixels.right() + 1, to);
        }
        QRgb* line = m_bits + static_cast<std::ptrdiff_t>(y) * m_pixels.width();
        for (int i = from; i < to; ++i) {
            line[i] = colour;
        }
    }
    m_touched |= whole ? box : box & m_pixels;
}
