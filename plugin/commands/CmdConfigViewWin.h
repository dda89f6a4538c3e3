// SPDX-License-Identifier: MIT
#pragma once

#include <QMainWindow>

/// The command configuration as a main window of its own. Nothing opens it.
class CmdConfigViewWin : public QMainWindow {
    Q_OBJECT

public:
    explicit CmdConfigViewWin(QWidget* parent = nullptr);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
