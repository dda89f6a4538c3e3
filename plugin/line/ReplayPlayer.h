// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>

class QTimer;

/// Plays a capture's chunks through the codec, one a tick. It mirrors its state in Global::replayRunning and
/// replaySpeed, and tells by direct signals what is to be shown.
class ReplayPlayer : public QObject {
    Q_OBJECT

public:
    enum class Opening {
        Playing,
        CannotOpen,
        NoCapture, ///< nothing in the file makes a chunk
    };

    explicit ReplayPlayer(QObject* parent = nullptr);

    Opening Play(const QString& path);
    void End();

    /// One tick: has the next chunk decoded; the one after the last chunk ends the replay.
    void Tick();

    void TogglePause();

    /// Chunks a second. While paused this changes the interval and starts nothing.
    void SetSpeed(float speed);

    /// The next chunk, as a percentage of all.
    void Seek(int percent);

    /// Progress is not told while the user holds the handle.
    void HoldProgress(bool held) { m_held = held; }

    /// For the end of the window: nothing ticks any more.
    void StopTicking();

signals:
    void Started();
    void Ended();
    void PauseChanged(bool paused);
    void Progressed(int percent);

private:
    QTimer* m_timer;
    QList<QByteArray> m_chunks;
    int m_next = 0;
    bool m_held = false;
};
