// SPDX-License-Identifier: MIT
#include "assist/Injector.h"

#include "base/CommandTexts.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "bridge/CommandFrame.h"

#include <QDebug>

#include <utility>

namespace {

constexpr int ackLimitMs = 1500;

} // namespace

Injector::Injector(QObject* sender, Send send, InjectCounters* counters, AckWait::Pump pump)
    : m_sender(sender), m_send(std::move(send)), m_counters(counters), m_pump(std::move(pump))
{
}

bool Injector::Ended() const
{
    return m_sender.isNull() || (m_needsPort && !Global::serialOpen);
}

void Injector::CountSent() const
{
    if (m_counters != nullptr) {
        ++m_counters->totalCount;
    }
}

InjectOutcome Injector::Run(const InjectItem& item) const
{
    if (item.countBeforeEncoding) {
        CountSent();
        Global::ackTableColumn = item.column;
    }
    const CommandFrame frame(item.commandId, item.payload);
    if (!frame.IsEncoded()) {
        if (item.encodeDebug != nullptr) {
            qDebug().nospace().noquote() << item.encodeDebug << frame.Length();
        }
        if (!item.encodeStatus.isEmpty()) {
            AppendStatus(item.resultInStatus ? item.encodeStatus + QString::number(frame.Length())
                                             : item.encodeStatus);
            HighlightStatus();
        }
        return InjectOutcome::NotEncoded;
    }
    if (!item.countBeforeEncoding) {
        CountSent();
    }
    return SendAndWait(frame.Data(), frame.Length(), AckWait(item.column), item.answerPrefix, item.timeoutStatus);
}

InjectOutcome Injector::RunEmpty(const QString& timeoutStatus) const
{
    uint8_t nothing = 0;
    return SendAndWait(&nothing, 0, AckWait(Global::ackTableColumn), QString(), timeoutStatus);
}

InjectOutcome Injector::SendAndWait(uint8_t* buffer, int length, const AckWait& wait, const QString& answerPrefix,
                                    const QString& timeoutStatus) const
{
    m_send(buffer, length);
    const AckResult result = wait.Run(m_sender, ackLimitMs, m_pump);
    if (result.outcome == AckOutcome::SenderGone) {
        return InjectOutcome::Gone;
    }
    if (result.outcome == AckOutcome::Answered) {
        AppendStatus(answerPrefix + result.message);
        if (result.state == AckStateAccepted && m_counters != nullptr) {
            ++m_counters->successCount;
        }
    } else {
        AppendStatus(timeoutStatus);
    }
    HighlightStatus();
    AckWait::Finish();
    return InjectOutcome::Sent;
}
