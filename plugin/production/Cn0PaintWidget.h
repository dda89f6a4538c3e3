// SPDX-License-Identifier: MIT
#pragma once

#include "production/EpochSignals.h"

#include <QWidget>

/// The satellites of an epoch as bars from left to right, one constellation after the other.
class Cn0PaintWidget : public QWidget {
    Q_OBJECT

public:
    explicit Cn0PaintWidget(QWidget* parent = nullptr);

    void SetBars(const std::array<SatelliteBars, kConstellations>& bars);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::array<SatelliteBars, kConstellations> m_bars;
};
