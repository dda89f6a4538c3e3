// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// A widget that tells of its closing. Views and tool windows are such.
class ClosingWidget : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

signals:
    /// From the close event only, so a widget that is deleted says nothing.
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
