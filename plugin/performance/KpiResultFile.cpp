// SPDX-License-Identifier: MIT
#include "performance/KpiResultFile.h"

#include <QFile>

namespace {

constexpr char header[] = "TestNum,FixedNum,succFixedRate,TTFF_68%,TTFF_95%,TTFF_MAX,TTFF_AVG,"
                          "CEP_68%,CEP_95%,CEP_MAX,CEP_AVG\n";

struct CellRange {
    int row;
    int columns;
};

constexpr CellRange ranges[] = {
    {KpiRowCounts, KpiColumnRate + 1}, {KpiRowTtff, kpiStatisticColumns}, {KpiRowCep, kpiStatisticColumns}};

void AppendBlock(QByteArray& text, const char* label, KpiTestMode mode, const KpiCellReader& cell)
{
    text += header;
    text += label;
    for (const CellRange& range : ranges) {
        for (int column = 0; column < range.columns; ++column) {
            const QString value = cell(mode, range.row, column);
            // Each value is followed by a comma, the last one too.
            text += (value.isNull() ? QByteArray("0") : value.toUtf8()) + ',';
        }
    }
    text += '\n';
}

} // namespace

QByteArray KpiResultText(const KpiCellReader& cell)
{
    QByteArray text;
    AppendBlock(text, "Cold Test\n", KpiTestMode::Cold, cell);
    AppendBlock(text, "Hot Test\n", KpiTestMode::Hot, cell);
    return text;
}

bool SaveKpiResult(const KpiCellReader& cell)
{
    QFile file(QStringLiteral("testResult.csv"));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    const QByteArray text = KpiResultText(cell);
    return file.write(text) == text.size() && file.flush();
}
