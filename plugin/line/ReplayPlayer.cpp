// SPDX-License-Identifier: MIT
#include "line/ReplayPlayer.h"

#include "base/BoundsChecked.h"
#include "base/ProcessState.h"
#include "bridge/ClassGnss.h"
#include "line/ReplaySplit.h"

#include <QDebug>
#include <QFile>
#include <QTimer>

#include <memory>

ReplayPlayer::ReplayPlayer(QObject* parent) : QObject(parent), m_timer(new QTimer(this))
{
    connect(m_timer, &QTimer::timeout, this, &ReplayPlayer::Tick);
}

ReplayPlayer::Opening ReplayPlayer::Play(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Opening::CannotOpen;
    }
    m_chunks = SplitCapture(file);
    if (m_chunks.isEmpty()) {
        return Opening::NoCapture;
    }
    m_timer->start(ReplayIntervalMs(Global::replaySpeed));
    Global::replayRunning = true;
    emit Started();
    return Opening::Playing;
}

void ReplayPlayer::End()
{
    m_chunks.clear();
    m_next = 0;
    m_timer->stop();
    Global::replayRunning = false;
    emit Ended();
}

void ReplayPlayer::Tick()
{
    if (m_next >= m_chunks.size()) {
        End();
        return;
    }
    const QByteArray chunk = m_chunks.at(m_next);
    const auto size = static_cast<std::size_t>(chunk.size());
    if (size == 0) {
        return;
    }
    const std::unique_ptr<quint8[]> buffer(new quint8[size]);
    if (memcpy_s(buffer.get(), size, chunk.constData(), size) != 0) {
        qDebug().noquote() << "memcpy replay read buff error!";
    }
    ClassGnss::GnssDecode(buffer.get(), static_cast<quint32>(size));
    const int sent = m_next;
    ++m_next;
    if (!m_held && !m_chunks.isEmpty()) {
        emit Progressed(static_cast<int>(static_cast<qint64>(sent) * 100 / m_chunks.size()));
    }
}

void ReplayPlayer::TogglePause()
{
    const bool pauses = m_timer->isActive();
    if (pauses) {
        m_timer->stop();
    } else {
        m_timer->start(ReplayIntervalMs(Global::replaySpeed));
    }
    emit PauseChanged(pauses);
}

void ReplayPlayer::SetSpeed(float speed)
{
    Global::replaySpeed = speed;
    if (Global::replayRunning) {
        m_timer->setInterval(ReplayIntervalMs(speed));
    }
}

void ReplayPlayer::Seek(int percent)
{
    m_next = static_cast<int>(static_cast<qint64>(m_chunks.size()) * percent / 100);
}

void ReplayPlayer::StopTicking()
{
    m_timer->stop();
    Global::replayRunning = false;
}
