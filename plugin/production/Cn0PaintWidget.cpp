// SPDX-License-Identifier: MIT
#include "production/Cn0PaintWidget.h"

#include <QPainter>

namespace {

constexpr int left = 235;
constexpr int step = 14;
constexpr int barWidth = 10;
constexpr int boxTop = 200;
constexpr int boxHeight = 20;
constexpr int textHeight = 11;
constexpr int fontPixels = 9;

void DrawText(QPainter& painter, const QRect& box, const QString& text)
{
    painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, text);
}

} // namespace

Cn0PaintWidget::Cn0PaintWidget(QWidget* parent) : QWidget(parent) {}

void Cn0PaintWidget::SetBars(const std::array<SatelliteBars, kConstellations>& bars)
{
    m_bars = bars;
    int count = 0;
    for (const SatelliteBars& constellation : m_bars) {
        count += static_cast<int>(constellation.size());
    }
    setMinimumWidth(left + count * step);
    update();
}

void Cn0PaintWidget::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    painter.setPen(QPen(Qt::black, 1));
    QFont font(QStringLiteral("Times New Roman"));
    font.setPixelSize(fontPixels);
    painter.setFont(font);

    const int pixelsPerDecibel = (height() + 1) / 100;
    int x = left;
    for (std::size_t place = 0; place < kConstellations; ++place) {
        const protocol::ConstellationRow& row = protocol::RowOf(kEpochOrder[place]);
        const QColor colour(row.red, row.green, row.blue);
        for (const auto& [number, values] : m_bars[place]) {
            const QRect box(x, boxTop, barWidth, boxHeight);
            painter.fillRect(box, palette().color(QPalette::Window));
            DrawText(painter, box, QStringLiteral("%1").arg(number));
            // The signals of a satellite share its width.
            const int signalCount = static_cast<int>(values.size());
            for (int i = 0; i < signalCount; ++i) {
                const int cn0 = values[static_cast<std::size_t>(i)];
                const int from = x + i * barWidth / signalCount;
                const int width = x + (i + 1) * barWidth / signalCount - from;
                const QRect bar(from, boxTop - cn0 * pixelsPerDecibel, width, cn0 * pixelsPerDecibel);
                painter.fillRect(bar, colour);
                DrawText(painter, QRect(from, bar.top() - textHeight, width, textHeight), QString::number(cn0));
            }
            x += step;
        }
    }
}
