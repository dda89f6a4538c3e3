#pragma once

#include <QWidget>

#include <cstdint>

/// The window of the receiver's configuration items.
class CmdConfig : public QWidget {
    Q_OBJECT

public:
    explicit CmdConfig(QWidget* parent);

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
