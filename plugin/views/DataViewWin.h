// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

class QTableWidget;

/// The latest fix as a table.
class DataViewWin : public ClosingWidget {
    Q_OBJECT

public:
    explicit DataViewWin(QWidget* parent);

    /// Takes a FixRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

private:
    QTableWidget* m_table = nullptr;
};
