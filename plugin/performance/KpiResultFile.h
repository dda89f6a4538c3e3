// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiTestTypes.h"

#include <QByteArray>
#include <QString>

#include <functional>

/// Gives a cell of a result table; null for one that doesn't exist.
using KpiCellReader = std::function<QString(KpiTestMode mode, int row, int column)>;

/// The result file's content: a block for the cold and one for the hot starts.
QByteArray KpiResultText(const KpiCellReader& cell);

/// Writes testResult.csv in the current directory. False when it can't be written.
bool SaveKpiResult(const KpiCellReader& cell);
