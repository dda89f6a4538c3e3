#include "LogCatcher.h"
#include "WindowTest.h"

#include "config/CmdConfig.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStackedWidget>
#include <QTemporaryDir>

namespace {

/// The virtual receiver on a line of its own.
class TestReceiver {
public:
    explicit TestReceiver(const QStringList& options)
    {
        link = m_folder.filePath("receiver");
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QStringLiteral(GNSS_BUILD_BIN "/gnss-receiver"),
                        QStringList{"--link", link, "--seed", "7"} + options);
        QByteArray said;
        while (!said.contains('\n') && m_process.waitForReadyRead(10000)) {
            said += m_process.readAllStandardOutput();
        }
        ready = said.startsWith("ready ");
    }
    ~TestReceiver()
    {
        m_process.terminate();
        if (!m_process.waitForFinished(5000)) {
            m_process.kill();
            m_process.waitForFinished();
        }
    }
    TestReceiver(const TestReceiver&) = delete;
    TestReceiver& operator=(const TestReceiver&) = delete;

    QString link;
    bool ready = false;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

/// A window with its port open on a receiver.
class Road {
public:
    explicit Road(const QStringList& options, int product = 0)
        : receiver(QStringList{"--product", QString::number(product)} + options),
          test(product, 2, receiver.link, WindowTest::Codec::Own)
    {
        test.window->SlotChangePort(receiver.link);
        test.window->SlotSwitchPort();
    }

    bool IsOpen() const { return receiver.ready && Global::serialOpen; }

    QString NmeaText() const { return test.SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>()->toPlainText(); }

    void ClearNmea() const { test.SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>()->clear(); }

    /// Sends a page of the command configuration and gives the last line of the status log.
    QString SendPage(int index, const QStringList& off = {}, const QStringList& on = {}) const
    {
        QWidget* view = test.SubWindow("CmdConfig")->widget();
        view->findChild<QStackedWidget*>()->setCurrentIndex(index);
        for (const QString& name : off) {
            view->findChild<QAbstractButton*>(name)->setChecked(false);
        }
        for (const QString& name : on) {
            view->findChild<QAbstractButton*>(name)->setChecked(true);
        }
        view->findChild<QAbstractButton*>("send")->click();
        return test.Status().last();
    }

    /// Waits until the NMEA view holds a text.
    bool Shows(const QString& text, int timeoutMs = 8000) const
    {
        return QTest::qWaitFor([&] { return NmeaText().contains(text); }, timeoutMs);
    }

    TestReceiver receiver;
    WindowTest test;
};

/// The seconds between the first GGA sentence of a text and its first one with a fix.
double SecondsToFix(const QString& text)
{
    double first = -1;
    const QStringList lines = text.split('\n');
    for (const QString& line : lines) {
        const QStringList fields = line.split(',');
        if (fields.size() > 6 && fields.at(0).endsWith("GGA") && !fields.at(1).isEmpty()) {
            const double time = fields.at(1).toDouble();
            const double seconds = static_cast<int>(time / 10000) * 3600 +
                                   static_cast<int>(time / 100) % 100 * 60 + time -
                                   static_cast<int>(time / 100) * 100;
            first = first < 0 ? seconds : first;
            if (fields.at(6) != "0" && !fields.at(6).isEmpty()) {
                return seconds - first;
            }
        }
    }
    return -1;
}

const QStringList quick = {"--ttff-cold", "3,0", "--ttff-hot", "0.5,0", "--time", "2026-11-22T12:00:00"};

} // namespace

class TestRoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void SentencesReachTheViewTheCaptureAndTheLog()
    {
        Road road(quick + QStringList{"--memory", "kept"});
        QVERIFY(road.IsOpen());
        road.test.Click("十六进制视图");
        QVERIFY(road.Shows("$GNRMC"));
        QVERIFY(QTest::qWaitFor([&] { return SecondsToFix(road.NmeaText()) >= 0; }, 8000));
        road.test.window->SlotSwitchPort();

        // Every line of the view stands in the capture and in the working log, in order and with its line end.
        const QByteArray capture = road.test.Content(road.test.RawCaptures().first());
        QDir logs("GnssData/logs/nmea");
        const QByteArray log = road.test.Content(logs.filePath(logs.entryList(QDir::Files).first()));
        int inCapture = 0;
        int inLog = 0;
        const QStringList lines = road.NmeaText().split('\n');
        QVERIFY(lines.size() > 20);
        for (const QString& line : lines) {
            const QByteArray sentence = line.toLatin1() + "\r\n";
            inCapture = capture.indexOf(sentence, inCapture);
            inLog = log.indexOf("] " + sentence, inLog);
            QVERIFY2(inCapture >= 0 && inLog >= 0, sentence.constData());
            inCapture += sentence.size();
            inLog += sentence.size();
        }
        QVERIFY(!road.test.SubWindow("HexViewWin")->findChild<QPlainTextEdit*>()->toPlainText().isEmpty());
    }

    void AnIdleReceiverStartsAndStops_data()
    {
        QTest::addColumn<int>("product");
        QTest::newRow("frames") << 0;
        QTest::newRow("AT") << 31;
        QTest::newRow("reduced") << 27;
    }

    void AnIdleReceiverStartsAndStops()
    {
        QFETCH(int, product);
        Road road(quick + QStringList{"--idle"}, product);
        QVERIFY(road.IsOpen());
        QTest::qWait(300);
        QVERIFY(!road.NmeaText().contains("GGA"));
        road.test.Button("启动定位")->click();
        QCOMPARE(road.test.Status().last(), QStringLiteral("启动GNSS定位命令发送成功"));
        QVERIFY(Global::positioningStarted);
        QVERIFY(road.Shows("GGA"));
        QVERIFY(QTest::qWaitFor([] { return !Global::firstFixText.isEmpty(); }, 10000));
        const double ttff = Global::firstFixText.chopped(1).toDouble();
        QVERIFY2(ttff > 2.0 && ttff < 6.0, qPrintable(Global::firstFixText));
        road.test.Button("停止定位")->click();
        QVERIFY(!Global::positioningStarted);
        QTest::qWait(300);
        road.ClearNmea();
        QTest::qWait(1200);
        QVERIFY(!road.NmeaText().contains("GGA"));
    }

    void EveryConfigurationPageIsAccepted_data()
    {
        QTest::addColumn<int>("product");
        QTest::newRow("frames") << 0;
        QTest::newRow("AT") << 31;
    }

    void EveryConfigurationPageIsAccepted()
    {
        QFETCH(int, product);
        Road road(quick, product);
        QVERIFY(road.IsOpen());
        for (int page = 0; page < 10; ++page) {
            const QString line = road.SendPage(page);
            QVERIFY2(line.endsWith(" 命令发送成功"), qPrintable(line));
        }
    }

    void TheReceiverObeysItsConfiguration()
    {
        Road road(quick + QStringList{"--memory", "kept"});
        QVERIFY(road.IsOpen());
        QVERIFY(road.Shows("$GLGSV") && road.Shows("$GBGSV") && road.Shows("$GNVTG"));

        QVERIFY(road.SendPage(0, {"glo", "bds"}).endsWith("命令发送成功"));
        QTest::qWait(1100);
        road.ClearNmea();
        QVERIFY(road.Shows("$GPGSV") && road.Shows("RMC"));
        QVERIFY(!road.NmeaText().contains("$GLGSV") && !road.NmeaText().contains("$GBGSV"));

        QVERIFY(road.SendPage(2, {"VTG", "GSV"}).endsWith("命令发送成功"));
        QTest::qWait(1100);
        road.ClearNmea();
        QVERIFY(road.Shows("RMC"));
        QVERIFY(!road.NmeaText().contains("VTG") && !road.NmeaText().contains("GSV"));

        QVERIFY(road.SendPage(6, {}, {"update_rate_10hz"}).endsWith("命令发送成功"));
        QTest::qWait(1100);
        road.ClearNmea();
        QTest::qWait(2000);
        const int perSecond = road.NmeaText().count("GGA") / 2;
        QVERIFY2(perSecond >= 8 && perSecond <= 12, qPrintable(QString::number(perSecond)));
    }

    void HistoryMakesAStartFaster()
    {
        const QString block = QCoreApplication::applicationDirPath() + "/HisInfo/HisInfo.bin";
        QFile::remove(block);
        {
            Road tracked(quick + QStringList{"--memory", "kept"});
            QVERIFY(tracked.IsOpen());
            QVERIFY(QTest::qWaitFor([&] { return SecondsToFix(tracked.NmeaText()) >= 0; }, 8000));
            auto* history = HistoryWindow();
            QVERIFY(history != nullptr);
            QVERIFY(QMetaObject::invokeMethod(history, "SlotSendRptHisInfoCmd"));
            QVERIFY(QTest::qWaitFor([&] { return QFile::exists(block); }, 5000));
            QVERIFY(tracked.test.Status().filter("历史信息保存成功: ").size() == 1);
        }
        const qint64 size = QFileInfo(block).size();
        QVERIFY(size > 0 && size <= 7400);
        Road fresh(quick + QStringList{"--idle"});
        QVERIFY(fresh.IsOpen());
        auto* history = HistoryWindow();
        QVERIFY(QMetaObject::invokeMethod(history, "SlotInjectHisInfo"));
        QVERIFY2(fresh.test.Status().last().startsWith("注入历史信息命令发送成功: "),
                 qPrintable(fresh.test.Status().last()));
        fresh.test.Button("启动定位")->click();
        QVERIFY(QTest::qWaitFor([] { return !Global::firstFixText.isEmpty(); }, 10000));
        const double ttff = Global::firstFixText.chopped(1).toDouble();
        QVERIFY2(ttff < 2.0, qPrintable(Global::firstFixText));
    }

    void AcknowledgementsGoWrong_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("status");
        QTest::newRow("lost") << "ack-lost"
                              << "配置启动方式等待 ACK超时";
        QTest::newRow("in time") << "ack-late=1300"
                                 << "配置冷热启动模式 命令发送成功";
        // The wait counts its passes, which a busy machine stretches: too late is well beyond.
        QTest::newRow("too late") << "ack-late=3000"
                                  << "配置启动方式等待 ACK超时";
        QTest::newRow("twice") << "ack-double"
                               << "配置冷热启动模式 命令发送成功";
        QTest::newRow("for another command") << "ack-other=513"
                                             << "配置冷热启动模式注入PGNSS GPS时间命令发送成功";
        QTest::newRow("length refused") << "refuse=1"
                                        << "配置冷热启动模式 命令长度异常";
        QTest::newRow("parameter refused") << "refuse=2"
                                           << "配置冷热启动模式 命令参数异常";
        QTest::newRow("refused") << "refuse"
                                 << "配置冷热启动模式 命令错误";
        QTest::newRow("unknown status") << "refuse=9"
                                        << "配置冷热启动模式 未知错误";
        QTest::newRow("silent") << "silence"
                                << "配置启动方式等待 ACK超时";
    }

    void AcknowledgementsGoWrong()
    {
        QFETCH(QString, fault);
        QFETCH(QString, status);
        Road road(quick + QStringList{"--fault", fault});
        QVERIFY(road.IsOpen());
        QCOMPARE(road.SendPage(1), status);
        // A late or second one comes when nobody waits and is shown nowhere.
        const int lines = road.test.Status().size();
        QTest::qWait(fault == "ack-late=3000" ? 1800 : 300);
        QCOMPARE(road.test.Status().size(), lines);
    }

    void ALateStartTimesOutAfterASecond()
    {
        Road road(quick + QStringList{"--idle", "--fault", "ack-late=2500"});
        QVERIFY(road.IsOpen());
        road.test.Button("启动定位")->click();
        QCOMPARE(road.test.Status().last(), QStringLiteral("发送start命令等待 ACK超时"));
        QVERIFY(!Global::positioningStarted);
    }

    void CustomCommandsAreSentAndTheirAckIsShownNowhere()
    {
        Road road(quick + QStringList{"--idle"});
        QVERIFY(road.IsOpen());
        road.test.Click("自定义命令视图");
        QWidget* view = road.test.SubWindow("ConfigViewWin")->widget();
        view->findChild<QComboBox*>()->setCurrentText(
            "7e 04 19 00 01 00 03 00 00 00 0c 00 01 00 00 00 01 00 01 00 00 00 00 00 7e");
        QVERIFY(QMetaObject::invokeMethod(view, "SlotEditSendBtnClicked"));
        QVERIFY(road.Shows("GGA"));
        QCOMPARE(road.test.Status().last(), QStringLiteral("发送自定义命令"));
        QVERIFY(!Global::positioningStarted);
    }

    void NoiseOnTheLineIsSurvived()
    {
        Road road(quick + QStringList{"--memory", "kept", "--rate", "10", "--fault", "garbage=5000", "--fault",
                                      "cut-frames=30", "--fault", "bad-checksum=30"});
        QVERIFY(road.IsOpen());
        QVERIFY(QTest::qWaitFor([&] { return SecondsToFix(road.NmeaText()) >= 0; }, 10000));
    }

private:
    /// The history window that belongs to the present main window.
    static QWidget* HistoryWindow()
    {
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget* widget : widgets) {
            if (widget->inherits("HisInfoInject")) {
                return widget;
            }
        }
        return nullptr;
    }
};

QTEST_MAIN(TestRoad)
#include "tst_road.moc"
