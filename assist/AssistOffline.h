#pragma once

#include <QWidget>

#include <cstdint>

/// The window of the offline assistance.
class AssistOffline : public QWidget {
    Q_OBJECT

public:
    explicit AssistOffline(QWidget* parent = nullptr);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
