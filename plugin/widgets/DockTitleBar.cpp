// SPDX-License-Identifier: MIT
#include "widgets/DockTitleBar.h"

#include "host/support/ImageManager.h"

#include <QAction>
#include <QActionGroup>
#include <QCursor>
#include <QDockWidget>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr QSize kSize(200, 25);
constexpr QSize kPixmapSize(16, 16);
constexpr int kMargin = 6;
constexpr QRgb kStripColour = qRgb(47, 79, 108);

} // namespace

DockTitleBar::DockTitleBar(QDockWidget* dock)
    : QWidget(dock), m_pixmap(ImageManager::GetPixmapObject(":/images/images/dock1.png")), m_dock(dock)
{
    m_dockingAction = new QAction("Docking", this);
    m_autoHideAction = new QAction("Auto Hide", this);
    m_hideAction = new QAction("Hide", this);
    m_group = new QActionGroup(this);
    for (QAction* action : {m_dockingAction, m_autoHideAction}) {
        action->setCheckable(true);
        m_group->addAction(action);
    }
    m_dockingAction->setChecked(true);
    connect(m_dockingAction, &QAction::triggered, this, &DockTitleBar::DockingAction);
    connect(m_autoHideAction, &QAction::triggered, this, &DockTitleBar::AutoHideAction);
    connect(m_hideAction, &QAction::triggered, this, &DockTitleBar::HideAction);

    m_menu = new QMenu(this);
    m_menu->addActions({m_dockingAction, m_autoHideAction, m_hideAction});
    connect(this, &DockTitleBar::MyCustomContextMenuRequested, this,
            &DockTitleBar::OnMyDockWidgetCustomContextMenuRequested);
    connect(dock, &QDockWidget::windowTitleChanged, this, QOverload<>::of(&DockTitleBar::update));
}

void DockTitleBar::ShowFloating(bool floating)
{
    if (autoHide) {
        return;
    }
    if (!floating) {
        m_dockingAction->setChecked(true);
    }
    m_autoHideAction->setEnabled(!floating);
}

QSize DockTitleBar::sizeHint() const
{
    return m_dock->features() & QDockWidget::DockWidgetVerticalTitleBar ? kSize.transposed() : kSize;
}

void DockTitleBar::AutoHideAction()
{
    autoHide = !autoHide;
    m_autoHideAction->setChecked(autoHide);
    if (autoHide) {
        m_dockingAction->setEnabled(false);
        m_hideAction->setEnabled(false);
        m_dock->setFloating(true);
        m_pixmap = ImageManager::GetPixmapObject(":/images/images/dock3.png");
    } else {
        m_dockingAction->setChecked(true);
        m_dockingAction->setEnabled(true);
        m_hideAction->setEnabled(true);
        m_dock->setFloating(false);
        m_pixmap = ImageManager::GetPixmapObject(":/images/images/dock1.png");
    }
    update();
    emit DockAutoHideSignal(autoHide);
}

void DockTitleBar::HideAction()
{
    emit DockTilteCloseSignal();
}

void DockTitleBar::DockingAction()
{
    m_dock->setFloating(false);
    m_autoHideAction->setEnabled(true);
}

void DockTitleBar::OnMyDockWidgetCustomContextMenuRequested()
{
    m_menu->popup(QCursor::pos());
}

void DockTitleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QRect strip = rect();
    if (m_dock->features() & QDockWidget::DockWidgetVerticalTitleBar) {
        strip = QRect(QPoint(0, 0), strip.size().transposed());
        painter.translate(0, height());
        painter.rotate(-90);
    }
    painter.fillRect(strip, QColor(kStripColour));

    const QRect picture(QPoint(kMargin, (strip.height() - kPixmapSize.height()) / 2), kPixmapSize);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(picture, m_pixmap);

    QFont font("Arial");
    font.setPixelSize(13);
    painter.setFont(font);
    painter.setPen(QPen(QColor("white"), 1));
    const QRect text = strip.adjusted(picture.right() + kMargin, 0, -kMargin, 0);
    painter.drawText(text, Qt::AlignLeft | Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(m_dock->windowTitle(), Qt::ElideRight, text.width()));
}

void DockTitleBar::mousePressEvent(QMouseEvent* event)
{
    // A left press is the dock's, for dragging.
    event->ignore();
    if (event->button() == Qt::RightButton) {
        event->accept();
        emit MyCustomContextMenuRequested();
    }
}
