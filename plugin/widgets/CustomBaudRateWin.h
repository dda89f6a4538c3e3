// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QLineEdit;

/// Asks for a baud rate that isn't in the list of the tool bar.
class CustomBaudRateWin : public QWidget {
    Q_OBJECT

public:
    explicit CustomBaudRateWin(QWidget* parent = nullptr);

signals:
    /// A rate from 1 to 24000000, in decimal digits.
    void addCustomBaudRate(QString baudRateStr);

public slots:
    void SlotOkClick();
    void SlotCancelClick();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLineEdit* m_edit = nullptr;
    QLabel* m_label = nullptr;
};
