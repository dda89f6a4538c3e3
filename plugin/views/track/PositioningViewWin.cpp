// SPDX-License-Identifier: MIT
#include "views/track/PositioningViewWin.h"

#include "bridge/ClassGnss.h"
#include "bridge/RecordCopy.h"
#include "protocol/Records.h"
#include "views/AgeEdit.h"
#include "views/ConstellationLegend.h"
#include "views/PlotColours.h"
#include "views/ViewRefresh.h"
#include "views/track/SetCenterPointWin.h"

#include <QAction>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>

#include <algorithm>
#include <cmath>
#include <cstddef>

using TrackState::centerLatitude;
using TrackState::centerLongitude;
using TrackState::pointList;
using TrackState::useLastPoint;

namespace {

constexpr int kAgeTick = 1000;   ///< milliseconds
constexpr int kLargestText = 12; ///< pixels
constexpr int kNorthWidth = 29;
constexpr int kNorthHeight = 40;

/// Positions that are handed to the codec at a time.
constexpr std::size_t kBatch = 4096;

} // namespace

PositioningViewWin::PositioningViewWin(QWidget* parent)
    : ClosingWidget(parent), ageEdit(new AgeEdit(this)), ageTimer(new QTimer(this)),
      m_north(ConstellationLegend::Picture("north")), m_refresh(new ViewRefresh(this))
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(m_refresh, &ViewRefresh::Due, this, QOverload<>::of(&QWidget::update));
    setWindowTitle(tr("定位轨迹"));
    ageEdit->move(10, 10);

    const auto add = [this](const QString& text, void (PositioningViewWin::*slot)()) {
        auto* action = new QAction(text, this);
        connect(action, &QAction::triggered, this, slot);
        addAction(action);
        return action;
    };
    add(tr("Set Center Point Coordinates"), &PositioningViewWin::SlotSetCenterActTriggered);
    add(tr("Remove All Points"), &PositioningViewWin::SlotRemovePointsActTriggered);
    m_lastPointAct =
        add(tr("Set Last Point As Center"), &PositioningViewWin::SlotSetLastPointAsCenterActTriggered);
    m_lastPointAct->setCheckable(true);
    m_lastPointAct->setChecked(useLastPoint);
    auto* separator = new QAction(this);
    separator->setSeparator(true);
    addAction(separator);
    add(tr("Zoom In"), &PositioningViewWin::SlotZoomInActTriggered);
    add(tr("Zoom Out"), &PositioningViewWin::SlotZoomOutActTriggered);
    setContextMenuPolicy(Qt::ActionsContextMenu);

    connect(ageTimer, &QTimer::timeout, this, &PositioningViewWin::TimerTimeout);
    ageTimer->start(kAgeTick);
}

PositioningViewWin::~PositioningViewWin()
{
    pointList.clear();
    trackPoints.clear();
}

void PositioningViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::PositionRecord), "PositioningViewWin");
    // A record cut short within its position holds none.
    if (record.IsDropped() || record.Size() < offsetof(protocol::PositionRecord, altitude)) {
        return;
    }
    ageSeconds = 0;
    ageTimer->stop();
    ageEdit->ShowAge(ageSeconds);
    const double latitude = record.At<double>(offsetof(protocol::PositionRecord, latitude));
    const double longitude = record.At<double>(offsetof(protocol::PositionRecord, longitude));
    pointList.push_back({latitude, longitude});
    trackPoints.push_back(
        {record.At<std::uint8_t>(offsetof(protocol::PositionRecord, fixMode)), latitude, longitude});
    m_refresh->Request();
    ageTimer->start(kAgeTick);
}

void PositioningViewWin::TimerTimeout()
{
    ++ageSeconds;
    ageEdit->ShowAge(ageSeconds);
}

void PositioningViewWin::SlotSetCenterActTriggered()
{
    auto* dialog = new SetCenterPointWin(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    connect(dialog, &SetCenterPointWin::updateCenterPoint, this, QOverload<>::of(&QWidget::update));
    // Not exec(): nothing waits on the stack for a view that may be closed meanwhile.
    dialog->show();
}

void PositioningViewWin::SlotRemovePointsActTriggered()
{
    pointList.clear();
    trackPoints.clear();
    update();
}

void PositioningViewWin::SlotSetLastPointAsCenterActTriggered()
{
    useLastPoint = !useLastPoint;
    m_lastPointAct->setChecked(useLastPoint);
    update();
}

void PositioningViewWin::SlotZoomInActTriggered()
{
    if (scale < TrackGeometry::kSmallestZoomInScale) {
        return;
    }
    scale = TrackGeometry::ZoomedIn(scale);
    update();
}

void PositioningViewWin::SlotZoomOutActTriggered()
{
    if (scale > TrackGeometry::kLargestZoomOutScale) {
        return;
    }
    scale = TrackGeometry::ZoomedOut(scale);
    update();
}

void PositioningViewWin::paintEvent(QPaintEvent*)
{
    if (const auto centre = TrackGeometry::NewCentre(pointList, useLastPoint, centerLatitude)) {
        centerLatitude = centre->latitude;
        centerLongitude = centre->longitude;
    }
    QPainter painter(this);
    painter.setFont(TextFont());
    PaintGrid(painter);
    // Black over black: the texts may as well come after the rings.
    painter.setPen(Qt::black);
    painter.drawText(10, height() - 29, tr("Count:") + QString::number(pointList.size()));
    painter.drawText(10, height() - 14, TrackGeometry::CentreText(centerLatitude, centerLongitude));
    PaintTrack(painter);
}

void PositioningViewWin::PaintGrid(QPainter& painter)
{
    m_grid.Paint(painter, *this, PlotBackground(palette()), {scale}, [this](QPainter& drawing) {
        drawing.setPen(QPen(Qt::black, 1.0, Qt::DotLine));
        ConstellationLegend::PaintPicture(drawing, QRect(width() - 39, 10, kNorthWidth, kNorthHeight), m_north);
        PaintRings(drawing);
    });
}

/// The view's font, but not so large that the two lines of text, 15 pixels apart, would touch.
QFont PositioningViewWin::TextFont() const
{
    QFont text = font();
    text.setPixelSize(std::min(fontInfo().pixelSize(), kLargestText));
    return text;
}

/// The same, smaller where a label would reach the next ring.
QFont PositioningViewWin::RingFont(int rings) const
{
    constexpr int room = TrackGeometry::kRingStep / 2 - 4;
    QFont text = TextFont();
    const QFontMetrics metrics(text);
    int widest = 1;
    for (int i = 0; i < rings; ++i) {
        const int diameter = TrackGeometry::kFirstRing + i * TrackGeometry::kRingStep;
        widest = std::max(widest, metrics.horizontalAdvance(TrackGeometry::RingLabel(diameter, scale)));
    }
    if (widest > room) {
        text.setPixelSize(std::max(6, text.pixelSize() * room / widest));
    }
    return text;
}

void PositioningViewWin::PaintRings(QPainter& painter) const
{
    const int middleX = width() / 2;
    const int middleY = height() / 2;
    // Rings that lie beyond the corners aren't seen.
    const int reach = static_cast<int>(2.0 * std::hypot(middleX + 1, middleY + 1));
    const int rings =
        (std::min(reach, TrackGeometry::kLastRing) - TrackGeometry::kFirstRing) / TrackGeometry::kRingStep + 1;
    painter.save();
    painter.setFont(RingFont(rings));
    for (int i = 0; i < rings; ++i) {
        const int diameter = TrackGeometry::kFirstRing + i * TrackGeometry::kRingStep;
        painter.drawEllipse(middleX - diameter / 2, middleY - diameter / 2, diameter, diameter);
        painter.drawText((width() + diameter) / 2, middleY, TrackGeometry::RingLabel(diameter, scale));
    }
    painter.restore();
    painter.drawLine(0, middleY, width(), middleY);
    painter.drawLine(middleX, 0, middleX, height());
}

void PositioningViewWin::PaintTrack(QPainter& painter)
{
    m_dots.Begin(size(), painter.device()->devicePixelRatioF());
    const double reference[3] = {centerLongitude, centerLatitude, 0.0};
    const std::size_t batch = std::min(kBatch, trackPoints.size());
    std::vector<double> memory(6 * batch);
    auto* positions = reinterpret_cast<double(*)[3]>(memory.data());
    auto* enus = positions + batch;
    std::size_t done = 0;
    while (done < trackPoints.size()) {
        const std::size_t count = std::min(batch, trackPoints.size() - done);
        for (std::size_t i = 0; i < count; ++i) {
            const TrackPoint& point = trackPoints[done + i];
            positions[i][0] = point.longitude;
            positions[i][1] = point.latitude;
            positions[i][2] = 0.0;
        }
        // Without a codec every point lies in the middle, and one line in the debug log is enough.
        const bool converted = ClassGnss::Lla2EnuMany(reference, positions, enus, count);
        for (std::size_t i = 0; i < count; ++i) {
            const QPointF dot = TrackGeometry::DotPosition(enus[i][0], enus[i][1], scale);
            m_dots.Add(dot.x(), dot.y());
            if (done + i + 1 == trackPoints.size()) {
                m_dots.AddLast(dot.x(), dot.y());
            }
        }
        done = converted ? done + count : trackPoints.size();
        if (!converted) {
            m_dots.AddLast(0.0, 0.0);
        }
    }
    m_dots.Paint(painter);
}

void PositioningViewWin::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    dragging = true;
    dragX = TrackGeometry::RoundedPixel(event->localPos().x());
    dragY = TrackGeometry::RoundedPixel(event->localPos().y());
}

void PositioningViewWin::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    if (useLastPoint) {
        useLastPoint = false;
        m_lastPointAct->setChecked(false);
    }
    const int x = TrackGeometry::RoundedPixel(event->localPos().x());
    const int y = TrackGeometry::RoundedPixel(event->localPos().y());
    const TrackState::GeoPoint shift = TrackGeometry::DragShift(dragX, dragY, x, y, scale);
    centerLatitude += shift.latitude;
    centerLongitude += shift.longitude;
    dragX = x;
    dragY = y;
    update();
}

void PositioningViewWin::mouseReleaseEvent(QMouseEvent* event)
{
    // Of any button: a menu that the right one opens takes the left one's release away.
    dragging = false;
    event->accept();
}

void PositioningViewWin::wheelEvent(QWheelEvent* event)
{
    if (event->angleDelta().y() > 0) {
        SlotZoomInActTriggered();
    } else {
        SlotZoomOutActTriggered();
    }
    event->accept();
}
