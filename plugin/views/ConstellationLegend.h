// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QPoint>
#include <QRect>

#include <array>

class QPainter;

/// The rows of check pictures by which a satellite view shows and hides constellations, in the order of
/// kDrawOrder.
class ConstellationLegend {
public:
    static constexpr int kIconX = 10;
    static constexpr int kIconSize = 20; ///< of the picture and of what can be clicked, whatever picture there is
    static constexpr int kTextX = 35;
    static constexpr int kRowStep = 26;
    static constexpr int kTextBelowIconTop = 12; ///< from a picture's top to the row's text line

    /// `firstIconTop` is the top of the first row's picture.
    explicit ConstellationLegend(int firstIconTop);

    /// Turns the row over that lies under a point; false when there is none.
    bool Click(const QPoint& position);

    bool IsHidden(int row) const { return m_iconState[static_cast<std::size_t>(row)] != 0; }

    /// One bit for each hidden row.
    int HiddenRows() const;

    /// The height of a row's text line.
    int TextY(int row) const { return IconRect(row).top() + kTextBelowIconTop; }
    QRect IconRect(int row) const;

    void PaintIcons(QPainter& painter) const;

    /// Draws a picture of the host into a box, whatever size it has, without distorting it.
    static void PaintPicture(QPainter& painter, const QRect& box, const QPixmap& picture);

    /// The host's picture of that name.
    static QPixmap Picture(const char* name, const char* ending = "");

private:
    int m_firstIconTop;
    std::array<int, 5> m_iconState{}; ///< 0 shown and checked, 1 hidden
    std::array<std::array<QPixmap, 2>, 5> m_icons;
};
