// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Brings the system's wish to end the program (interrupt, terminate, hang-up) into the event loop.
class StopSignals : public QObject {
    Q_OBJECT

public:
    explicit StopSignals(QObject* parent = nullptr);
    ~StopSignals() override;

Q_SIGNALS:
    void Stopped();
};
