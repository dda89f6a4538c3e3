// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>

/// Keeps the user interface and the port poll alive for `milliseconds`. A delay that crosses midnight ends
/// at once.
void PumpDelay(int milliseconds);

enum class AckOutcome {
    Answered,   ///< an ACK came in time, whatever its status
    TimedOut,   ///< none came in time
    SenderGone, ///< the sender was destroyed at its send or inside the wait: touch no member of it
};

struct AckResult {
    AckOutcome outcome = AckOutcome::TimedOut;
    int state = 0;   ///< the ACK's status, when answered
    QString message; ///< the ACK in words, when answered
};

/// The wait of one command for its acknowledgement. Only one command can be in flight, but a second sender may
/// run inside the first one's wait; both then end with the same ACK, so a wait also looks whether the number of
/// ACKs has moved since the command was marked as sent.
///
/// It is never entered from a codec callback: the port poll does not run inside its own tick.
class AckWait {
public:
    using Pump = std::function<void(int milliseconds)>;

    static constexpr int stepMs = 10;

    /// Marks a command as sent, with the text column for its ACK.
    explicit AckWait(quint8 column = 0);

    /// Waits until the ACK comes, or `limitMs` and one step have passed; an ACK seen in that last step is too
    /// late. The state is looked at before the first pause. `sender` is guarded from before the send on, since
    /// a box about a closed port may outlive it. When it is gone no command is in flight any more.
    AckResult Run(const QPointer<QObject>& sender, int limitMs, const Pump& pump = PumpDelay) const;

    /// Marks that no command is in flight.
    static void Finish();

private:
    bool Answered() const;

    quint32 m_countAtStart;
};
