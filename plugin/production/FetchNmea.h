// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;

/// The window that pulls the sentences out of raw captures: beside each chosen file it writes one that ends
/// in ".nmea" and holds the well-shaped sentences, in order.
class FetchNmea : public QWidget {
    Q_OBJECT

public:
    explicit FetchNmea(QWidget* parent = nullptr);

public Q_SLOTS:
    void SlotSelectRawFile();
    void ProcessDirectory();

private:
    QStringList m_files;
    QLabel* m_statusLabel = nullptr;
};
