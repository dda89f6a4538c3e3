#pragma once

#include "codec/Records.h"
#include "views/ConstellationLegend.h"
#include "views/SkyMap.h"

#include <QWidget>

#include <vector>

/// The sky as a polar plot: the satellites of the latest record over a map of the average signal strength.
class SatellitesPosViewWin : public QWidget {
    Q_OBJECT

public:
    explicit SatellitesPosViewWin(QWidget* parent);

    /// Takes a SatPosRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

public slots:
    void SlotClearCn0ListActTriggered();

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    bool ShowsConstellation(int index) const;
    QFont LegendFont() const;
    void PaintLegend(QPainter& painter) const;
    void PaintScale(QPainter& painter) const;
    void PaintGrid(QPainter& painter) const;
    void PaintMap(QPainter& painter) const;
    void PaintSatellites(QPainter& painter) const;

    std::vector<gnss::SatPosEntry> satList;
    SkyMap m_map;
    ConstellationLegend m_legend;
};
