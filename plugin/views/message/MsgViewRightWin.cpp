// SPDX-License-Identifier: MIT
#include "views/message/MsgViewRightWin.h"

#include "views/TableLook.h"
#include "views/message/MessageModels.h"

#include "ui_MsgViewRightWin.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QStandardItemModel>

#include <algorithm>

namespace {

/// As wide as a value becomes.
constexpr const char* kWidestValue = "-8.88888e+08";

constexpr std::size_t kSharingColumns = 5;

} // namespace

MsgViewRightWin::MsgViewRightWin(QWidget* parent) : QWidget(parent), ui(new Ui::MsgViewRightWin)
{
    ui->setupUi(this);
    MakeRowsLow(ui->tableView);
    for (const MessageShape& shape : message_tables::kShapes) {
        m_models.insert(MessageName(shape), MakeMessageModels(shape, this));
    }
}

MsgViewRightWin::~MsgViewRightWin() = default;

void MsgViewRightWin::SetValues(const MessageShape& shape, const char* payload, std::size_t size)
{
    FillMessageModels(shape, m_models.value(MessageName(shape)), payload, size);
}

void MsgViewRightWin::ShowNode(const QString& title, const QString& name)
{
    ui->tittle->setText(tr("%1消息").arg(title));
    ui->msgLabel->setText(name);
    ui->stackedWidget->setCurrentWidget(ui->page_2);
}

void MsgViewRightWin::ShowMessage(const QString& title, const QString& type, int block)
{
    ui->tittle->setText(tr("%1消息").arg(title));
    ui->stackedWidget->setCurrentWidget(ui->page);
    for (const MessageShape& shape : message_tables::kShapes) {
        if (MessageName(shape) != type) {
            continue;
        }
        ui->satInfo->setVisible(shape.msgType == protocol::MsgTypeGsv);
        QStandardItemModel* model = m_models.value(type).value(block);
        if (model == ui->tableView->model()) {
            return;
        }
        // The table makes a selection with each model and keeps the one before.
        const std::unique_ptr<QItemSelectionModel> before(ui->tableView->selectionModel());
        ui->tableView->setModel(model);
        FitColumns(shape);
        return;
    }
}

void MsgViewRightWin::FitColumns(const MessageShape& shape)
{
    int widestName = 0;
    for (std::size_t i = 0; i < shape.fieldCount; ++i) {
        widestName = std::max(widestName, CellWidth(ui->tableView, shape.fields[i].label));
    }

    QHeaderView* header = ui->tableView->horizontalHeader();
    // Few columns share the width; many have widths of their own and are scrolled.
    const bool shares = shape.IsTable() && shape.fieldCount <= kSharingColumns;
    header->setMinimumSectionSize(shares ? widestName : -1);
    header->setSectionResizeMode(shares ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (!shape.IsTable()) {
        header->resizeSection(0, widestName);
        header->setSectionResizeMode(1, QHeaderView::Stretch);
    } else if (!shares) {
        for (std::size_t i = 0; i < shape.fieldCount; ++i) {
            const int name = CellWidth(ui->tableView, shape.fields[i].label);
            const bool isShort = FieldSize(shape.fields[i].kind) <= 2;
            header->resizeSection(static_cast<int>(i),
                                  isShort ? name : std::max(name, CellWidth(ui->tableView, kWidestValue)));
        }
    }
}
