// SPDX-License-Identifier: MIT
#include "widgets/MyButton.h"

#include <QAction>
#include <QActionGroup>
#include <QFont>
#include <QFontMetrics>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPolygon>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

constexpr int kHeight = 25;
constexpr int kTextMargin = 6;
constexpr double kSmallestFont = 6.0; // points

/// Width of the inner button in a button of `width`.
int InnerWidth(int width)
{
    if (width < 60) {
        return width * 2 / 3;
    }
    if (width == 60) {
        return width * 3 / 4;
    }
    return width * 4 / 5;
}

} // namespace

MyButton::MyButton(const QIcon& icon, int width, QWidget* parent) : QPushButton(parent)
{
    Init(width);
    SetIcon(icon);
}

MyButton::MyButton(const QString& text, int width, QWidget* parent) : QPushButton(parent)
{
    Init(width);
    SetText(text);
}

void MyButton::Init(int width)
{
    setFixedSize(width, kHeight);
    setFocusPolicy(Qt::NoFocus);
    m_inner = new QPushButton(this);
    m_inner->setFlat(true);
    m_inner->setFocusPolicy(Qt::NoFocus);
    m_inner->setIconSize(QSize(18, 17));
    m_inner->setGeometry(0, 0, InnerWidth(width), kHeight);
    connect(m_inner, &QPushButton::clicked, this, &MyButton::SlotChilBtnClicked);

    m_menu = new QMenu(this);
    m_group = new QActionGroup(this);
    connect(m_group, &QActionGroup::triggered, this, &MyButton::SlotActtriggered);
    setMenu(m_menu);
}

void MyButton::SetMenuEntries(const QStringList& texts, const QStringList& separators)
{
    const QList<QAction*> actions = m_group->actions();
    for (QAction* action : actions) {
        m_group->removeAction(action);
        m_menu->removeAction(action);
        // It may be the one whose signal is being handled.
        action->deleteLater();
    }
    m_entries.clear();
    for (const QString& text : texts) {
        QAction* action = AddAction(text);
        if (separators.contains(text)) {
            action->setCheckable(false);
            action->setEnabled(false);
        }
    }
}

void MyButton::SelectEntry(const QString& text)
{
    if (QAction* action = FindAction(text)) {
        action->setChecked(true);
    } else {
        SlotMenuAddAction(text);
    }
}

void MyButton::SetToolTip(const QString& text)
{
    m_inner->setToolTip(text);
}

void MyButton::SetText(const QString& text)
{
    m_inner->setText(text);
    // The width is fixed, and a high baud rate is a long text.
    QFont small = font();
    while (QFontMetrics(small).horizontalAdvance(text) > m_inner->width() - kTextMargin &&
           small.pointSizeF() > kSmallestFont) {
        small.setPointSizeF(small.pointSizeF() - 0.5);
    }
    m_inner->setFont(small);
}

void MyButton::SetIcon(const QIcon& icon)
{
    m_inner->setIcon(icon);
}

void MyButton::SlotActtriggered(QAction* act)
{
    emit triggered(act->data().toString());
}

void MyButton::SlotChilBtnClicked()
{
    emit ChildBtnClicked();
}

void MyButton::SlotMenuAddAction(const QString& str)
{
    if (str.isEmpty()) {
        return;
    }
    QAction* action = FindAction(str);
    if (action == nullptr) {
        action = AddAction(str);
        SetText(str);
    }
    // Checking alone wouldn't fire; a greyed choice would.
    if (action->isEnabled()) {
        action->trigger();
    }
}

void MyButton::mousePressEvent(QMouseEvent* event)
{
    emit BtnClicked();
    QPushButton::mousePressEvent(event);
}

void MyButton::paintEvent(QPaintEvent*)
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.features &= ~QStyleOptionButton::HasMenu;
    QStylePainter painter(this);
    painter.drawControl(QStyle::CE_PushButtonBevel, option);

    const QPalette::ColorGroup colours = isEnabled() ? QPalette::Active : QPalette::Disabled;
    QColor line = palette().color(colours, QPalette::ButtonText);
    const QColor arrow = line;
    line.setAlphaF(0.25);
    const int left = m_inner->width();
    painter.setPen(line);
    painter.drawLine(left, 5, left, height() - 6);

    const QPoint centre((left + width()) / 2, height() / 2);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(arrow);
    painter.drawPolygon(QPolygon() << centre + QPoint(-3, -1) << centre + QPoint(3, -1) << centre + QPoint(0, 3));
}

QAction* MyButton::AddAction(const QString& text)
{
    auto* action = new QAction(text, m_group);
    // The text as given: a platform may put mnemonics into the shown one.
    action->setData(text);
    action->setCheckable(true);
    m_group->addAction(action);
    m_menu->addAction(action);
    m_entries.append(text);
    return action;
}

QAction* MyButton::FindAction(const QString& text) const
{
    const QList<QAction*> actions = m_group->actions();
    for (QAction* action : actions) {
        if (action->data().toString() == text) {
            return action;
        }
    }
    return nullptr;
}
