// SPDX-License-Identifier: MIT
#include "window/PositioningControl.h"

#include "base/AckWait.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/ReadyCommand.h"
#include "base/StatusLog.h"
#include "base/WorkingLogs.h"
#include "bridge/CallbackRouting.h"
#include "bridge/CommandFrame.h"
#include "host/support/CProductVersion.h"
#include "line/SerialLink.h"
#include "window/WindowText.h"

#include <QTimer>
#include <QWidget>

namespace {

constexpr int startAckLimitMs = 1000;
constexpr int probeWaitMs = 1000;

} // namespace

PositioningControl::PositioningControl(SerialLink& link, QWidget* window)
    : QObject(window), m_link(link), m_window(window)
{
}

void PositioningControl::StartOrStop()
{
    if (Global::positioningStarted) {
        Stop();
    } else {
        Start();
    }
}

void PositioningControl::Start()
{
    if (Global::positioningStarted) {
        ShowCriticalBox(m_window, WindowText::tr("错误"), WindowText::tr("当前已经启动，请勿重复触发！"));
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
            emit Changed();
        }
        // A refused start arms the first-fix clock as well.
        Global::firstFixText.clear();
        Global::startInstant = QDateTime::currentDateTime();
    } else {
        AppendStatus(WindowText::tr("发送start命令等待 ACK超时"));
    }
    HighlightStatus();
    AckWait::Finish();
    ClearWorkingLogs();
    emit LogsCleared();
}

void PositioningControl::Stop()
{
    if (!Global::positioningStarted) {
        ShowCriticalBox(m_window, WindowText::tr("错误"), WindowText::tr("当前已经停止，请勿重复触发！"));
        return;
    }
    const QPointer<PositioningControl> guard(this);
    if (!SendReadyFrame(ReadyCommandBytes(protocol::ReadyFrame::Stop, CProductVersion::GetVersion())) ||
        guard.isNull()) {
        return;
    }
    // A stop is taken as done without waiting for its ACK.
    Global::positioningStarted = false;
    AppendStatus(WindowText::tr("停止GNSS定位"));
    emit Changed();
}

bool PositioningControl::SendReadyFrame(const QByteArray& bytes)
{
    const CommandFrame frame(ClassGnss::passThroughId, bytes);
    if (frame.IsEncoded()) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    return frame.IsEncoded();
}

void PositioningControl::ProbeSilence()
{
    m_link.SilenceTimer()->stop();
    const QPointer<PositioningControl> guard(this);
    if (!SendReadyFrame(ReadyFrameBytes(protocol::ReadyFrame::Probe)) || guard.isNull()) {
        return;
    }
    PumpDelay(probeWaitMs);
    if (guard.isNull()) {
        return;
    }
    // What comes now only tells that the receiver is alive.
    if (!m_link.TakeUnread().isEmpty()) {
        return;
    }
    Global::positioningStarted = false;
    emit Changed();
}

void PositioningControl::TakeFirstFix()
{
    if (Global::replayRunning) {
        Global::firstFixText = QStringLiteral("0s");
    } else if (Global::firstFixText.isEmpty()) {
        Global::firstFixText = FirstFixText(Global::startInstant, QDateTime::currentDateTime());
    }
}
