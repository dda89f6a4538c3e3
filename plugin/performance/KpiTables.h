// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiFixTexts.h"
#include "performance/KpiSatellites.h"
#include "performance/KpiTestTypes.h"

class QTableWidget;

namespace Ui {
class KpiViewWin;
}

/// The four tables of the performance test: results of the cold and of the hot starts, the latest fix, and the
/// satellites.
class KpiTables {
public:
    explicit KpiTables(const Ui::KpiViewWin& ui) : m_ui(ui) {}

    void Style() const;

    /// Takes the cells of all values out, so that they are missing and not empty.
    void Clear() const;

    void ShowResult(KpiTestMode mode, int row, int column, const QString& text) const;
    /// Text of a result; null where there is none.
    QString Result(KpiTestMode mode, int row, int column) const;

    void ShowFix(const KpiFixTexts& texts) const;
    /// The constellations' columns, and with `totals` the total of all.
    void ShowSatellites(const KpiSatellites& satellites, bool totals) const;

private:
    QTableWidget* Results(KpiTestMode mode) const;

    const Ui::KpiViewWin& m_ui;
};
