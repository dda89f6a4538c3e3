// SPDX-License-Identifier: MIT
#include "base/AckWait.h"

#include "base/ProcessState.h"

#include <QCoreApplication>
#include <QThread>
#include <QTime>

void PumpDelay(int milliseconds)
{
    const QTime end = QTime::currentTime().addMSecs(milliseconds);
    while (QTime::currentTime() < end) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
        // It comes back at once when nothing is pending: without a pause a wait would keep a core busy.
        QThread::msleep(1);
    }
}

AckWait::AckWait(quint8 column) : m_countAtStart(Global::ackCount)
{
    Global::ackState = AckStateSent;
    Global::ackTableColumn = column;
}

bool AckWait::Answered() const
{
    return (Global::ackState != AckStateIdle && Global::ackState != AckStateSent) ||
           Global::ackCount != m_countAtStart;
}

AckResult AckWait::Run(const QPointer<QObject>& sender, int limitMs, const Pump& pump) const
{
    int counter = 0;
    while (!sender.isNull() && !Answered()) {
        if (counter >= limitMs + stepMs) {
            return {};
        }
        counter += stepMs;
        pump(stepMs);
    }
    if (sender.isNull()) {
        Finish();
        return {AckOutcome::SenderGone, {}, {}};
    }
    if (counter > limitMs) {
        return {};
    }
    return {AckOutcome::Answered, Global::lastAckState, Global::ackMessage};
}

void AckWait::Finish()
{
    Global::ackState = AckStateIdle;
}
