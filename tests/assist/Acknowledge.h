// SPDX-License-Identifier: MIT
#pragma once

#include "SenderTest.h"

#include <QList>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

/// Ids of the commands that the fake codec has encoded.
inline QList<int> EncodedIds()
{
    QList<int> ids;
    const QStringList calls = FakeCodec::Calls().filter("GnssEncode ");
    for (const QString& call : calls) {
        ids.append(call.section(' ', 1).toInt());
    }
    return ids;
}

/// A window on an open line that acknowledges each frame as the command that was encoded last.
template <typename Window> class OpenLine : public SenderTest {
public:
    explicit OpenLine(quint16 status = 0) : window(new Window)
    {
        Listen(window.data());
        Global::serialOpen = true;
        Answer(status);
    }
    ~OpenLine() { delete window; }

    void Answer(quint16 status)
    {
        acknowledge = [this, status] {
            columns.append(Global::ackTableColumn);
            const CbRecvAckType record = {static_cast<quint16>(EncodedIds().last()), status};
            QTimer::singleShot(0, [record] { GnssAck().ProcAck(&record, sizeof(record)); });
        };
    }

    /// Does something at a send, after the acknowledgement was ordered. `number` counts from 1.
    void AtSend(int number, const std::function<void()>& what)
    {
        acknowledge = [this, number, what, before = acknowledge] {
            before();
            if (frames.size() == number) {
                what();
            }
        };
    }

    /// From the frame of this number on there is no acknowledgement, and the window goes while it waits.
    void GoAtSend(int number)
    {
        acknowledge = [this, number, before = acknowledge] {
            if (frames.size() < number) {
                before();
            } else {
                QTimer::singleShot(20, [gone = window] { delete gone; });
            }
        };
    }

    void Press(const char* button) const { window->template findChild<QPushButton*>(button)->click(); }

    QPointer<Window> window;
    QList<int> columns; ///< at each send
};
