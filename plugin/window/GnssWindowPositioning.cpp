// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/AckWait.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/ReadyCommand.h"
#include "base/StatusLog.h"
#include "base/WorkingLogs.h"
#include "bridge/CallbackRouting.h"
#include "bridge/CommandFrame.h"
#include "views/log/NMEAViewWin.h"

#include "host/support/CProductVersion.h"
#include "host/support/ImageManager.h"

#include <QPushButton>
#include <QSerialPort>
#include <QTimer>

namespace {

constexpr int startAckLimitMs = 1000;
constexpr int probeWaitMs = 1000;

} // namespace

void GnssWindow::SlotSendStartStopCmd()
{
    if (Global::positioningStarted) {
        SlotStopBtnClicked();
    } else {
        SlotStartClicked();
    }
}

void GnssWindow::SlotStartClicked()
{
    if (Global::positioningStarted) {
        ShowCriticalBox(this, tr("错误"), tr("当前已经启动，请勿重复触发！"));
        return;
    }
    const CommandFrame frame(ClassGnss::passThroughId,
                             ReadyCommandBytes(protocol::ReadyFrame::Start, CProductVersion::GetVersion()));
    if (!frame.IsEncoded()) {
        return;
    }
    const QPointer<QObject> guard(this);
    const AckWait wait;
    emit SendMsg(frame.Data(), frame.Length());
    const AckResult result = wait.Run(guard, startAckLimitMs);
    if (result.outcome == AckOutcome::SenderGone) {
        return;
    }
    if (result.outcome == AckOutcome::Answered) {
        AppendStatus(result.message);
        if (result.state == AckStateAccepted) {
            Global::positioningStarted = true;
            emit ChangeStartFlagSignal();
        }
        // A refused start arms the first-fix clock as well.
        Global::firstFixText.clear();
        Global::startInstant = QDateTime::currentDateTime();
    } else {
        AppendStatus(tr("发送start命令等待 ACK超时"));
    }
    HighlightStatus();
    AckWait::Finish();
    ClearWorkingLogFiles();
}

void GnssWindow::SlotStopBtnClicked()
{
    if (!Global::positioningStarted) {
        ShowCriticalBox(this, tr("错误"), tr("当前已经停止，请勿重复触发！"));
        return;
    }
    const QPointer<GnssWindow> guard(this);
    if (!SendReadyFrame(ReadyCommandBytes(protocol::ReadyFrame::Stop, CProductVersion::GetVersion())) ||
        guard.isNull()) {
        return;
    }
    // A stop is taken as done without waiting for its ACK.
    Global::positioningStarted = false;
    AppendStatus(tr("停止GNSS定位"));
    emit ChangeStartFlagSignal();
}

bool GnssWindow::SendReadyFrame(const QByteArray& bytes)
{
    const CommandFrame frame(ClassGnss::passThroughId, bytes);
    if (frame.IsEncoded()) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    return frame.IsEncoded();
}

void GnssWindow::SlotChangeSwitchImage()
{
    const bool started = Global::positioningStarted;
    m_startStopBtn->setToolTip(started ? tr("停止定位") : tr("启动定位"));
    m_startStopBtn->setIcon(
        QIcon(ImageManager::GetPixmapObject(started ? QStringLiteral(":/images/images/gnss/startStatus.png")
                                                    : QStringLiteral(":/images/images/gnss/stopStatus.png"))));
}

void GnssWindow::SlotProcSerialNoData()
{
    noDataTimer->stop();
    const QPointer<GnssWindow> guard(this);
    if (!SendReadyFrame(ReadyFrameBytes(protocol::ReadyFrame::Probe)) || guard.isNull()) {
        return;
    }
    PumpDelay(probeWaitMs);
    if (guard.isNull()) {
        return;
    }
    // What comes now only tells that the receiver is alive.
    if (serialPort->isOpen() && !serialPort->readAll().isEmpty()) {
        return;
    }
    Global::positioningStarted = false;
    emit ChangeStartFlagSignal();
}

void GnssWindow::ClearWorkingLogFiles()
{
    ClearWorkingLogs();
    if (nmeaView != nullptr) {
        nmeaView->ResetHistory();
    }
}

void GnssWindow::OnAck(const void* record, int length)
{
    if (length <= 0) {
        return;
    }
    GnssAck ack;
    ack.ProcAck(record, static_cast<quint32>(length));
}

void GnssWindow::OnFirstFix()
{
    if (Global::replayRunning) {
        Global::firstFixText = QStringLiteral("0s");
    } else if (Global::firstFixText.isEmpty()) {
        Global::firstFixText = FirstFixText(Global::startInstant, QDateTime::currentDateTime());
    }
}
