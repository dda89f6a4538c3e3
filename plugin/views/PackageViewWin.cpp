// SPDX-License-Identifier: MIT
#include "views/PackageViewWin.h"

#include "base/GnssSaveData.h"
#include "bridge/RecordCopy.h"
#include "host/support/ImageManager.h"
#include "protocol/Records.h"
#include "views/RecordField.h"
#include "views/TableLook.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLocale>
#include <QStandardItemModel>
#include <QTableView>
#include <QTime>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cstddef>

namespace {

/// The table restarts empty when it holds more rows.
constexpr int kMostRows = 50;

struct PackageColumn {
    std::size_t offset;
    FieldKind kind;
};

constexpr PackageColumn kColumns[] = {
    {offsetof(protocol::PackageRecord, type), FieldKind::Hex8},
    {offsetof(protocol::PackageRecord, direction), FieldKind::Direction},
    {offsetof(protocol::PackageRecord, subType), FieldKind::Hex16},
    {offsetof(protocol::PackageRecord, length), FieldKind::U16},
};

} // namespace

PackageViewWin::PackageViewWin(QWidget* parent) : ClosingWidget(parent)
{
    setWindowTitle(tr("数据传输"));
    auto* row = new QHBoxLayout;
    row->setContentsMargins(4, 2, 4, 2);
    row->setSpacing(2);
    clearBtn = AddButton(row, "clearBtn", "delete.png", tr("清空"));
    bottomBtn = AddButton(row, "bottomBtn", "bottom.png", tr("跟随最新数据"));
    bottomBtn->setCheckable(true);
    row->addStretch(1);
    connect(clearBtn, &QToolButton::clicked, this, &PackageViewWin::SlotClearBtnClicked);
    connect(bottomBtn, &QToolButton::clicked, this, &PackageViewWin::SlotBottomBtnClicked);

    m_model = new QStandardItemModel(this);
    const QStringList labels = {tr("时间戳"), tr("数据类型"), tr("方向"), tr("子数据类型"), tr("数据长度")};
    m_model->setHorizontalHeaderLabels(labels);
    tableView = new QTableView(this);
    tableView->setObjectName("tableView");
    tableView->setModel(m_model);
    tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    tableView->setAlternatingRowColors(true);
    tableView->setFrameShape(QFrame::NoFrame);
    FitColumns(labels);
    tableView->verticalHeader()->hide();
    MakeRowsLow(tableView);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(row);
    column->addWidget(tableView, 1);

    saveData = new GnssSaveData(this);
    saveData->SetLogName("package");
    saveData->OpenLog();
    connect(saveData, &GnssSaveData::clearWin, this, &PackageViewWin::SlotClearBtnClicked);
}

void PackageViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::PackageRecord), "PackageViewWin");
    if (record.IsDropped()) {
        return;
    }
    QList<QStandardItem*> row;
    row += new QStandardItem(QLocale::c().toString(QTime::currentTime(), "hh:mm:ss.zzz"));
    for (const PackageColumn& column : kColumns) {
        row += new QStandardItem(FieldText(record.Data(), record.Size(), column.offset, column.kind));
    }
    m_model->appendRow(row);
    ++rowCounter;
    if (followBottom) {
        tableView->scrollToBottom();
    }
    saveData->Write(record.Data(), static_cast<quint32>(record.Size()));
    // The counter stays when the user empties the table: then it restarts before it is full, as it is meant.
    if (rowCounter > kMostRows) {
        SlotClearBtnClicked();
        rowCounter = 0;
    }
}

void PackageViewWin::SlotClearBtnClicked()
{
    // Unlike clear() this leaves the columns and their headers.
    m_model->setRowCount(0);
}

void PackageViewWin::SlotBottomBtnClicked()
{
    followBottom = !followBottom;
    bottomBtn->setChecked(followBottom);
}

void PackageViewWin::FitColumns(const QStringList& labels)
{
    int widestLabel = 0;
    for (const QString& label : labels.mid(1)) {
        widestLabel = std::max(widestLabel, CellWidth(tableView, label));
    }
    QHeaderView* header = tableView->horizontalHeader();
    header->setMinimumSectionSize(widestLabel);
    header->setSectionResizeMode(QHeaderView::Stretch);
    // The time is shown whole, and the others share the rest.
    header->setSectionResizeMode(0, QHeaderView::Fixed);
    header->resizeSection(0, CellWidth(tableView, "00:00:00.000"));
}

QToolButton* PackageViewWin::AddButton(QBoxLayout* row, const QString& name, const QString& icon,
                                       const QString& toolTip)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/" + icon)));
    button->setIconSize(QSize(16, 16));
    button->setToolTip(toolTip);
    button->setAutoRaise(true);
    row->addWidget(button);
    return button;
}
