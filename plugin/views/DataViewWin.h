// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QTableWidget;

/// The latest fix as a table.
class DataViewWin : public QWidget {
    Q_OBJECT

public:
    explicit DataViewWin(QWidget* parent);

    /// Takes a FixRecord; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QTableWidget* m_table = nullptr;
};
