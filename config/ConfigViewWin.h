#pragma once

#include <QMainWindow>

#include <cstdint>

/// The window of the custom commands.
class ConfigViewWin : public QMainWindow {
    Q_OBJECT

public:
    explicit ConfigViewWin(QWidget* parent);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
