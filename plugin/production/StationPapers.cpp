// SPDX-License-Identifier: MIT
#include "production/StationPapers.h"

#include "production/UnitFiles.h"

QString StationPapers::ResultPath()
{
    if (csvPath.isEmpty()) {
        csvPath = NewResultPath(QDateTime::currentDateTime());
    }
    return csvPath;
}

void StationPapers::AddRow(const UnitRecord& unit)
{
    if (AppendResultRow(ResultPath(), unit, csvHeaderPending)) {
        csvHeaderPending = false;
    }
}

bool StationPapers::WriteReport(const UnitRecord& unit, const QString& rawLogPath)
{
    const QDateTime now = QDateTime::currentDateTime();
    return WriteUnitReport(NewReportPath(unit, now), unit, rawLogPath, now);
}
