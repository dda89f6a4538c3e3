// SPDX-License-Identifier: MIT
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

    void Say(const QByteArray& bytes)
    {
        pty.Write(bytes);
        said += bytes.size();
    }

    /// Answers every message but the terminating one in this way, and carries `action` out when the message comes.
    void AnswerWith(const QByteArray& answer, const QByteArray& when = QByteArray(),
                    const std::function<void()>& action = {})
    {
        onMessage = [=](const QByteArray& message) {
            if (!message.startsWith("QUIT ") && !answer.isEmpty()) {
                Say(answer);
            }
            if (action && message == when) {
                // Not inside the timer's own turn, which a nested wait of the windows needs.
                QTimer::singleShot(0, action);
            }
        };
    }

    Pty pty;
    QList<QByteArray> messages;
    int said = 0; ///< bytes
    std::function<void(const QByteArray& message)> onMessage;

private:
    QTimer m_timer;
};
