// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class GnssSaveData;
class QBoxLayout;
class QStandardItemModel;
class QTableView;
class QToolButton;

/// The frames that crossed the link, one to a row.
class PackageViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit PackageViewWin(QWidget* parent);

    /// Takes a PackageRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

public slots:
    void SlotClearBtnClicked();
    void SlotBottomBtnClicked();

private:
    void FitColumns(const QStringList& labels);
    QToolButton* AddButton(QBoxLayout* row, const QString& name, const QString& icon, const QString& toolTip);

    QTableView* tableView = nullptr;
    QToolButton* clearBtn = nullptr;
    QToolButton* bottomBtn = nullptr;
    bool followBottom = false;
    int rowCounter = 0; ///< rows since the table last restarted by itself
    QStandardItemModel* m_model = nullptr;
    GnssSaveData* saveData = nullptr;
};
