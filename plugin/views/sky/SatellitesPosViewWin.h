// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"
#include "views/ConstellationLegend.h"
#include "views/NumberLabels.h"
#include "views/PlotLayer.h"
#include "views/sky/SkyMap.h"
#include "widgets/ClosingWidget.h"

#include <QColor>
#include <QHash>
#include <QPixmap>

#include <vector>

class ViewRefresh;

/// The sky as a polar plot: the satellites of the latest record over a map of the average signal strength.
class SatellitesPosViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit SatellitesPosViewWin(QWidget* parent);

    /// Takes a SatPosRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {480, 360}; }

public slots:
    void SlotClearCn0ListActTriggered();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool ShowsConstellation(int index) const;
    QFont LegendFont() const;
    void PaintStill(QPainter& painter) const;
    void PaintLegend(QPainter& painter) const;
    void PaintScale(QPainter& painter) const;
    void PaintGrid(QPainter& painter) const;
    void PaintMap(QPainter& painter) const;
    QPixmap Dot(const QColor& fill, qreal devicePixelRatio);
    void PaintSatellites(QPainter& painter);

    std::vector<protocol::SatPosEntry> satList;
    SkyMap m_map;
    ConstellationLegend m_legend;
    NumberLabels m_labels;
    QHash<QRgb, QPixmap> m_dots;
    PlotLayer m_still; ///< all but the satellites
    ViewRefresh* m_refresh;
};
