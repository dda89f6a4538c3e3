// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

/// The widget that is passed to the plug-in as parent of its window.
class PluginParent : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

Q_SIGNALS:
    /// Tells the window that the host has taken it in (true) or is about to give it up (false).
    void NotifyPluginConnectSignal(bool connected);
};
