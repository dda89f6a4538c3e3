// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

#include <QPointer>
#include <QSerialPort>
#include <QString>

class QComboBox;

/// The line parameters of a serial port, all but the rate.
class SerialSetting : public ClosingWidget {
    Q_OBJECT

public:
    /// The port isn't owned; it may be closed, and may be gone before the dialog is.
    explicit SerialSetting(QSerialPort* port, QWidget* parent = nullptr);

signals:
    /// Part of the class's face; the dialog has no rate, and nothing emits this.
    void addCustomBaudRate(QString baudRateStr);

    /// The dialog has been closed, in whatever way.

public slots:
    void SlotOkClick();
    void SlotCancelClick();

protected:
    void showEvent(QShowEvent* event) override;

private:
    /// Sets the boxes to the port's present values.
    void ShowPort();

    QPointer<QSerialPort> m_port;
    QComboBox* m_dataBits = nullptr;
    QComboBox* m_stopBits = nullptr;
    QComboBox* m_parity = nullptr;
    QComboBox* m_flowControl = nullptr;
};
