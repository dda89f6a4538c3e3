// SPDX-License-Identifier: MIT
#pragma once

#include "views/message/MessageTables.h"

#include <QMap>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>

class QStandardItemModel;
namespace Ui {
class MsgViewRightWin;
}

/// The right side of the message view: the latest values of every message type, and the table of the one that is
/// chosen.
class MsgViewRightWin : public QWidget {
    Q_OBJECT

public:
    explicit MsgViewRightWin(QWidget* parent);
    ~MsgViewRightWin() override;

    /// Takes a payload of `size` bytes.
    void SetValues(const MessageShape& shape, const char* payload, std::size_t size);

    /// Shows a node of the tree, which has no values.
    void ShowNode(const QString& title, const QString& name);

    /// Shows a message type; `block` is the constellation where a type has one model for each.
    void ShowMessage(const QString& title, const QString& type, int block);

private:
    void FitColumns(const MessageShape& shape);

    std::unique_ptr<Ui::MsgViewRightWin> ui;
    QMap<QString, QVector<QStandardItemModel*>> m_models; ///< by type name, one model for each block
};
