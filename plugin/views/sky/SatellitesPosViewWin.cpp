// SPDX-License-Identifier: MIT
#include "views/sky/SatellitesPosViewWin.h"

#include "bridge/RecordCopy.h"
#include "views/Constellations.h"
#include "views/PlotColours.h"
#include "views/ViewRefresh.h"
#include "views/sky/SignalRamp.h"
#include "views/sky/SkyGeometry.h"

#include <QAction>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr int kFirstIconTop = 9;
constexpr int kBands = 9;
constexpr int kDotMargin = 1;    ///< pixels that a disc's outline reaches out of its box
constexpr int kSmallestText = 6; ///< pixels; smaller ones can't be read and are left out

QFont PixelFont(const QFont& like, int pixelSize)
{
    QFont font = like;
    font.setPixelSize(std::max(1, pixelSize));
    return font;
}

/// Draws a text with its middle at a point.
void DrawCentred(QPainter& painter, const QPointF& middle, const QString& text)
{
    painter.drawText(QRectF(middle.x() - 50.0, middle.y() - 50.0, 100.0, 100.0), Qt::AlignCenter, text);
}

} // namespace

SatellitesPosViewWin::SatellitesPosViewWin(QWidget* parent)
    : ClosingWidget(parent), m_legend(kFirstIconTop), m_refresh(new ViewRefresh(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_refresh, &ViewRefresh::Due, this, QOverload<>::of(&QWidget::update));
    setWindowTitle(tr("卫星分布"));
    auto* clear = new QAction(tr("Clear CN0 Data"), this);
    connect(clear, &QAction::triggered, this, &SatellitesPosViewWin::SlotClearCn0ListActTriggered);
    addAction(clear);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void SatellitesPosViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::SatPosRecord), "SatellitesPosViewWin");
    if (record.IsDropped()) {
        return;
    }
    constexpr std::size_t first = offsetof(protocol::SatPosRecord, entry);
    const std::size_t count = record.HeldEntries(record.At<std::uint8_t>(0), first, sizeof(protocol::SatPosEntry));
    satList.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const auto entry = record.At<protocol::SatPosEntry>(first + i * sizeof(protocol::SatPosEntry));
        satList.push_back(entry);
        // Hidden constellations are folded in as well.
        m_map.Fold(entry.elevation, entry.azimuth, entry.cn0);
    }
    m_refresh->Request();
}

void SatellitesPosViewWin::SlotClearCn0ListActTriggered()
{
    m_map.Clear();
    update();
}

void SatellitesPosViewWin::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_legend.Click(event->localPos().toPoint())) {
        update();
    } else {
        QWidget::mousePressEvent(event);
    }
}

void SatellitesPosViewWin::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto state = {static_cast<double>(m_legend.HiddenRows()), static_cast<double>(m_map.Revision())};
    m_still.Paint(painter, *this, QColor(240, 240, 240), state,
                  [this](QPainter& drawing) { PaintStill(drawing); });
    painter.translate(QPoint(width() / 2, height() / 2));
    PaintSatellites(painter);
}

void SatellitesPosViewWin::PaintStill(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.0));
    PaintLegend(painter);
    painter.translate(QPoint(width() / 2, height() / 2));
    // A view too low for a plot has none.
    if (SkyGeometry::Radius(height()) <= 0.0F) {
        return;
    }
    PaintScale(painter);
    PaintGrid(painter);
    PaintMap(painter);
}

bool SatellitesPosViewWin::ShowsConstellation(int index) const
{
    return index >= 0 && (index >= kLegendRows || !m_legend.IsHidden(index));
}

void SatellitesPosViewWin::PaintLegend(QPainter& painter) const
{
    m_legend.PaintIcons(painter);
    painter.setFont(LegendFont());
    for (int row = 0; row < kLegendRows; ++row) {
        painter.drawText(ConstellationLegend::kTextX, m_legend.TextY(row),
                         DrawnAt(static_cast<std::size_t>(row)).label);
    }
}

QFont SatellitesPosViewWin::LegendFont() const
{
    return PixelFont(font(), std::min(fontInfo().pixelSize(), 13));
}

void SatellitesPosViewWin::PaintScale(QPainter& painter) const
{
    // Between the rim, 25 pixels from the edge, and the edge.
    painter.setFont(PixelFont(font(), std::clamp(height() / 22, 9, 12)));
    const QFontMetricsF metrics(painter.font());
    const int half = height() / 2;
    const double radius = half - 15;
    // In a narrow view a text gives way to the legend.
    QRectF legend(m_legend.IconRect(0));
    legend.setRight(
        ConstellationLegend::kTextX +
        QFontMetricsF(LegendFont()).horizontalAdvance(protocol::RowOf(protocol::Constellation::Qzss).label) + 6.0);
    legend.setBottom(m_legend.IconRect(kLegendRows - 1).bottom());
    legend.translate(-QPoint(width() / 2, half));
    // Every second one is left out where they would touch one another.
    constexpr double apart = 0.2617993877991494;
    const int step = radius * apart < metrics.horizontalAdvance("345°") ? 2 : 1;
    for (int i = 0; i < SkyGeometry::kAzimuthLabels; i += step) {
        const double angle = i * apart;
        const QString label = SkyGeometry::AzimuthLabel(i);
        // The blanks only balance the text's place; the outward shift keeps wide texts off the rim.
        const QString text = label.trimmed();
        const double halfWidth = metrics.horizontalAdvance(text) / 2.0;
        const double outward = std::max(0.0, halfWidth - 7.0);
        QPointF middle((radius + outward) * std::sin(angle), -radius * std::cos(angle));
        if (middle.y() - metrics.height() / 2.0 < legend.bottom() && middle.x() - halfWidth < legend.right()) {
            middle.setX(std::min(legend.right() + halfWidth, 0.0));
        }
        DrawCentred(painter, middle, text);
    }
}

void SatellitesPosViewWin::PaintGrid(QPainter& painter) const
{
    const float radius = SkyGeometry::Radius(height());
    const double unit = static_cast<double>(radius) / kBands;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, 1.0));
    for (int i = 1; i <= kBands; ++i) {
        painter.drawEllipse(QPointF(0.0, 0.0), i * unit, i * unit);
    }
    painter.save();
    for (int i = 0; i < 12; ++i) {
        painter.drawLine(QPointF(-static_cast<double>(radius), 0.0), QPointF(static_cast<double>(radius), 0.0));
        painter.rotate(15.0);
    }
    painter.restore();

    // Each ring's zenith angle stands inside the ring, beside the line to the north.
    const int pixelSize = std::min(11, static_cast<int>(unit * 0.7));
    if (pixelSize < kSmallestText) {
        return;
    }
    painter.setFont(PixelFont(font(), pixelSize));
    const QFontMetricsF metrics(painter.font());
    for (int i = 1; i <= kBands; ++i) {
        painter.drawText(QPointF(2.0, -i * unit + metrics.ascent()), QString::number(10 * i) + "°");
    }
}

void SatellitesPosViewWin::PaintMap(QPainter& painter) const
{
    const double radius = static_cast<double>(SkyGeometry::Radius(height()));
    for (const SkyMap::Cell& cell : m_map.Cells()) {
        painter.fillPath(SkyGeometry::CellPath(cell, radius), SignalRamp(cell.cn0));
    }

    const int largest = std::min(12, static_cast<int>(radius / kBands * 0.7));
    for (const SkyMap::Cell& cell : m_map.Cells()) {
        const double middle = SkyGeometry::CellMiddle(cell, radius);
        // Two digits are as wide as they are high.
        const int fitting = std::min(largest, static_cast<int>(middle * 15.0 * 0.0174533 * 0.75));
        if (fitting < kSmallestText) {
            continue;
        }
        painter.save();
        painter.setFont(PixelFont(font(), fitting));
        painter.setPen(TextColourOn(SignalRamp(cell.cn0)));
        painter.rotate(cell.azimuth + 0.5);
        DrawCentred(painter, {0.0, -middle}, QString::number(cell.cn0));
        painter.restore();
    }
}

/// A satellite's disc, drawn once for each colour.
QPixmap SatellitesPosViewWin::Dot(const QColor& fill, qreal devicePixelRatio)
{
    QPixmap& dot = m_dots[fill.rgb()];
    if (dot.isNull() || dot.devicePixelRatioF() != devicePixelRatio) {
        const QRect box = SkyGeometry::DotBox(QPointF());
        const QSize size = box.size() + QSize(2 * kDotMargin, 2 * kDotMargin);
        dot = QPixmap((QSizeF(size) * devicePixelRatio).toSize());
        dot.setDevicePixelRatio(devicePixelRatio);
        dot.fill(Qt::transparent);
        QPainter painter(&dot);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(Qt::black, 1.0));
        painter.setBrush(fill);
        painter.drawEllipse(QRect(QPoint(kDotMargin, kDotMargin), box.size()));
    }
    return dot;
}

void SatellitesPosViewWin::PaintSatellites(QPainter& painter)
{
    const qreal ratio = painter.device()->devicePixelRatioF();
    const double radius = static_cast<double>(SkyGeometry::Radius(height()));
    if (radius <= 0.0) {
        return;
    }
    painter.setFont(PixelFont(font(), 13));
    for (const protocol::SatPosEntry& satellite : satList) {
        const int index = ConstellationIndex(satellite.constellation);
        if (!ShowsConstellation(index)) {
            continue;
        }
        QColor fill = ColourOf(DrawnAt(static_cast<std::size_t>(index)));
        if (satellite.inuseFlag == 0) {
            fill = satellite.cn0 != 0 ? QColor(Qt::gray) : palette().color(QPalette::Window);
        }
        const QRect box =
            SkyGeometry::DotBox(SkyGeometry::Position(satellite.elevation, satellite.azimuth, radius));
        painter.drawPixmap(box.topLeft() - QPoint(kDotMargin, kDotMargin), Dot(fill, ratio));
        painter.setPen(TextColourOn(fill));
        m_labels.Draw(painter, box, satellite.svid);
    }
}
