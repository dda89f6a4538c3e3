// SPDX-License-Identifier: MIT
#pragma once

#include "views/PlotLayer.h"
#include "views/track/TrackDots.h"
#include "views/track/TrackGeometry.h"
#include "widgets/ClosingWidget.h"

#include <QFont>
#include <QPixmap>
#include <QRgb>
#include <QSize>

#include <vector>

class AgeEdit;
class QAction;
class QTimer;
class ViewRefresh;

/// The track as a plan around a centre point: rings of distance, a dot for each fix, the last one in red.
class PositioningViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit PositioningViewWin(QWidget* parent);
    ~PositioningViewWin() override;

    /// Takes a PositionRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {480, 360}; }

public slots:
    void TimerTimeout();
    void SlotSetCenterActTriggered();
    void SlotRemovePointsActTriggered();
    void SlotSetLastPointAsCenterActTriggered();
    void SlotZoomInActTriggered();
    void SlotZoomOutActTriggered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct TrackPoint {
        std::uint8_t fixMode;
        double latitude;
        double longitude;
    };

    void PaintGrid(QPainter& painter);
    void PaintRings(QPainter& painter) const;
    void PaintTrack(QPainter& painter);
    QFont TextFont() const;
    QFont RingFont(int rings) const;

    double scale = TrackGeometry::kFirstScale; ///< centimetres for five pixels
    quint64 ageSeconds = 0;
    AgeEdit* ageEdit;
    QTimer* ageTimer;
    std::vector<TrackPoint> trackPoints;
    bool dragging = false;
    int dragX = 0;
    int dragY = 0;
    QAction* m_lastPointAct;
    QPixmap m_north;
    PlotLayer m_grid; ///< background, north arrow and rings, since dotted rings cost more than a day's dots
    ViewRefresh* m_refresh;
    TrackDots m_dots;
};
