#pragma once

#include <QWidget>

#include <cstdint>

/// The window of the performance test.
class KpiViewWin : public QWidget {
    Q_OBJECT

public:
    explicit KpiViewWin(QWidget* parent);

    /// Take the test's records of the codec; `length` in bytes.
    void OnKpiFix(const void* buffer, int length);
    void OnKpiCn0(const void* buffer, int length);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void SendWakeUpCmd();
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
