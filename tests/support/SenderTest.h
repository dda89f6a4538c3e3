// SPDX-License-Identifier: MIT
#pragma once

#include "FakeCodec.h"

#include "base/GnssAck.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "bridge/ClassGnss.h"

#include "host/support/HostSupportConfig.h"

#include <QPointer>
#include <QTextCursor>
#include <QTextEdit>
#include <QTimer>

#include <memory>

/// What a window that sends commands needs around it: the fake codec, a status log, and a line that copies
/// each frame (its buffer is the sender's own) and acknowledges it.
class SenderTest {
public:
    explicit SenderTest(int product = 0)
    {
        Global::ResetForNewWindow();
        Global::showTimestamp = false;
        HostSupportConfig::SetProduct(product);
        FakeCodec::Install();
        ClassGnss::InitGnssUtils();
        SetStatusEdit(&m_log);
    }
    ~SenderTest()
    {
        SetStatusEdit(nullptr);
        ClassGnss::UnloadCodec();
        FakeCodec::Remove();
        HostSupportConfig::SetProduct(0);
        Global::showTimestamp = true;
    }
    SenderTest(const SenderTest&) = delete;
    SenderTest& operator=(const SenderTest&) = delete;

    template <typename Sender> void Listen(Sender* sender)
    {
        QObject::connect(
            sender, &Sender::SendMsg, sender,
            [this](uint8_t* buffer, int length) {
                frames.append(QByteArray(reinterpret_cast<const char*>(buffer), length));
                stateAtSend.append(Global::ackState);
                if (acknowledge) {
                    acknowledge();
                }
            },
            Qt::DirectConnection);
    }

    /// Acknowledges each frame at once.
    void AcknowledgeWith(quint16 id, quint16 status)
    {
        acknowledge = [id, status] {
            QTimer::singleShot(0, [id, status] {
                const CbRecvAckType record = {id, status};
                GnssAck().ProcAck(&record, sizeof(record));
            });
        };
    }

    QStringList Status() const { return m_log.toPlainText().split('\n', Qt::SkipEmptyParts); }

    /// Whether the end of the last line is red.
    bool LastIsRed() const
    {
        QTextCursor cursor(m_log.document());
        cursor.movePosition(QTextCursor::End);
        cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor);
        return cursor.charFormat().foreground().color() == Qt::red;
    }

    QList<QByteArray> frames;
    QList<int> stateAtSend;
    std::function<void()> acknowledge;

private:
    QTextEdit m_log;
};

/// A window that sends commands, with what it needs around it.
template <typename Window> class SenderBench : public SenderTest {
public:
    explicit SenderBench(int product = 0) : SenderTest(product), window(new Window(nullptr))
    {
        Listen(window.data());
    }
    ~SenderBench() { delete window; }

    template <typename Widget> Widget* Find(const char* name) const
    {
        return window->template findChild<Widget*>(QLatin1String(name));
    }

    QPointer<Window> window;
};
