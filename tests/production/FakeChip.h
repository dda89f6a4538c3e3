#pragma once

#include "Pty.h"

#include <QList>
#include <QTimer>

#include <functional>

/// The far end of a line in the test's hand: keeps each message that comes, and answers as it is told. What comes
/// in one turn of the event loop is one message: the windows leave 100 ms between two.
class FakeChip {
public:
    FakeChip()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            const QByteArray message = pty.Take();
            if (!message.isEmpty()) {
                messages.append(message);
                if (onMessage) {
                    onMessage(message);
                }
            }
        });
        m_timer.start(2);
    }

    /// Answers every message but the terminating one in this way.
    void AnswerWith(const QByteArray& answer)
    {
        onMessage = [this, answer](const QByteArray& message) {
            if (!message.startsWith("QUIT ")) {
                pty.Write(answer);
            }
        };
    }

    Pty pty;
    QList<QByteArray> messages;
    std::function<void(const QByteArray& message)> onMessage;

private:
    QTimer m_timer;
};
