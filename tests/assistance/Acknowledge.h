#pragma once

#include "SenderTest.h"

#include <QList>

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

/// Acknowledges each frame as the command that was encoded last.
inline void AcknowledgeEach(SenderTest& test, quint16 status = 0)
{
    test.acknowledge = [status] {
        const CbRecvAckType record = {static_cast<quint16>(EncodedIds().last()), status};
        QTimer::singleShot(0, [record] { GnssAck().ProcAck(&record, sizeof(record)); });
    };
}

/// Does something at a send, after the acknowledgement was ordered. `number` counts from 1.
inline void AtSend(SenderTest& test, int number, const std::function<void()>& what)
{
    test.acknowledge = [&test, number, what, before = test.acknowledge] {
        if (before) {
            before();
        }
        if (test.frames.size() == number) {
            what();
        }
    };
}
