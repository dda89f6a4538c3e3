// SPDX-License-Identifier: MIT
#include "TestReceiver.h"
#include "WindowTest.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QStackedWidget>

namespace {

/// A window with its port open on a receiver.
class Road : public TestReceiver, public WindowTest {
public:
    explicit Road(const QStringList& options, int product = 0)
        : TestReceiver(QStringList{"--product", QString::number(product), "--ttff-cold", "3,0", "--ttff-hot",
                                   "0.5,0", "--time", "2026-11-22T12:00:00"} +
                       options),
          WindowTest(product, 2, link, Codec::Own)
    {
        OpenPort(link);
        QVERIFY(ready && Global::serialOpen);
    }

    QPlainTextEdit* Nmea() const { return SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>(); }

    /// Waits until the NMEA view holds a text.
    bool Shows(const QString& text) const
    {
        return QTest::qWaitFor([&] { return Nmea()->toPlainText().contains(text); }, 30000);
    }
    /// What the NMEA view holds so many milliseconds after a text has come up anew, without what was on its way.
    QString Anew(const QString& text, int milliseconds = 0, int onItsWay = 1100) const
    {
        QTest::qWait(onItsWay);
        Nmea()->clear();
        QTest::qWait(Shows(text) ? milliseconds : 0);
        return Nmea()->toPlainText();
    }

    /// Sends a page of the command configuration with some of its buttons turned; the last line of the status log.
    QString SendPage(int index, const QStringList& turned = {}) const
    {
        QWidget* view = SubWindow("CmdConfig")->widget();
        view->findChild<QStackedWidget*>()->setCurrentIndex(index);
        for (const QString& name : turned) {
            view->findChild<QAbstractButton*>(name)->toggle();
        }
        view->findChild<QAbstractButton*>("send")->click();
        return Status().last();
    }

    /// Waits for the first fix; its time in seconds.
    static double FirstFix()
    {
        const bool fixed = QTest::qWaitFor([] { return !Global::firstFixText.isEmpty(); }, 30000);
        return fixed ? Global::firstFixText.chopped(1).toDouble() : -1;
    }

    /// The present window's history window.
    static QWidget* History()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("HisInfoInject")) {
                return widget;
            }
        }
        return nullptr;
    }
};

} // namespace

class TestRoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void SentencesReachTheViewTheCaptureAndTheLog()
    {
        const Road road({"--memory", "kept"});
        road.Click("十六进制视图");
        QVERIFY(road.Shows("$GNRMC") && road.FirstFix() >= 0);
        road.window->SlotSwitchPort();

        // Every line of the view stands in the capture and in the working log, in order and with its line end.
        const QByteArray capture = Content(road.RawCaptures().first());
        const QByteArray log = Content(QDir("GnssData/logs/nmea").entryInfoList(QDir::Files).first().filePath());
        int inCapture = 0;
        int inLog = 0;
        const QStringList lines = road.Nmea()->toPlainText().split('\n');
        QVERIFY(lines.size() > 20);
        for (const QString& line : lines) {
            const QByteArray sentence = line.toLatin1() + "\r\n";
            inCapture = capture.indexOf(sentence, inCapture);
            inLog = log.indexOf("] " + sentence, inLog);
            QVERIFY2(inCapture >= 0 && inLog >= 0, sentence.constData());
            inCapture += sentence.size();
            inLog += sentence.size();
        }
        QVERIFY(!road.SubWindow("HexViewWin")->findChild<QPlainTextEdit*>()->toPlainText().isEmpty());
    }

    void AnIdleReceiverStartsIsConfiguredAndStops()
    {
        for (const int product : {0, 27, 31}) {
            const Road road({"--idle"}, product);
            QVERIFY(!road.Anew("", 300, 0).contains("GGA"));
            road.Button("启动定位")->click();
            QCOMPARE(road.Status().last(), QStringLiteral("启动GNSS定位命令发送成功"));
            QVERIFY(Global::positioningStarted);
            QVERIFY(road.Shows("GGA"));
            const double ttff = road.FirstFix();
            QVERIFY2(ttff > 2.0 && ttff < 20.0, qPrintable(Global::firstFixText));
            for (int page = 0; page < 10; ++page) {
                QVERIFY2(road.SendPage(page).endsWith(" 命令发送成功"), qPrintable(road.Status().last()));
            }
            road.Button("停止定位")->click();
            QVERIFY(!Global::positioningStarted);
            QVERIFY(!road.Anew("", 1200, 300).contains("GGA"));
        }
    }

    void TheReceiverObeysItsConfiguration()
    {
        const Road road({"--memory", "kept"});
        QVERIFY(road.Shows("$GLGSV") && road.Shows("$GBGSV") && road.Shows("$GNVTG"));
        QVERIFY(road.SendPage(0, {"glo", "bds"}).endsWith("命令发送成功"));
        QString text = road.Anew("RMC", 500);
        QVERIFY(text.contains("$GPGSV") && !text.contains("$GLGSV") && !text.contains("$GBGSV"));
        QVERIFY(road.SendPage(2, {"VTG", "GSV"}).endsWith("命令发送成功"));
        text = road.Anew("RMC", 500);
        QVERIFY(text.contains("RMC") && !text.contains("VTG") && !text.contains("GSV"));
        QVERIFY(road.SendPage(6, {"update_rate_10hz"}).endsWith("命令发送成功"));
        text = road.Anew("RMC", 2000);
        for (const char* tenth : {"1", "2", "5", "9"}) {
            QVERIFY2(text.contains(QRegularExpression(QString("GGA,\\d{6}\\.") + tenth)), tenth);
        }
    }

    void HistoryMakesAStartFaster()
    {
        const QString block = QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin";
        QFile::remove(block);
        {
            const Road tracked({"--memory", "kept"});
            QVERIFY(tracked.FirstFix() >= 0);
            QVERIFY(QMetaObject::invokeMethod(Road::History(), "SlotSendRptHisInfoCmd"));
            QVERIFY(QTest::qWaitFor([&] { return QFile::exists(block); }, 5000));
            QCOMPARE(tracked.Status().filter("历史信息保存成功: ").size(), 1);
        }
        const qint64 size = QFileInfo(block).size();
        QVERIFY(size > 0 && size <= 7400);
        const Road fresh({"--idle"});
        QVERIFY(QMetaObject::invokeMethod(Road::History(), "SlotInjectHisInfo"));
        QVERIFY2(fresh.Status().last().startsWith("注入历史信息命令发送成功: "),
                 qPrintable(fresh.Status().last()));
        fresh.Button("启动定位")->click();
        // Half a second instead of three, and what a busy machine adds.
        QVERIFY2(fresh.FirstFix() > 0.0 && fresh.FirstFix() < 2.9, qPrintable(Global::firstFixText));
    }

    void AcknowledgementsGoWrong()
    {
        const QString late = "配置启动方式等待 ACK超时";
        const QString label = "配置冷热启动模式";
        const QList<QPair<QString, QString>> faults = {{"ack-lost", late},
                                                       {"ack-late=1100", label + " 命令发送成功"},
                                                       // The wait counts its passes, which a busy machine
                                                       // stretches: too late is well beyond.
                                                       {"ack-late=3000", late},
                                                       {"ack-double", label + " 命令发送成功"},
                                                       {"ack-other=513", label + "注入PGNSS GPS时间命令发送成功"},
                                                       {"refuse=1", label + " 命令长度异常"},
                                                       {"refuse", label + " 命令错误"},
                                                       {"refuse=9", label + " 未知错误"},
                                                       {"silence", late}};
        for (const auto& fault : faults) {
            const Road road({"--fault", fault.first});
            QCOMPARE(road.SendPage(1), fault.second);
            // A late or second one comes when nobody waits and is shown nowhere.
            const int lines = road.Status().size();
            QTest::qWait(fault.first == "ack-late=3000" ? 1800 : 300);
            QCOMPARE(road.Status().size(), lines);
        }
    }

    void CustomCommandsAreSentAndTheirAckIsShownNowhere()
    {
        const Road road({"--idle"});
        road.Click("自定义命令视图");
        QWidget* view = road.SubWindow("ConfigViewWin")->widget();
        view->findChild<QComboBox*>()->setCurrentText(
            "7e 04 19 00 01 00 03 00 00 00 0c 00 01 00 00 00 01 00 01 00 00 00 00 00 7e");
        QVERIFY(QMetaObject::invokeMethod(view, "SlotEditSendBtnClicked"));
        QVERIFY(road.Shows("GGA"));
        QCOMPARE(road.Status().last(), QStringLiteral("发送自定义命令"));
        QVERIFY(!Global::positioningStarted);
    }

    void NoiseOnTheLineIsSurvived()
    {
        const Road road({"--memory", "kept", "--rate", "10", "--fault", "garbage=5000", "--fault", "cut-frames=30",
                         "--fault", "bad-checksum=30"});
        QVERIFY(road.FirstFix() >= 0);
    }
};

QTEST_MAIN(TestRoad)
#include "tst_receiver.moc"
