// SPDX-License-Identifier: MIT
#include "performance/KpiTables.h"

#include "ui_KpiViewWin.h"

#include <QHeaderView>
#include <QTableWidget>

namespace {

// Rows of the latest fix and of the satellites that hold values.
enum LatestRow { LatestRowTime = 2, LatestRowPlace = 4 };
enum SatRow { SatRowTracked = 2, SatRowUsed = 3, SatRowTop5 = 4 };
constexpr int latestInUseColumn = 3;
constexpr int satTotalColumn = 1;
constexpr int satFirstColumn = 2; ///< of the constellations

/// Puts a new, centred cell into the place of the old one.
void SetCell(QTableWidget* table, int row, int column, const QString& text)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignCenter);
    table->setItem(row, column, cell);
}

/// Takes the cells of a row out, so that they are missing and not empty.
void RemoveCells(QTableWidget* table, int row, int first, int last)
{
    for (int column = first; column <= last; ++column) {
        delete table->takeItem(row, column);
    }
}

void StyleTable(QTableWidget* table)
{
    table->resizeColumnsToContents();
    for (QHeaderView* header : {table->horizontalHeader(), table->verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Stretch);
        header->setMinimumSectionSize(1);
        header->setVisible(false);
    }
    table->setSpan(0, 0, 1, table->columnCount());
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            if (QTableWidgetItem* cell = table->item(row, column)) {
                cell->setTextAlignment(Qt::AlignCenter);
            }
        }
    }
}

} // namespace

QTableWidget* KpiTables::Results(KpiTestMode mode) const
{
    return mode == KpiTestMode::Cold ? m_ui.coldTestResult : m_ui.hotTestResult;
}

void KpiTables::Style() const
{
    for (QTableWidget* table : {m_ui.coldTestResult, m_ui.hotTestResult, m_ui.latestData, m_ui.satData}) {
        StyleTable(table);
    }
}

void KpiTables::Clear() const
{
    for (QTableWidget* table : {m_ui.coldTestResult, m_ui.hotTestResult}) {
        for (const int row : {KpiRowCounts, KpiRowTtff, KpiRowCep}) {
            RemoveCells(table, row, 0, 3);
        }
    }
    for (const int row : {LatestRowTime, LatestRowPlace}) {
        RemoveCells(m_ui.latestData, row, 0, 3);
    }
    for (const int row : {SatRowTracked, SatRowUsed, SatRowTop5}) {
        RemoveCells(m_ui.satData, row, 1, 6);
    }
}

void KpiTables::ShowResult(KpiTestMode mode, int row, int column, const QString& text) const
{
    SetCell(Results(mode), row, column, text);
}

QString KpiTables::Result(KpiTestMode mode, int row, int column) const
{
    const QTableWidgetItem* cell = Results(mode)->item(row, column);
    return cell != nullptr ? cell->text() : QString();
}

void KpiTables::ShowFix(const KpiFixTexts& texts) const
{
    SetCell(m_ui.latestData, LatestRowTime, 0, texts.date);
    SetCell(m_ui.latestData, LatestRowTime, 1, texts.time);
    SetCell(m_ui.latestData, LatestRowTime, 2, texts.hdop);
    SetCell(m_ui.latestData, LatestRowPlace, 0, texts.latitude);
    SetCell(m_ui.latestData, LatestRowPlace, 1, texts.longitude);
    SetCell(m_ui.latestData, LatestRowPlace, 2, texts.altitude);
    SetCell(m_ui.latestData, LatestRowPlace, 3, texts.speed);
}

void KpiTables::ShowSatellites(const KpiSatellites& satellites, bool totals) const
{
    for (int i = 0; i < KpiSatellites::constellations; ++i) {
        const KpiSatellites::Column& column = satellites.ColumnOf(i);
        if (column.shown) {
            SetCell(m_ui.satData, SatRowTracked, satFirstColumn + i, QString::number(column.tracked));
            SetCell(m_ui.satData, SatRowUsed, satFirstColumn + i, QString::number(column.stat.used));
            SetCell(m_ui.satData, SatRowTop5, satFirstColumn + i, QString::number(column.stat.top5));
        }
    }
    if (totals) {
        const QString used = QString::number(satellites.UsedCount());
        SetCell(m_ui.satData, SatRowTracked, satTotalColumn, QString::number(satellites.Count()));
        SetCell(m_ui.satData, SatRowUsed, satTotalColumn, used);
        SetCell(m_ui.latestData, LatestRowTime, latestInUseColumn, used);
        SetCell(m_ui.satData, SatRowTop5, satTotalColumn, QString::number(satellites.Top5(), 'g', 6));
    }
}
