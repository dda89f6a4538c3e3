// SPDX-License-Identifier: MIT
#pragma once

#include "views/message/MessageTables.h"

#include <QString>
#include <QVector>

class QObject;
class QStandardItemModel;

/// The name of a message type.
QString MessageName(const MessageShape& shape);

/// The models of a message type, one for each block, with their names and no values.
QVector<QStandardItemModel*> MakeMessageModels(const MessageShape& shape, QObject* parent);

/// Writes the values of a payload of `size` bytes into the models. Cells whose value the payload doesn't hold
/// become empty.
void FillMessageModels(const MessageShape& shape, const QVector<QStandardItemModel*>& models, const char* payload,
                       std::size_t size);
