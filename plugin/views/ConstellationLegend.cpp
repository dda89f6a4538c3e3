// SPDX-License-Identifier: MIT
#include "views/ConstellationLegend.h"

#include "views/Constellations.h"

#include "host/support/ImageManager.h"

#include <QPainter>

ConstellationLegend::ConstellationLegend(int firstIconTop) : m_firstIconTop(firstIconTop)
{
    for (std::size_t row = 0; row < m_icons.size(); ++row) {
        m_icons[row][0] = Picture(DrawnAt(row).picture, "Checked");
        m_icons[row][1] = Picture(DrawnAt(row).picture, "Unchecked");
    }
}

bool ConstellationLegend::Click(const QPoint& position)
{
    for (int row = 0; row < kLegendRows; ++row) {
        if (IconRect(row).contains(position)) {
            int& state = m_iconState[static_cast<std::size_t>(row)];
            state = (state + 1) & 1;
            return true;
        }
    }
    return false;
}

int ConstellationLegend::HiddenRows() const
{
    int rows = 0;
    for (std::size_t row = 0; row < m_iconState.size(); ++row) {
        rows |= m_iconState[row] << row;
    }
    return rows;
}

QRect ConstellationLegend::IconRect(int row) const
{
    return {kIconX, m_firstIconTop + row * kRowStep, kIconSize, kIconSize};
}

void ConstellationLegend::PaintIcons(QPainter& painter) const
{
    for (int row = 0; row < kLegendRows; ++row) {
        const std::size_t index = static_cast<std::size_t>(row);
        PaintPicture(painter, IconRect(row), m_icons[index][static_cast<std::size_t>(m_iconState[index])]);
    }
}

void ConstellationLegend::PaintPicture(QPainter& painter, const QRect& box, const QPixmap& picture)
{
    if (picture.isNull()) {
        return;
    }
    const QSizeF natural = QSizeF(picture.size()) / picture.devicePixelRatio();
    QRectF target(QPointF(), natural);
    if (natural.width() > box.width() || natural.height() > box.height()) {
        target.setSize(natural.scaled(box.size(), Qt::KeepAspectRatio));
    }
    target.moveCenter(QRectF(box).center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(target, picture, QRectF(picture.rect()));
}

QPixmap ConstellationLegend::Picture(const char* name, const char* ending)
{
    return ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + QLatin1String(name) +
                                         QLatin1String(ending) + QLatin1String(".png"));
}
