// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>

class SerialLink;

/// Start and stop of positioning, the first fix and the silence probe. It mirrors its state in
/// Global::positioningStarted, firstFixText and startInstant.
class PositioningControl : public QObject {
    Q_OBJECT

public:
    /// `window` is the parent of its boxes.
    PositioningControl(SerialLink& link, QWidget* window);

    /// Sends the start command and waits for its answer. The control may be gone afterwards.
    void Start();
    /// Sends the stop command; nothing is waited for.
    void Stop();
    void StartOrStop();

    /// Asks a silent receiver for a sign of life; without one positioning counts as stopped.
    void ProbeSilence();

    /// The receiver has its first fix.
    void TakeFirstFix();

signals:
    /// A frame for the line; joined by a direct connection, so the buffer stays valid for the write.
    void SendMsg(uint8_t* buffer, int length);
    /// Global::positioningStarted has changed.
    void Changed();
    /// The working logs have been cleared.
    void LogsCleared();

private:
    bool SendReadyFrame(const QByteArray& bytes);

    SerialLink& m_link;
    QWidget* m_window;
};
