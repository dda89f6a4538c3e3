// SPDX-License-Identifier: MIT
#pragma once

#include "production/UnitTestHost.h"

class QObject;
class QStandardItemModel;

namespace Ui {
class ProductTest;
}

/// What a station's form shows of its units.
class StationViews : public UnitViews {
    // Its words stand in the catalogue under the window's name.
    Q_DECLARE_TR_FUNCTIONS(ProductTest)

public:
    explicit StationViews(Ui::ProductTest& form) : ui(form) {}

    /// Once the form has its widgets; the owner's are the objects made for them.
    void SetUp(QObject* owner);

    void OfferStart(bool offered) override;
    void ClearSentences() override;
    void ShowSentences(const QStringList& sentences) override;
    void ShowEpoch(const EpochSignals& sums) override;
    void ShowResult(UnitVerdict verdict, const QString& text) override;
    void ShowCounts(quint32 tests, quint32 passes) override;
    void ShowRow(const UnitRecord& unit) override;
    void ShowResultPath(const QString& path) override;
    void Log(const QString& text) override;

private:
    Ui::ProductTest& ui;
    QStandardItemModel* m_rows = nullptr;
};
