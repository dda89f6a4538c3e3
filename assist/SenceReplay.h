#pragma once

#include <QWidget>

#include <cstdint>

/// The window of the scene replay.
class SenceReplay : public QWidget {
    Q_OBJECT

public:
    explicit SenceReplay(QWidget* parent = nullptr);

signals:
    void SendMsg(uint8_t* buffer, int len);
};
