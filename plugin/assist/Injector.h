// SPDX-License-Identifier: MIT
#pragma once

#include "base/AckWait.h"

#include <QByteArray>
#include <QPointer>
#include <QString>

#include <cstdint>
#include <functional>

/// A window's count of what it sent and what was accepted; both go into the summary of an injection.
struct InjectCounters {
    quint32 successCount = 0;
    quint32 totalCount = 0;
};

/// One payload for the receiver and its words.
struct InjectItem {
    quint32 commandId = 0;
    QByteArray payload;
    quint8 column = 0;                 ///< text column of its ACK
    const char* encodeDebug = nullptr; ///< debug text before the codec's negative result; null for none
    QString encodeStatus;              ///< status line when the codec refuses it; empty for none
    bool resultInStatus = false;       ///< that line ends in the codec's result
    QString timeoutStatus;
    QString answerPrefix;             ///< before the ACK's words
    bool countBeforeEncoding = false; ///< counted as sent, with its column set, even if the codec refuses it
};

enum class InjectOutcome {
    Sent,       ///< whether acknowledged, refused or timed out
    NotOpened,  ///< its file could not be opened
    NotEncoded, ///< the codec refused it
    Gone,       ///< the sender was destroyed in the send or the wait: touch no member of it
};

/// Sends items to the receiver, one at a time, each with its wait for the ACK.
class Injector {
public:
    using Send = std::function<void(uint8_t* buffer, int length)>;

    /// `counters` belong to `sender`; null counts nothing.
    Injector(QObject* sender, Send send, InjectCounters* counters, AckWait::Pump pump = PumpDelay);

    InjectOutcome Run(const InjectItem& item) const;

    /// Sends a frame of length 0 and waits as if it were one. It is not counted as sent, and the column stays.
    InjectOutcome RunEmpty(const QString& timeoutStatus) const;

    /// Has the run end when the port is closed.
    void NeedOpenPort() { m_needsPort = true; }

    /// True once the sender is destroyed or the port that is needed is closed: nothing more may be sent.
    bool Ended() const;

private:
    InjectOutcome SendAndWait(uint8_t* buffer, int length, const AckWait& wait, const QString& answerPrefix,
                              const QString& timeoutStatus) const;
    void CountSent() const;

    QPointer<QObject> m_sender;
    Send m_send;
    InjectCounters* m_counters;
    AckWait::Pump m_pump;
    bool m_needsPort = false;
};
