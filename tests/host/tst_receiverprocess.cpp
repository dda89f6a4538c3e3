// SPDX-License-Identifier: MIT
#include "Files.h"
#include "host/app/ReceiverProcess.h"
#include "host/support/ImageManager.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>

/// The receiver's side is played by small shell scripts.
class ReceiverProcessTest : public QObject {
    Q_OBJECT

private:
    ReceiverSettings Script(const QByteArray& body)
    {
        ReceiverSettings settings;
        settings.program = m_folder.filePath("receiver.sh");
        WriteScript(settings.program, body);
        return settings;
    }

    QTemporaryDir m_folder;

private Q_SLOTS:
    void CommandLineAndReadyLine()
    {
        ReceiverSettings settings;
        settings.idle = true;
        settings.extra = QStringList{"--fault", "silence"};
        QCOMPARE(ReceiverArguments(settings, "/l"), QStringList({"--link", "/l", "--die-with-parent", "--product",
                                                                 "0", "--idle", "--fault", "silence"}));
        QCOMPARE(ReadyPath("ready /tmp/x y/gnss\r"), QStringLiteral("/tmp/x y/gnss"));
        for (const char* line : {"", "ready", "ready ", "already /tmp/x", " ready /tmp/x"}) {
            QVERIFY2(ReadyPath(line).isEmpty(), line);
        }
    }

    void EachStartIsReadyAfterOtherOutputOnALinkOfItsOwn()
    {
        const ReceiverSettings settings = Script(
            "echo hello; echo complaint >&2; printf 'rea'; sleep 0.1; printf 'dy %s\\n' \"$2\"; exec sleep 30");
        ReceiverProcess receivers[2];
        QStringList ports;
        for (int i = 0; i < 4; ++i) {
            receivers[i % 2].Start(settings);
            QVERIFY(receivers[i % 2].WaitReady(5000));
            QVERIFY(receivers[i % 2].WaitReady(0));
            QVERIFY(!ports.contains(receivers[i % 2].Port()));
            ports.append(receivers[i % 2].Port());
        }
        QVERIFY(ports[0].endsWith(QStringLiteral("/gnss-virtual-%1").arg(QCoreApplication::applicationPid())));
        receivers[0].Stop();
        QVERIFY(receivers[0].Port().isEmpty());
    }

    void ADeathIsToldWithItsLastWords()
    {
        ReceiverProcess receiver;
        QSignalSpy ended(&receiver, &ReceiverProcess::Ended);
        receiver.Start(Script("echo ready \"$2\"; sleep 0.1; printf 'out of satellites' >&2; exit 3"));
        QVERIFY(receiver.WaitReady(5000));
        QVERIFY(ended.wait(5000));
        QCOMPARE(receiver.StateText(),
                 QStringLiteral("Virtual receiver gone: it ended with status 3 (out of satellites)"));
        // One that is killed, one that nothing can run, and one that isn't there.
        for (const char* body : {"kill -9 $$", "#!/no/such/shell\n", ""}) {
            ReceiverSettings settings = Script(body);
            settings.program += *body == '\0' ? ".none" : "";
            receiver.Start(settings);
            QVERIFY(!receiver.WaitReady(5000));
            QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Ended));
            QVERIFY(!receiver.Reason().isEmpty());
        }
        QCOMPARE(ended.size(), 4);
    }

    void AProgramThatIsSilentAndDoesNotWantToEnd()
    {
        ReceiverProcess receiver;
        QSignalSpy ended(&receiver, &ReceiverProcess::Ended);
        receiver.Start(Script("trap '' TERM; echo $$ > $0.pid; while :; do sleep 1; done"));
        QTRY_VERIFY(!Content(m_folder.filePath("receiver.sh.pid")).isEmpty());
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!receiver.WaitReady(50));
        QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Starting));
        receiver.Stop();
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(::kill(Content(m_folder.filePath("receiver.sh.pid")).trimmed().toInt(), 0) != 0);
        QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Off));
        QCoreApplication::processEvents();
        QCOMPARE(ended.size(), 0);
    }

    void PicturesNeedAGraphicalApplication()
    {
        QVERIFY(ImageManager::GetPixmapObject(":/images/images/gnss/clock.png").isNull());
    }
};

QTEST_GUILESS_MAIN(ReceiverProcessTest)
#include "tst_receiverprocess.moc"
