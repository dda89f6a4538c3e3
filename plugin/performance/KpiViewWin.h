// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiSatellites.h"
#include "performance/KpiSequencer.h"
#include "performance/KpiTestHost.h"
#include "widgets/ClosingWidget.h"

#include <QMap>

#include <array>
#include <cstdint>
#include <memory>

class QStringListModel;
class QTableWidget;
class QTimer;
class RefLocWin;
struct RefLocation;

namespace Ui {
class KpiViewWin;
}

/// The window of the performance test: form, timers and tables around the sequencer.
class KpiViewWin final : public ClosingWidget, private KpiTestHost {
    Q_OBJECT

public:
    explicit KpiViewWin(QWidget* parent);
    ~KpiViewWin() override;

    /// Take the test's records of the codec; `length` in bytes.
    void OnKpiFix(const void* buffer, int length);
    void OnKpiCn0(const void* buffer, int length);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void SendWakeUpCmd();

private slots:
    bool SlotEditStartBtnClicked();
    void SlotEditStopBtnClicked();
    void SlotSendColdStart();
    void SlotSendHotStart();
    void SlotSendAllNmeaRpt();
    void SlotTestTimeout();
    void SlotTestCompleteTrk();
    void SlotTestCompleteDelay();
    void SaveTestRes2CsvFile();
    void SaveTestCfg2IniFile();
    void ChangeRefLocWhileCbxIdxChange(int index);

private:
    // KpiTestHost
    KpiTestConfig Config() const override;
    bool ColdTicked() const override;
    bool HotTicked() const override;
    KpiPlace Reference() const override;
    bool PositioningStarted() const override;
    QDateTime Now() const override;
    KpiSend Send(protocol::ReadyFrame frame) override;
    void WakeUp() override;
    bool Wait(int milliseconds) override;
    bool Warn(KpiWarning warning) override;
    void StartTimer(KpiTimer timer, int milliseconds) override;
    void StopTimer(KpiTimer timer) override;
    void ShowRunning(bool running) override;
    void LockControls(bool lock) override;
    void ClearResults() override;
    void ShowResult(KpiTestMode mode, int row, int column, const QString& text) override;

    void StyleForm();
    void ConnectControls();
    void ShowConfig(const KpiConfigTexts& texts);
    KpiConfigTexts ConfigTexts() const;
    void LoadReferences();
    void AddReference(const RefLocation& location);
    void ShowReference(const std::array<QString, 3>& place);
    QTimer* TimerOf(KpiTimer timer) const;
    QTableWidget* ResultTable(KpiTestMode mode) const;

    std::unique_ptr<Ui::KpiViewWin> ui;
    QStringListModel* m_listModel = nullptr;
    QTimer* testTimeoutTimer = nullptr;
    QTimer* testTrackTimer = nullptr;
    QTimer* testDelayTimer = nullptr;
    KpiSatellites m_satellites;
    KpiSequencer m_sequencer;
    RefLocWin* refLocWin = nullptr;
    QMap<int, std::array<QString, 3>> refLocMap; ///< longitude, latitude, altitude by index of the combo box
};
