// SPDX-License-Identifier: MIT
#include "views/TableLook.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QTableView>

namespace {

constexpr int kRowMargin = 4;
constexpr int kCellMargin = 8;

} // namespace

void MakeRowsLow(QTableView* table)
{
    QHeaderView* header = table->verticalHeader();
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setMinimumSectionSize(1);
    header->setDefaultSectionSize(table->fontMetrics().height() + kRowMargin);
}

int CellWidth(const QTableView* table, const QString& text)
{
    return table->fontMetrics().horizontalAdvance(text) + kCellMargin;
}
