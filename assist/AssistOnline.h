#pragma once

#include <QWidget>

#include <cstdint>

/// The window of the online assistance.
class AssistOnline : public QWidget {
    Q_OBJECT

public:
    explicit AssistOnline(QWidget* parent = nullptr);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
