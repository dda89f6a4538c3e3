// SPDX-License-Identifier: MIT
#include "views/DataViewWin.h"

#include "base/ProcessState.h"
#include "bridge/RecordCopy.h"
#include "protocol/Records.h"
#include "views/FixTexts.h"
#include "views/TableLook.h"

#include <QHeaderView>
#include <QTableWidget>
#include <QVBoxLayout>

DataViewWin::DataViewWin(QWidget* parent) : ClosingWidget(parent)
{
    setWindowTitle(tr("定位数据"));
    m_table = new QTableWidget(kFixTextCount, 1, this);
    m_table->setObjectName("tableWidget");
    m_table->setAlternatingRowColors(true);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setShowGrid(true);
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->setStyleSheet("QHeaderView::Section{background:white;color:gray;}");
    m_table->setHorizontalHeaderLabels({tr("值")});
    m_table->setVerticalHeaderLabels({tr("TTFF"), tr("经度"), tr("纬度"), tr("海拔高度"), tr("UTC日期"),
                                      tr("UTC时间"), tr("定位模式"), tr("速度"), tr("航向"), tr("位置精度DOP"),
                                      tr("水平精度DOP"), tr("高程精度DOP")});
    m_table->horizontalHeader()->setStretchLastSection(true);
    MakeRowsLow(m_table);
    m_table->selectRow(0);

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_table);
}

void DataViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::FixRecord), "DataViewWin");
    if (record.IsDropped()) {
        return;
    }
    const QStringList texts = FixTexts(record.Data(), record.Size(), Global::firstFixText);
    for (int row = 0; row < m_table->rowCount(); ++row) {
        QTableWidgetItem* item = m_table->item(row, 0);
        if (item == nullptr) {
            item = new QTableWidgetItem;
            item->setTextAlignment(Qt::AlignCenter);
            m_table->setItem(row, 0, item);
        }
        item->setText(texts[row]);
    }
}
