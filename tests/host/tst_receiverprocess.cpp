#include "DebugLog.h"
#include "ImageManager.h"
#include "ReceiverProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

/// The receiver's side is played by small shell scripts.
class ReceiverProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void CommandLineOfTheReceiver();
    void ReadyLine();
    void ReadyAfterOtherOutput();
    void EachStartHasItsOwnLink();
    void SilenceIsWaitedForOnlySoLong();
    void ADeathIsToldWithItsLastWords();
    void AMissingProgram();
    void StopEndsAProgramThatDoesNotWantTo();
    void PicturesNeedAGraphicalApplication();

private:
    ReceiverSettings Script(const QByteArray& body);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void ReceiverProcessTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

ReceiverSettings ReceiverProcessTest::Script(const QByteArray& body)
{
    QFile file(m_folder->filePath(QStringLiteral("receiver.sh")));
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    file.write("#!/bin/sh\n" + body + '\n');
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    file.close();
    ReceiverSettings settings;
    settings.program = file.fileName();
    return settings;
}

void ReceiverProcessTest::CommandLineOfTheReceiver()
{
    ReceiverSettings settings;
    QCOMPARE(ReceiverArguments(settings, "/l"),
             QStringList({"--link", "/l", "--die-with-parent", "--product", "0"}));
    settings.product = 31;
    settings.idle = true;
    settings.capture = QStringLiteral("/a b.log");
    settings.speed = QStringLiteral("4");
    settings.extra = QStringList{"--fault", "silence"};
    QCOMPARE(
        ReceiverArguments(settings, "/l").mid(3),
        QStringList({"--product", "31", "--idle", "--capture", "/a b.log", "--speed", "4", "--fault", "silence"}));
}

void ReceiverProcessTest::ReadyLine()
{
    QCOMPARE(ReadyPath("ready /tmp/x y/gnss"), QStringLiteral("/tmp/x y/gnss"));
    QCOMPARE(ReadyPath("ready /tmp/x\r"), QStringLiteral("/tmp/x"));
    for (const char* line : {"", "ready", "ready ", "already /tmp/x", " ready /tmp/x"})
        QVERIFY2(ReadyPath(line).isEmpty(), line);
}

void ReceiverProcessTest::ReadyAfterOtherOutput()
{
    ReceiverProcess receiver;
    receiver.Start(
        Script("echo hello; echo complaint >&2; printf 'rea'; sleep 0.1; printf 'dy %s\\n' \"$2\"; sleep 30"));
    QVERIFY(receiver.WaitReady(5000));
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Ready));
    QCOMPARE(QFileInfo(receiver.Port()).fileName(),
             QStringLiteral("gnss-virtual-%1").arg(QCoreApplication::applicationPid()));
    QVERIFY(receiver.WaitReady(0));
    receiver.Stop();
    QVERIFY(receiver.Port().isEmpty());
}

void ReceiverProcessTest::EachStartHasItsOwnLink()
{
    const ReceiverSettings settings = Script("echo ready \"$2\"; sleep 30");
    ReceiverProcess first;
    ReceiverProcess second;
    QSet<QString> ports;
    for (int i = 0; i < 2; ++i) {
        for (ReceiverProcess* receiver : {&first, &second}) {
            receiver->Start(settings);
            QVERIFY(receiver->WaitReady(5000));
            ports.insert(receiver->Port());
        }
    }
    QCOMPARE(ports.size(), 4);
}

void ReceiverProcessTest::SilenceIsWaitedForOnlySoLong()
{
    ReceiverProcess receiver;
    receiver.Start(Script("exec sleep 30"));
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!receiver.WaitReady(50));
    QVERIFY(clock.elapsed() < 5000);
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Starting));
}

void ReceiverProcessTest::ADeathIsToldWithItsLastWords()
{
    ReceiverProcess receiver;
    QSignalSpy ended(&receiver, &ReceiverProcess::Ended);
    receiver.Start(Script("echo ready \"$2\"; sleep 0.1; printf 'out of satellites' >&2; exit 3"));
    QVERIFY(receiver.WaitReady(5000));
    QVERIFY(ended.wait(5000));
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Ended));
    QVERIFY(receiver.Reason().contains(QLatin1Char('3')));
    QVERIFY(receiver.Reason().contains(QStringLiteral("out of satellites")));
    QVERIFY(receiver.StateText().contains(receiver.Reason()));

    receiver.Start(Script("kill -9 $$"));
    QVERIFY(!receiver.WaitReady(5000));
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Ended));
    QCOMPARE(ended.size(), 2);
}

void ReceiverProcessTest::AMissingProgram()
{
    ReceiverProcess receiver;
    ReceiverSettings settings;
    settings.program = m_folder->filePath(QStringLiteral("none"));
    receiver.Start(settings);
    QVERIFY(!receiver.WaitReady(5000));
    QVERIFY(receiver.Reason().contains(settings.program));
    // It is a file and may be run, but nothing can run it.
    settings = Script("");
    QFile file(settings.program);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("#!/no/such/shell\n");
    file.close();
    receiver.Start(settings);
    QVERIFY(!receiver.WaitReady(5000));
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Ended));
}

void ReceiverProcessTest::StopEndsAProgramThatDoesNotWantTo()
{
    ReceiverProcess receiver;
    QSignalSpy ended(&receiver, &ReceiverProcess::Ended);
    receiver.Start(Script("trap '' TERM; echo ready \"$2\"; while :; do sleep 1; done"));
    QVERIFY(receiver.WaitReady(5000));
    receiver.Stop();
    QCOMPARE(int(receiver.CurrentState()), int(ReceiverProcess::State::Off));
    QCoreApplication::processEvents();
    QCOMPARE(ended.size(), 0);
}

void ReceiverProcessTest::PicturesNeedAGraphicalApplication()
{
    QVERIFY(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/clock.png")).isNull());
}

QTEST_GUILESS_MAIN(ReceiverProcessTest)
#include "tst_receiverprocess.moc"
