// SPDX-License-Identifier: MIT
#pragma once

#include "production/UnitReport.h"

// The files that a finished unit leaves in the folder "ProductTest" beside the program. All text is UTF-8.

/// Path of a new result file; the folder is made.
QString NewResultPath(const QDateTime& time);

/// Appends a row, with the header in front when that is asked for. False, with a line in the debug log and the
/// file as it was, when it cannot be written whole.
bool AppendResultRow(const QString& path, const UnitRecord& unit, bool withHeader);

/// Path of the unit's report; the folder is made.
QString NewReportPath(const UnitRecord& unit, const QDateTime& time);

/// Writes the unit's report with the sentences of the raw log. A report that cannot be opened is a line in the
/// debug log, and false; so is a raw log, and the report goes on.
bool WriteUnitReport(const QString& path, const UnitRecord& unit, const QString& rawLogPath,
                     const QDateTime& time);

/// What the debug log says when a report cannot be opened.
QString ReportFailureText();
