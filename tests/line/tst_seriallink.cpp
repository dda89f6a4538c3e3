// SPDX-License-Identifier: MIT
#include "FakeCodec.h"
#include "Files.h"
#include "Pty.h"

#include "base/ProcessState.h"
#include "bridge/ClassGnss.h"
#include "line/SerialLink.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QTimer>

namespace {

/// A link that notes what it tells, in the order of telling.
class NotedLink : public SerialLink {
public:
    NotedLink()
    {
        connect(this, &SerialLink::Opened, [this] { told += "opened "; });
        connect(this, &SerialLink::Closed, [this] { told += "closed "; });
        connect(this, &SerialLink::Switched, [this] { told += "switched "; });
        connect(this, &SerialLink::NoPortChosen, [this] { told += "none "; });
        connect(this, &SerialLink::OpenFailed, [this] { told += "failed "; });
        connect(this, &SerialLink::BytesReceived, [this](const QByteArray& bytes) {
            received += bytes;
            decodedBefore = FakeCodec::Calls().filter("GnssDecode").size();
        });
    }

    QString told;
    QByteArray received;
    int decodedBefore = 0;
};

QByteArray Captured(const QString& folder)
{
    QByteArray bytes;
    for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Time)) {
        bytes += Content(folder + '/' + name);
    }
    return bytes;
}

} // namespace

class TestLineSerialLink : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Global::ResetForNewWindow();
        FakeCodec::Install();
        ClassGnss::InitGnssUtils();
    }
    void cleanup()
    {
        ClassGnss::UnloadCodec();
        FakeCodec::Remove();
    }

    void OpeningAndClosingIsToldAndMirrored()
    {
        const Pty line;
        NotedLink link;
        link.Switch();
        Global::currentPortName = "/dev/none-such";
        link.Switch();
        QVERIFY(!link.IsOpen() && !Global::serialOpen);
        Global::currentPortName = line.path;
        link.Switch();
        QVERIFY(link.IsOpen() && Global::serialOpen);
        QVERIFY(link.PortNames().isEmpty());
        qputenv("GNSS_SERIAL_PORTS", line.path.toLocal8Bit());
        link.ScanPorts();
        // The own port is in the list and not busy.
        QVERIFY(link.PortNames().contains(line.path) && !Global::busyPortNames.contains(line.path));
        link.Switch();
        QVERIFY(!link.IsOpen() && !Global::serialOpen);
        QCOMPARE(link.told, QStringLiteral("none failed opened closed "));
        qunsetenv("GNSS_SERIAL_PORTS");
    }

    void WhatComesIsCapturedThenDecodedThenHandedOn()
    {
        const QTemporaryDir folder;
        const Pty line;
        const Pty other;
        NotedLink link;
        link.SetSaveDirectory(folder.path());
        Global::currentPortName = line.path;
        link.Switch();
        link.SilenceTimer()->start(60000);
        line.Write("first");
        QTRY_COMPARE(link.received, QByteArray("first"));
        QCOMPARE(link.decodedBefore, 1);
        QVERIFY(!link.SilenceTimer()->isActive());
        QCOMPARE(Captured(folder.path()), QByteArray("first"));

        // Another port goes on in a capture of its own; the same one changes nothing.
        link.ChangePort(line.path);
        link.ChangePort(other.path);
        other.Write("second");
        QTRY_COMPARE(link.received, QByteArray("firstsecond"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 2);
        QCOMPARE(link.told, QStringLiteral("opened switched "));

        // What is taken past the tick reaches no one.
        link.StopTicking();
        other.Write("third");
        QByteArray taken;
        QTRY_COMPARE(taken += link.TakeUnread(), QByteArray("third"));
        link.Poll();
        QCOMPARE(link.received, QByteArray("firstsecond"));
    }

    void BytesGoOutOnlyOfAnOpenPort()
    {
        const Pty line;
        NotedLink link;
        QVERIFY(!link.Send("x", 1));
        link.WakeUp();
        QCOMPARE(link.TakeUnread(), QByteArray());
        Global::currentPortName = line.path;
        link.ChangeBaudRate(9600);
        link.Switch();
        QVERIFY(link.Send("", 0) && link.Send("out", 3));
        QCOMPARE(line.Read(3), QByteArray("out"));
        link.WakeUp();
        QCOMPARE(line.Read(1), QByteArray(1, '\0'));
        QCOMPARE(link.Port()->baudRate(), 9600);
        link.ClosePort();
        QVERIFY(!Global::serialOpen && !link.Send("x", 1));
    }
};

QTEST_GUILESS_MAIN(TestLineSerialLink)

#include "tst_seriallink.moc"
