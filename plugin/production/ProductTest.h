// SPDX-License-Identifier: MIT
#pragma once

#include "production/StationViews.h"
#include "production/UnitSequencer.h"
#include "production/UnitTestHost.h"

#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class QSerialPort;
class QTimer;

namespace Ui {
class ProductTest;
}

/// One station of the factory test: one click loads a unit's firmware, starts it, watches its sentences and judges
/// it. Form, timers and a serial port of its own around the sequencer; each window is independent of the
/// others.
class ProductTest : public QWidget, private UnitTestHost {
    Q_OBJECT

public:
    explicit ProductTest(QWidget* parent = nullptr);
    ~ProductTest() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

public slots:
    void SlotClearPN();
    void SlotStartTest();
    void SlotStopTest();
    void SlotLockTestCfg();
    void SlotSelectFile();
    void SlotChangeComboBoxText(int index);
    void SlotReadSerialData();
    void SlotDelayProc();
    void SlotTimeoutProc();

signals:
    void CloseSignal(QString title);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // UnitTestHost
    UnitRecord Form() const override;
    QDateTime Now() const override;
    QString NewRawLog() override;
    void KeepRaw(const QString& rawLogPath, const QByteArray& bytes) override;
    bool LoadFirmware() override;
    UnitPort OpenPort() override;
    void ClosePort() override;
    void Send(UnitFrame frame) override;
    bool Wait(int milliseconds) override;
    void StartTimer(UnitTimer timer, int milliseconds) override;
    void StopTimer(UnitTimer timer) override;

    void ConnectControls();
    void UpdatePortInfo();
    qint32 BaudRate() const;
    QTimer* TimerOf(UnitTimer timer) const;

    std::unique_ptr<Ui::ProductTest> ui;
    std::unique_ptr<QSerialPort> m_serialPort;
    QStringList m_portName; ///< the ports offered
    QString m_firmwarePath;
    QString m_lastDir;
    bool cfgLocked = false;
    QTimer* timeoutTimer = nullptr;
    QTimer* delayTimer = nullptr;
    QTimer* readTimer = nullptr;
    StationViews m_views;
    UnitSequencer m_sequencer;
};
