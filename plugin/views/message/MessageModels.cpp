// SPDX-License-Identifier: MIT
#include "views/message/MessageModels.h"

#include <QObject>
#include <QStandardItemModel>
#include <QStringList>

namespace {

constexpr int kNameColumn = 0;
constexpr int kValueColumn = 1;

void SetText(QStandardItemModel* model, int row, int column, const QString& text)
{
    // A cell that is changed in place costs a tenth of a new one, and one that stays the same is not painted.
    QStandardItem* item = model->item(row, column);
    if (item != nullptr) {
        item->setText(text);
    } else {
        model->setItem(row, column, new QStandardItem(text));
    }
}

QStandardItemModel* MakeTable(const MessageShape& shape, QObject* parent)
{
    auto* model = new QStandardItemModel(static_cast<int>(shape.rows), static_cast<int>(shape.fieldCount), parent);
    QStringList names;
    for (std::size_t i = 0; i < shape.fieldCount; ++i) {
        names += shape.fields[i].label;
    }
    model->setHorizontalHeaderLabels(names);
    return model;
}

QStandardItemModel* MakeList(const MessageShape& shape, QObject* parent)
{
    auto* model = new QStandardItemModel(0, 2, parent);
    model->setHorizontalHeaderLabels({QString(), "value"});
    for (std::size_t i = 0; i < shape.fieldCount; ++i) {
        // A value without a name opens its row itself.
        if (shape.fields[i].label != nullptr) {
            SetText(model, static_cast<int>(i), kNameColumn, shape.fields[i].label);
        }
    }
    return model;
}

} // namespace

QString MessageName(const MessageShape& shape)
{
    return protocol::FindMessageLayout(shape.msgType)->name;
}

QVector<QStandardItemModel*> MakeMessageModels(const MessageShape& shape, QObject* parent)
{
    QVector<QStandardItemModel*> models;
    for (std::size_t block = 0; block < shape.blocks; ++block) {
        models += shape.IsTable() ? MakeTable(shape, parent) : MakeList(shape, parent);
    }
    return models;
}

void FillMessageModels(const MessageShape& shape, const QVector<QStandardItemModel*>& models, const char* payload,
                       std::size_t size)
{
    for (int block = 0; block < models.size(); ++block) {
        const std::size_t start = shape.blockOffset + static_cast<std::size_t>(block) * shape.blockSize;
        for (std::size_t row = 0; row < shape.rows; ++row) {
            const std::size_t at = start + shape.rowOffset + row * shape.rowSize;
            for (std::size_t i = 0; i < shape.fieldCount; ++i) {
                const QString text = FieldText(payload, size, at + shape.fields[i].offset, shape.fields[i].kind);
                if (shape.IsTable()) {
                    SetText(models[block], static_cast<int>(row), static_cast<int>(i), text);
                } else {
                    SetText(models[block], static_cast<int>(i), kValueColumn, text);
                }
            }
        }
    }
}
