// SPDX-License-Identifier: MIT
#pragma once

#include <QDockWidget>

class DockTitleBar;

/// A dock with a title bar of its own that can hide at the edge of the screen.
class LeftDockWidget : public QDockWidget {
    Q_OBJECT

public:
    explicit LeftDockWidget(const QString& title, QWidget* parent = nullptr);

signals:
    void DockCloseSignal();
    void DockTilteCloseSignal();

public slots:
    void LocationChanged(Qt::DockWidgetArea area);
    void DockTitleCloseAction();
    void OnDockWidgetTopLevelChanged(bool topLevel);
    void InitUi();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    DockTitleBar* m_titleBar = nullptr;
    int m_area = Qt::LeftDockWidgetArea; ///< 1 left, 2 right
    int m_savedX = -1;                   ///< x of the dock while it hides by itself, in screen pixels
};
