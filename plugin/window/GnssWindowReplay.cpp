// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/BoundsChecked.h"
#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "bridge/ClassGnss.h"
#include "line/ReplaySplit.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MyButton.h"

#include "host/support/ImageManager.h"

#include <QAction>
#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QPushButton>
#include <QTimer>

#include <memory>

namespace {

QIcon Picture(const char* path)
{
    return QIcon(ImageManager::GetPixmapObject(QString::fromLatin1(path)));
}

} // namespace

void GnssWindow::SlotReplayAction()
{
    if (Global::replayRunning) {
        EndReplay();
        return;
    }
    const QPointer<GnssWindow> guard(this);
    const QString path = AskFileToOpen(this, QStringLiteral("Select File"), lastDirectory,
                                       QStringLiteral("Text file(*.txt *.log *.bin);;ALL files(*.*)"));
    if (guard.isNull() || path.isEmpty()) {
        return;
    }
    lastDirectory = QFileInfo(path).path();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ShowWarningBox(this, QStringLiteral("GNSS"), QStringLiteral("Open file failed!"));
        return;
    }
    replayChunks = SplitCapture(file);
    if (replayChunks.isEmpty()) {
        ShowWarningBox(this, QStringLiteral("GNSS"),
                       QStringLiteral("The playback file is incorrect.\nPlease select the correct file!"));
        return;
    }
    replayTimer->start(ReplayInterval());
    Global::replayRunning = true;
    m_replayBtn->SetIcon(Picture(":/images/images/gnss/StopReplay.png"));
    progressBar->setEnabled(true);
    m_progressAction->setVisible(true);
    m_pauseAction->setVisible(true);
}

void GnssWindow::SlotSendReplayData()
{
    if (replayIndex >= replayChunks.size()) {
        EndReplay();
        return;
    }
    const QByteArray chunk = replayChunks.at(replayIndex);
    const auto size = static_cast<std::size_t>(chunk.size());
    if (size == 0) {
        return;
    }
    const std::unique_ptr<quint8[]> buffer(new quint8[size]);
    if (memcpy_s(buffer.get(), size, chunk.constData(), size) != 0) {
        qDebug().noquote() << "memcpy replay read buff error!";
    }
    ClassGnss::GnssDecode(buffer.get(), static_cast<quint32>(size));
    const int sent = replayIndex;
    ++replayIndex;
    if (!progressPressed && !replayChunks.isEmpty()) {
        progressBar->setValue(static_cast<int>(static_cast<qint64>(sent) * 100 / replayChunks.size()));
    }
}

void GnssWindow::EndReplay()
{
    // A handle that the user holds is let go: once hidden the bar would never hear of its release, and the next
    // replay would not move it.
    progressBar->setEnabled(false);
    m_replayBtn->SetIcon(Picture(":/images/images/gnss/StartReplay.png"));
    m_pauseBtn->setIcon(Picture(":/images/images/gnss/PauseReplay.png"));
    replayChunks.clear();
    replayIndex = 0;
    progressBar->setValue(0);
    replayTimer->stop();
    m_progressAction->setVisible(false);
    m_pauseAction->setVisible(false);
    Global::replayRunning = false;
}

void GnssWindow::SlotPauseBtnClicked()
{
    if (replayTimer->isActive()) {
        m_pauseBtn->setIcon(Picture(":/images/images/gnss/resume.png"));
        replayTimer->stop();
    } else {
        m_pauseBtn->setIcon(Picture(":/images/images/gnss/PauseReplay.png"));
        replayTimer->start(ReplayInterval());
    }
}

void GnssWindow::SlotChangeReplaySpeed(QString speedStr)
{
    Global::replaySpeed = ReplaySpeedValue(speedStr, tr("最大速度"));
    if (Global::replayRunning) {
        // While paused this changes the interval and starts nothing.
        replayTimer->setInterval(ReplayInterval());
    }
}

int GnssWindow::ReplayInterval() const
{
    return ReplayIntervalMs(Global::replaySpeed);
}

void GnssWindow::SlotReplayProgress(int progressValue)
{
    replayIndex = static_cast<int>(static_cast<qint64>(replayChunks.size()) * progressValue / 100);
}

void GnssWindow::SlotProgressBarPressed(bool pressed)
{
    progressPressed = pressed;
}
