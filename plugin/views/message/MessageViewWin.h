// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class MsgViewRightWin;
class QTreeWidget;
class QTreeWidgetItem;

/// The fields of every message: a tree of the types, and the latest values of the one that is chosen.
class MessageViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit MessageViewWin(QWidget* parent);

    /// Takes a MessageRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

    /// The size of a window that is neither tiled nor maximised.
    QSize sizeHint() const override { return {560, 360}; }

public slots:
    /// Shows the chosen item at the right.
    void SlotUpdateRightWin(QTreeWidgetItem* item, int column);

private:
    void FillTree();

    QTreeWidget* m_tree = nullptr;
    MsgViewRightWin* m_right = nullptr;
};
