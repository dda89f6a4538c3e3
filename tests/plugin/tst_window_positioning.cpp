#include "Pty.h"
#include "WindowTest.h"

#include <QFile>

namespace {

QByteArray Ack(quint16 id, quint16 status)
{
    QByteArray record(4, '\0');
    record[0] = static_cast<char>(id & 0xFF);
    record[1] = static_cast<char>(id >> 8);
    record[2] = static_cast<char>(status);
    return record;
}

void Touch(const QString& path)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class TestWindowPositioning : public QObject {
    Q_OBJECT

private:
    /// Opens the port of the test's window.
    static void Open(const WindowTest& test, const Pty& pty)
    {
        test.window->SlotChangePort(pty.path);
        test.window->SlotSwitchPort();
    }

private Q_SLOTS:
    void StartAndStopPutTheirBytesOnTheLine_data()
    {
        QTest::addColumn<int>("product");
        QTest::addColumn<QByteArray>("start");
        QTest::addColumn<QByteArray>("stop");
        QTest::newRow("frames") << 0
                                << QByteArray::fromHex("7e04190001000300 00000c00 01000000 0100 0100 00000000 7e")
                                << QByteArray::fromHex("7e040d0002000000000000007e");
        QTest::newRow("AT") << 31 << QByteArray("AT+GNSSSTART=1,1,1,0\r\n") << QByteArray("AT+GNSSSTOP\r\n");
    }

    void StartAndStopPutTheirBytesOnTheLine()
    {
        QFETCH(int, product);
        QFETCH(QByteArray, start);
        QFETCH(QByteArray, stop);
        Pty pty;
        WindowTest test(product, 2, pty.path);
        Open(test, pty);
        Touch("GnssData/logs/nmea/log_20200101000000.txt");
        QTimer::singleShot(60, [] { FakeCodec::Emit(400, Ack(1, 0)); });
        Global::firstFixText = "9s";
        test.Button("启动定位")->click();
        QVERIFY(Global::positioningStarted);
        QCOMPARE(test.Status().last(), QStringLiteral("启动GNSS定位命令发送成功"));
        QCOMPARE(pty.Read(start.size()), start);
        QVERIFY(Global::firstFixText.isEmpty());
        QCOMPARE(Global::ackState, 4);
        QVERIFY(!QFile::exists("GnssData/logs/nmea/log_20200101000000.txt"));

        test.Button("停止定位")->click();
        QVERIFY(!Global::positioningStarted);
        QCOMPARE(test.Status().last(), QStringLiteral("停止GNSS定位"));
        QCOMPARE(pty.Read(stop.size()), stop);
        QVERIFY(test.Button("启动定位") != nullptr);
    }

    void ARefusedStartStaysStoppedButArmsTheClock()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        Open(test, pty);
        Global::firstFixText = "9s";
        const QDateTime before = Global::startInstant;
        QTimer::singleShot(30, [] { FakeCodec::Emit(400, Ack(1, 3)); });
        QTest::qWait(5);
        test.window->SlotSendStartStopCmd();
        QVERIFY(!Global::positioningStarted);
        QCOMPARE(test.Status().last(), QStringLiteral("启动GNSS定位命令错误"));
        QVERIFY(Global::firstFixText.isEmpty());
        QVERIFY(Global::startInstant > before);
        QVERIFY(test.Button("启动定位") != nullptr);
        auto* log = test.window->findChild<QTextEdit*>();
        QVERIFY(log->toHtml().contains("color:#ff0000"));
    }

    void AStartWithoutAnAnswerTimesOutAndClearsTheLogs()
    {
        WindowTest test;
        BoxAnswerer answerer;
        Global::firstFixText = "9s";
        Touch("GnssData/logs/hex/log_20200101000000.txt");
        test.window->SlotSendStartStopCmd();
        QCOMPARE(answerer.boxes, QStringList{"GNSS|Please open port before send packet!"});
        QCOMPARE(test.Status(), QStringList{"发送start命令等待 ACK超时"});
        QCOMPARE(Global::firstFixText, QStringLiteral("9s"));
        QVERIFY(!QFile::exists("GnssData/logs/hex/log_20200101000000.txt"));
        QCOMPARE(Global::ackState, 4);
    }

    void WrongStateIsToldAndAStopIsTakenAsDone()
    {
        WindowTest test;
        BoxAnswerer answerer;
        test.window->SlotStopBtnClicked();
        Global::positioningStarted = true;
        test.window->SlotStartClicked();
        QCOMPARE(answerer.boxes,
                 (QStringList{"错误|当前已经停止，请勿重复触发！", "错误|当前已经启动，请勿重复触发！"}));
        test.window->SlotStopBtnClicked();
        QCOMPARE(answerer.boxes.last(), QStringLiteral("GNSS|Please open port before send packet!"));
        QVERIFY(!Global::positioningStarted);
    }

    void AFrameThatDoesNotEncodeChangesNothing()
    {
        WindowTest test;
        FakeCodec::SetEncodeResult(-1);
        Touch("GnssData/logs/nmea/log_20200101000000.txt");
        test.window->SlotStartClicked();
        Global::positioningStarted = true;
        test.window->SlotStopBtnClicked();
        QVERIFY(Global::positioningStarted);
        QVERIFY(test.Status().isEmpty());
        QVERIFY(QFile::exists("GnssData/logs/nmea/log_20200101000000.txt"));
    }

    void ASecondClickInsideTheWaitSharesTheAck()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        Open(test, pty);
        QTimer::singleShot(50, [&test] { test.window->SlotSendStartStopCmd(); });
        QTimer::singleShot(120, [] { FakeCodec::Emit(400, Ack(1, 0)); });
        test.window->SlotSendStartStopCmd();
        QCOMPARE(test.Status().mid(1), (QStringList{"启动GNSS定位命令发送成功", "启动GNSS定位命令发送成功"}));
        QVERIFY(Global::positioningStarted);
    }

    void TheWindowMayGoInsideTheWait()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        Open(test, pty);
        QTimer::singleShot(50, [&test] { test.window.reset(); });
        GnssWindow* window = test.window.get();
        window->SlotSendStartStopCmd();
        QVERIFY(test.window == nullptr);
        QVERIFY(!Global::positioningStarted);
    }

    void TheWindowMayGoInTheProbeAndInBoxes()
    {
        WindowTest test;
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&test] {
            if (QApplication::activeModalWidget() != nullptr) {
                test.window.reset();
            }
        });
        timer.start(5);
        // The port is closed, so every send opens a box.
        for (auto slot :
             {&GnssWindow::SlotStartClicked, &GnssWindow::SlotStopBtnClicked, &GnssWindow::SlotProcSerialNoData}) {
            if (test.window == nullptr) {
                test.window = std::make_unique<GnssWindow>("Gnss", 0, nullptr);
            }
            Global::positioningStarted = slot == &GnssWindow::SlotStopBtnClicked;
            (test.window.get()->*slot)();
            QVERIFY(test.window == nullptr);
            QCOMPARE(Global::ackState, 4);
        }

        timer.stop();
        Pty pty;
        qputenv("GNSS_SERIAL_PORTS", pty.path.toLocal8Bit());
        test.window = std::make_unique<GnssWindow>("Gnss", 0, nullptr);
        Open(test, pty);
        QTimer::singleShot(50, [&test] { test.window.reset(); });
        GnssWindow* window = test.window.get();
        window->SlotProcSerialNoData();
        QVERIFY(test.window == nullptr);
    }

    void AViewOrTheWindowMayGoInTheViewsWait_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("sub-window closed") << 0;
        QTest::newRow("all closed") << 1;
        QTest::newRow("window destroyed") << 2;
    }

    void AViewOrTheWindowMayGoInTheViewsWait()
    {
        QFETCH(int, way);
        Pty pty;
        WindowTest test(0, 2, pty.path);
        Open(test, pty);
        test.window->show();
        QPointer<QWidget> view = test.SubWindow("CmdConfig")->widget();
        QTimer::singleShot(60, [&test, way] {
            if (way == 0) {
                test.SubWindow("CmdConfig")->close();
            } else if (way == 1) {
                test.Area()->closeAllSubWindows();
            } else {
                test.window.reset();
            }
        });
        QMetaObject::invokeMethod(view, "SlotSendClicked");
        QVERIFY(view.isNull());
        QCOMPARE(Global::ackState, 4);
        if (way < 2) {
            QCOMPARE(test.Status().size(), 1); // the opening of the port alone
            test.Click("命令配置视图");
            QVERIFY(test.SubWindow("CmdConfig") != nullptr);
        }
    }

    void TheFirstFixOfAStartCountsAndReplayGivesZero()
    {
        WindowTest test;
        Global::startInstant = QDateTime::currentDateTime().addSecs(-10);
        FakeCodec::Emit(700, nullptr, 0);
        const QString first = Global::firstFixText;
        QVERIFY(first.startsWith("9.8") || first.startsWith("9.9"));
        Global::startInstant = QDateTime::currentDateTime();
        FakeCodec::Emit(700, nullptr, 0);
        QCOMPARE(Global::firstFixText, first);
        Global::replayRunning = true;
        FakeCodec::Emit(700, nullptr, 0);
        QCOMPARE(Global::firstFixText, QStringLiteral("0s"));
        Global::replayRunning = false;
    }

    void TheSilenceProbeFindsASilentReceiver()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        Open(test, pty);
        Global::positioningStarted = true;
        test.window->SlotProcSerialNoData();
        QCOMPARE(pty.Read(14), QByteArray::fromHex("7e040e0005000000000001 00007e"));
        QVERIFY(!Global::positioningStarted);
        QVERIFY(test.Button("启动定位") != nullptr);
    }
};

QTEST_MAIN(TestWindowPositioning)
#include "tst_window_positioning.moc"
