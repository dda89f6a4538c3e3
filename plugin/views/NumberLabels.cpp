// SPDX-License-Identifier: MIT
#include "views/NumberLabels.h"

#include <QPainter>

#include <cmath>

void NumberLabels::Draw(QPainter& painter, const QRectF& box, int number)
{
    if (painter.font() != m_font) {
        m_font = painter.font();
        m_texts.clear();
    }
    auto text = m_texts.find(number);
    if (text == m_texts.end()) {
        text = m_texts.insert(number, QStaticText(QString::number(number)));
        text->setTextFormat(Qt::PlainText);
        text->prepare(QTransform(), m_font);
    }
    const QSizeF size = text->size();
    // On whole pixels down, where letters are sharp.
    painter.drawStaticText(
        QPointF(box.center().x() - size.width() / 2.0, std::round(box.center().y() - size.height() / 2.0)), *text);
}
