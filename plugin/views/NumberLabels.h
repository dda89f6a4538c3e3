// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QHash>
#include <QStaticText>

class QPainter;
class QRectF;

/// Whole numbers as plots show them by the hundred, each laid out once.
class NumberLabels {
public:
    /// Draws a number in the painter's font with its middle in the middle of a box, whole even where the box is
    /// smaller.
    void Draw(QPainter& painter, const QRectF& box, int number);

private:
    QFont m_font;
    QHash<int, QStaticText> m_texts;
};
