// SPDX-License-Identifier: MIT
#include "WindowTest.h"

namespace {

/// Gives an ACK of the start command after some milliseconds.
void AcknowledgeIn(int milliseconds, char status)
{
    QTimer::singleShot(milliseconds, [status] {
        const char record[4] = {1, 0, status, 0};
        FakeCodec::Emit(400, QByteArray(record, 4));
    });
}

const QString oldLog = QStringLiteral("GnssData/logs/nmea/log_20200101000000.txt");

} // namespace

class TestWindowPositioning : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void StartAndStopPutTheirBytesOnTheLine()
    {
        for (const int product : {0, 31}) {
            const QByteArray start =
                product == 0 ? QByteArray::fromHex("7e04190001000300 00000c00 01000000 0100 0100 00000000 7e")
                             : "AT+GNSSSTART=1,1,1,0\r\n";
            const QByteArray stop =
                product == 0 ? QByteArray::fromHex("7e040d0002000000000000007e") : "AT+GNSSSTOP\r\n";
            const LineTest test(product);
            // A refused one leaves it stopped, but arms the clock.
            Global::firstFixText = "9s";
            AcknowledgeIn(30, 3);
            test.window->SlotSendStartStopCmd();
            QCOMPARE(test.Read(start.size()), start);
            QVERIFY(!Global::positioningStarted && Global::firstFixText.isEmpty());
            QCOMPARE(test.Status().last(), QStringLiteral("启动GNSS定位命令错误"));
            QVERIFY(test.window->findChild<QTextEdit*>()->toHtml().contains("color:#ff0000"));

            WriteFile(oldLog, "");
            const QDateTime before = Global::startInstant;
            AcknowledgeIn(60, 0);
            test.Button("启动定位")->click();
            QVERIFY(Global::positioningStarted && Global::startInstant > before);
            QCOMPARE(test.Status().last(), QStringLiteral("启动GNSS定位命令发送成功"));
            QCOMPARE(test.Read(start.size()), start);
            QCOMPARE(Global::ackState, 4);
            QVERIFY(!QFile::exists(oldLog));

            test.Button("停止定位")->click();
            QVERIFY(!Global::positioningStarted);
            QCOMPARE(test.Status().last(), QStringLiteral("停止GNSS定位"));
            QCOMPARE(test.Read(stop.size()), stop);
            QVERIFY(test.Button("启动定位") != nullptr);
        }
    }

    void AStartWithoutAnAnswerTimesOutAndClearsTheLogs()
    {
        const WindowTest test;
        const BoxAnswerer answerer;
        Global::firstFixText = "9s";
        WriteFile(oldLog, "");
        test.window->SlotSendStartStopCmd();
        QCOMPARE(answerer.boxes, QStringList{"GNSS|Please open port before send packet!"});
        QCOMPARE(test.Status(), QStringList{"发送start命令等待 ACK超时"});
        QCOMPARE(Global::firstFixText, QStringLiteral("9s"));
        QVERIFY(!QFile::exists(oldLog));
        QCOMPARE(Global::ackState, 4);
    }

    void WrongStateIsToldAndAStopIsTakenAsDone()
    {
        const WindowTest test;
        const BoxAnswerer answerer;
        test.window->SlotStopBtnClicked();
        Global::positioningStarted = true;
        test.window->SlotStartClicked();
        test.window->SlotStopBtnClicked();
        QCOMPARE(answerer.boxes,
                 (QStringList{"错误|当前已经停止，请勿重复触发！", "错误|当前已经启动，请勿重复触发！",
                              "GNSS|Please open port before send packet!"}));
        QVERIFY(!Global::positioningStarted);
    }

    void ASecondClickInsideTheWaitSharesTheAck()
    {
        const LineTest test;
        QTimer::singleShot(50, [&test] { test.window->SlotSendStartStopCmd(); });
        AcknowledgeIn(120, 0);
        test.window->SlotSendStartStopCmd();
        QCOMPARE(test.Status().mid(1), (QStringList{"启动GNSS定位命令发送成功", "启动GNSS定位命令发送成功"}));
        QVERIFY(Global::positioningStarted);
    }

    /// A closed port opens a box at every send, an open one lets it wait.
    void TheWindowMayGoInAnyWaitAndInBoxes()
    {
        for (const bool open : {false, true}) {
            for (auto slot : {&GnssWindow::SlotStartClicked, &GnssWindow::SlotProcSerialNoData,
                              &GnssWindow::SlotStopBtnClicked}) {
                const bool stops = slot == &GnssWindow::SlotStopBtnClicked;
                LineTest test;
                QTimer timer;
                connect(&timer, &QTimer::timeout, [&] {
                    if (open || QApplication::activeModalWidget() != nullptr) {
                        test.window.reset();
                    }
                });
                if (!open) {
                    test.window->SlotSwitchPort();
                }
                timer.start(open ? 50 : 5);
                Global::positioningStarted = stops;
                (test.window.get()->*slot)();
                QVERIFY(test.window == nullptr || (open && stops));
                QVERIFY(!Global::positioningStarted);
                QCOMPARE(Global::ackState, 4);
            }
        }
    }

    void AViewOrTheWindowMayGoInTheViewsWait()
    {
        for (const bool whole : {false, true}) {
            LineTest test;
            test.window->show();
            const QPointer<QWidget> view = test.SubWindow("CmdConfig")->widget();
            QTimer::singleShot(60, [&] { whole ? test.window.reset() : test.Area()->closeAllSubWindows(); });
            QMetaObject::invokeMethod(view, "SlotSendClicked");
            QVERIFY(view.isNull());
            QCOMPARE(Global::ackState, 4);
            QVERIFY(whole || test.Status().size() == 1); // the opening of the port alone
        }
    }

    void OnlyTheFirstFixOfAStartCounts()
    {
        const WindowTest test;
        Global::startInstant = QDateTime::currentDateTime().addSecs(-10);
        FakeCodec::Emit(700, nullptr, 0);
        const QString first = Global::firstFixText;
        QVERIFY(first.startsWith("9.8") || first.startsWith("9.9"));
        Global::startInstant = QDateTime::currentDateTime();
        FakeCodec::Emit(700, nullptr, 0);
        QCOMPARE(Global::firstFixText, first);
    }

    void TheSilenceProbeFindsASilentReceiver()
    {
        const LineTest test;
        Global::positioningStarted = true;
        test.window->SlotProcSerialNoData();
        QCOMPARE(test.Read(14), QByteArray::fromHex("7e040e0005000000000001 00007e"));
        QVERIFY(!Global::positioningStarted);
        QVERIFY(test.Button("启动定位") != nullptr);
    }
};

QTEST_MAIN(TestWindowPositioning)
#include "tst_positioning.moc"
