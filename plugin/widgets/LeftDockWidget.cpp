// SPDX-License-Identifier: MIT
#include "widgets/LeftDockWidget.h"

#include "widgets/DockTitleBar.h"

#include <QCloseEvent>

namespace {

// What stays in view of a hidden dock, in pixels.
constexpr int kEdge = 3;

} // namespace

LeftDockWidget::LeftDockWidget(const QString& title, QWidget* parent) : QDockWidget(title, parent)
{
    InitUi();
}

void LeftDockWidget::InitUi()
{
    if (m_titleBar != nullptr) {
        return;
    }
    m_titleBar = new DockTitleBar(this);
    setTitleBarWidget(m_titleBar);
    connect(m_titleBar, &DockTitleBar::DockTilteCloseSignal, this, &LeftDockWidget::DockTitleCloseAction);
    connect(m_titleBar, &DockTitleBar::DockAutoHideSignal, this, [this](bool on) { m_savedX = on ? x() : -1; });
    connect(this, &QDockWidget::dockLocationChanged, this, &LeftDockWidget::LocationChanged);
    connect(this, &QDockWidget::topLevelChanged, this, &LeftDockWidget::OnDockWidgetTopLevelChanged);
}

void LeftDockWidget::LocationChanged(Qt::DockWidgetArea area)
{
    // A dock that comes off reports no area; the one it came from tells to which side it hides.
    if (area != Qt::NoDockWidgetArea) {
        m_area = area;
    }
}

void LeftDockWidget::DockTitleCloseAction()
{
    emit DockTilteCloseSignal();
}

void LeftDockWidget::OnDockWidgetTopLevelChanged(bool topLevel)
{
    m_titleBar->ShowFloating(topLevel);
}

void LeftDockWidget::enterEvent(QEvent* event)
{
    QDockWidget::enterEvent(event);
    if (!m_titleBar->AutoHide()) {
        return;
    }
    if (m_area == Qt::RightDockWidgetArea) {
        move(m_savedX + kEdge, y());
    } else if (m_area == Qt::LeftDockWidgetArea) {
        move(m_savedX - kEdge, y());
    }
}

void LeftDockWidget::leaveEvent(QEvent* event)
{
    QDockWidget::leaveEvent(event);
    if (!m_titleBar->AutoHide()) {
        return;
    }
    if (m_area == Qt::LeftDockWidgetArea) {
        move(m_savedX - width() + kEdge, y());
    } else if (m_area == Qt::RightDockWidgetArea) {
        move(m_savedX + width() - kEdge, y());
    }
}

void LeftDockWidget::closeEvent(QCloseEvent* event)
{
    QDockWidget::closeEvent(event);
    emit DockCloseSignal();
}
