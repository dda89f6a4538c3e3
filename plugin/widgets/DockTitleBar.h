// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QWidget>

class QAction;
class QActionGroup;
class QDockWidget;
class QMenu;

/// The title bar of a dock: a picture, the dock's title, and a menu to dock it, hide it at the edge, or close it.
class DockTitleBar : public QWidget {
    Q_OBJECT

public:
    explicit DockTitleBar(QDockWidget* dock);

    bool AutoHide() const { return autoHide; }

    /// Brings the menu in line with the dock's floating state, unless the dock hides by itself.
    void ShowFloating(bool floating);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void DockTilteCloseSignal();
    void DockAutoHideSignal(bool flag);
    void MyCustomContextMenuRequested();

public slots:
    void AutoHideAction();
    void HideAction();
    void DockingAction();
    void OnMyDockWidgetCustomContextMenuRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QPixmap m_pixmap;
    QDockWidget* m_dock;
    QAction* m_dockingAction = nullptr;
    QAction* m_autoHideAction = nullptr;
    QAction* m_hideAction = nullptr;
    QActionGroup* m_group = nullptr;
    QMenu* m_menu = nullptr;
    bool autoHide = false;
};
