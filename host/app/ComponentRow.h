// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/Components.h"

class QLabel;
class QStatusBar;

/// The start-up row in the status bar, with a chip for each component, and the line that tells in words what is
/// not in use.
class ComponentRow {
public:
    ComponentRow();
    ComponentRow(const ComponentRow&) = delete;
    ComponentRow& operator=(const ComponentRow&) = delete;

    /// The line of problems; hidden while there is none. Whoever takes it into a layout owns it.
    QLabel* Problem() const { return m_problem; }
    /// Puts the chips into the status bar, which owns them.
    void AddTo(QStatusBar* bar);

    void Show(const ComponentStatus& plugin, const ComponentStatus& codec, const ComponentStatus& archiver);
    /// Writes the texts anew; does nothing before Show.
    void Retranslate();

private:
    struct Chip {
        QLabel* label = nullptr;
        ComponentStatus status;
        bool optional = false;

        void Show(const QString& name) const;
    };

    QLabel* m_problem;
    Chip m_plugin;
    Chip m_codec;
    Chip m_archiver;
    bool m_filled = false;
};
