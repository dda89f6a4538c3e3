// SPDX-License-Identifier: MIT
#pragma once

#include "views/ConstellationLegend.h"
#include "views/NumberLabels.h"
#include "views/signal/SignalTable.h"
#include "widgets/ClosingWidget.h"

#include <QPixmap>

#include <array>

class AgeEdit;
class QTimer;
class ViewRefresh;

/// One column for each satellite with a signal, grouped by constellation, and the counts of satellites.
class Cn0ViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit Cn0ViewWin(QWidget* parent);

    /// Takes a Cn0Record; `length` in bytes.
    void OnRecord(const void* buffer, int length);

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {480, 360}; }

public slots:
    void TimerTimeout();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool IsShown(int constellation) const;
    QString CountText(int counter) const;
    QRect LegendRect(const QPainter& painter) const;
    int CountX(const QPainter& painter) const;
    void PaintLegend(QPainter& painter) const;
    bool PaintBars(QPainter& painter, const QRect& legend);
    bool PaintColumn(QPainter& painter, int x, const SignalTable::Satellite& satellite, const QColor& colour,
                     const QRect& legend);

    SignalTable m_signals;
    NumberLabels m_labels;
    ConstellationLegend m_legend;
    quint64 ageSeconds = 0;
    AgeEdit* ageEdit;
    QTimer* ageTimer;
    int barWidth = 0;
    int barPitch = 0;
    QPixmap m_totalImage;
    std::array<QPixmap, 5> m_flagImages;
    ViewRefresh* m_refresh;
};
