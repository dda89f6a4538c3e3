// SPDX-License-Identifier: MIT
#pragma once

#include "production/EpochSignals.h"
#include "production/UnitJudge.h"
#include "production/UnitReport.h"
#include "protocol/NmeaScan.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <memory>

class QSerialPort;
class QStandardItemModel;
class QTimer;

namespace Ui {
class ProductTest;
}

/// One station of the factory test: one click loads a unit's firmware, starts it, watches its sentences and judges
/// it. It has a serial port of its own and reads the sentences itself; each window is independent of the others.
class ProductTest : public QWidget {
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
    // Start
    void UpdatePortInfo();
    void ReadSettings();
    void CreateRawLog();
    bool LoadUnitFirmware();
    bool OpenPort();

    // Sentences
    void Scan(const QByteArray& bytes);
    void HandleSentence(const protocol::NmeaSentence& sentence, QStringList& shown);
    void CloseEpoch();
    void ShowEpoch(const EpochSignals& sums);
    void TakeFix();

    // Verdict
    void JudgeNow();
    void ShowResult(const QString& text, const char* colour);
    void UpdateCounters();
    UnitRecord Record() const;
    void StopAndReport();
    void WriteReport();
    void Log(const QString& text);

    std::unique_ptr<Ui::ProductTest> ui;
    std::unique_ptr<QSerialPort> m_serialPort;
    QStringList m_portName; ///< the ports offered
    QString m_firmwarePath;
    QString m_lastDir;
    bool cfgLocked = false;

    // Settings of the test, read at its start
    QString productNumber;
    int timeoutMs = 0;
    int delayMs = 0;
    quint16 gpsCn0Threshold = 0;
    quint16 nonGpsCn0Threshold = 0;

    QTimer* timeoutTimer = nullptr;
    QTimer* delayTimer = nullptr;
    QTimer* readTimer = nullptr;
    protocol::NmeaBuff m_scanBuffer = {};
    EpochStore m_epoch;

    // The last epoch that was shown
    quint8 maxCn0 = 0;
    EpochSignals m_signals;

    quint32 testCount = 0;
    quint32 passCount = 0;
    QDateTime testStartTime;
    QDateTime firstFixTime;
    bool testRunning = false;
    bool resultFileOpen = false; ///< the window's result file has its name
    bool csvHeaderPending = true;
    quint16 ttffMs = 0;
    bool passed = false;
    double firstFixUtc = 0.0;
    bool ttffPending = true; ///< until the first fix of a test
    bool delayRunning = false;
    QString resultText;
    QString rawLogPath;
    QString reportPath;
    QString csvPath;
    QStandardItemModel* m_rows = nullptr;
};
