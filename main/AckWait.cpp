#include "AckWait.h"

#include "CommandTexts.h"
#include "ProcessState.h"

#include <QCoreApplication>
#include <QTime>

void PumpDelay(int milliseconds)
{
    const QTime end = QTime::currentTime().addMSecs(milliseconds);
    while (QTime::currentTime() < end) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 100);
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

AckResult AckWait::Run(QObject* sender, int limitMs, const Pump& pump) const
{
    const QPointer<QObject> guard(sender);
    int counter = 0;
    while (!Answered()) {
        if (counter >= limitMs + stepMs) {
            return {};
        }
        counter += stepMs;
        pump(stepMs);
        if (guard.isNull()) {
            return {AckOutcome::SenderGone, 0, {}};
        }
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
