// SPDX-License-Identifier: MIT
#pragma once

#include "views/PlotLayer.h"
#include "widgets/ClosingWidget.h"

#include <QString>

class ViewRefresh;

/// The heading as a needle over a dial, with the fix mode in words.
class CompassViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit CompassViewWin(QWidget* parent);

    /// Takes a CompassRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {480, 360}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void ToSquare(QPainter& painter) const;
    void PaintDial(QPainter& painter) const;
    void PaintNeedle(QPainter& painter) const;
    void PaintTexts(QPainter& painter) const;

    float heading = 0.0F; ///< degrees clockwise from north
    QString modeText;
    PlotLayer m_dial;
    ViewRefresh* m_refresh;
};
