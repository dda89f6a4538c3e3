// SPDX-License-Identifier: MIT
#include "widgets/CustomComboBox.h"

#include <QStyleOptionFrame>
#include <QStylePainter>

namespace customComboBox {

namespace {

constexpr int kArrowWidth = 20;

} // namespace

CustomComboBox::CustomComboBox(QWidget* parent) : QComboBox(parent) {}

void CustomComboBox::SetChildWidget(QWidget* child)
{
    if (child == m_child) {
        return;
    }
    delete m_child;
    m_child = child;
    if (m_child != nullptr) {
        m_child->setParent(this);
        m_child->move(0, 0);
        m_child->show();
    }
    update();
}

void CustomComboBox::paintEvent(QPaintEvent*)
{
    if (m_child != nullptr) {
        m_child->setFixedSize(qMax(0, width() - kArrowWidth), height());
    }
    QStylePainter painter(this);
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    frame.state |= QStyle::State_Sunken;
    painter.drawPrimitive(QStyle::PE_PanelLineEdit, frame);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    painter.drawText(QRect(width() - kArrowWidth, 0, kArrowWidth, height()), Qt::AlignCenter, "﹀");
}

} // namespace customComboBox
