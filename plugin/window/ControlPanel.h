// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/LeftDockWidget.h"

class QMainWindow;
class QPushButton;
class QTextEdit;
class QTreeWidget;

/// The dock at the left: the control panel's tree, the status log and its three buttons. It publishes the status
/// log.
class ControlPanel : public LeftDockWidget {
public:
    explicit ControlPanel(QMainWindow* window);

    QTreeWidget* Tree() const { return m_tree; }
    QPushButton* TimestampButton() const { return m_timestamp; }
    QPushButton* ClearButton() const { return m_clear; }
    QPushButton* BottomButton() const { return m_bottom; }

    /// The lines of the status log carry the time, or do so no more.
    void ToggleTimestamp();

private:
    QWidget* BuildContent(QMainWindow* window);

    QTextEdit* m_status = nullptr;
    QTreeWidget* m_tree = nullptr;
    QPushButton* m_timestamp = nullptr;
    QPushButton* m_clear = nullptr;
    QPushButton* m_bottom = nullptr;
};
