#include "ProductTestDriver.h"
#include "TestReceiver.h"

#include "production/VersionLoad.h"

#include <QElapsedTimer>
#include <QTextEdit>

namespace {

const QString smallImage = QStringLiteral(GNSS_BUILD_BIN "/Firmware/vrx-2.1-small.bin");
const QStringList quick = {"--idle", "--rate", "10", "--ttff-cold", "0.3,0", "--time", "2026-11-22T12:00:00"};

constexpr int longestUnitMs = 60000;

QString Sample(const char* name)
{
    return QStringLiteral(GNSS_BUILD_BIN "/Firmware/%1.bin").arg(name);
}

/// Whether the line of the last version can be found in a log.
bool Tells(const QStringList& log, const QString& version)
{
    return log.filter("当前固件版本：$GNTXT,01,01,02,VERSION " + version + '*').size() == 1;
}

} // namespace

/// Whole units: the windows, virtual receivers and their loaders.
class TestStation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProductTestDriver::CleanFolders(); }

    void TheFirmwareWindowLoadsASample_data()
    {
        QTest::addColumn<QString>("sample");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QStringList>("log");
        const QStringList good = {"固件加载成功"};
        const QStringList mute = {"串口读取ACK数据失败", "ACK处理异常", "固件加载失败，完成0/3条"};
        QTest::newRow("good") << "vrx-2.1-small"
                              << "" << good;
        QTest::newRow("16 KiB") << "vrx-2.0"
                                << "" << good;
        QTest::newRow("in two parts") << "vrx-2.1-small"
                                      << "loader-split=150" << good;
        QTest::newRow("no answer") << "vrx-2.1-small"
                                   << "loader-mute" << mute;
        QTest::newRow("late") << "vrx-2.1-small"
                              << "loader-late=20000" << mute;
        QTest::newRow("wrong byte") << "vrx-2.1-small"
                                    << "loader-wrong=2"
                                    << QStringList{"固件加载失败，ACK值为43 15", "ACK处理异常",
                                                   "固件加载失败，完成1/3条"};
        QTest::newRow("order") << "broken-order"
                               << ""
                               << QStringList{"固件加载失败，ACK值为43 15", "ACK处理异常",
                                              "固件加载失败，完成1/2条"};
        QTest::newRow("checksum") << "broken-checksum"
                                  << ""
                                  << QStringList{"固件加载失败，ACK值为43 15", "ACK处理异常",
                                                 "固件加载失败，完成2/2条"};
        QTest::newRow("cut") << "broken-cut"
                             << "" << QStringList{"串口读取ACK数据失败", "ACK处理异常", "固件加载失败，完成1/0条"};
    }

    void TheFirmwareWindowLoadsASample()
    {
        QFETCH(QString, sample);
        QFETCH(QString, fault);
        QFETCH(QStringList, log);
        QStringList options = quick;
        if (!fault.isEmpty()) {
            options += {"--fault", fault};
        }
        const TestReceiver receiver(options);
        QVERIFY(receiver.ready);
        qputenv("GNSS_SERIAL_PORTS", receiver.link.toLocal8Bit());
        VersionLoad window;
        window.Prepare();
        window.findChild<QComboBox*>()->setCurrentText(receiver.link);
        window.findChild<QLineEdit*>()->setText(Sample(sample.toLatin1().constData()));
        window.SlotStartLoadVersion();
        const QStringList said = window.findChild<QTextEdit*>()->toPlainText().split('\n');
        QCOMPARE(said.mid(0, log.size()), log);
        if (log.size() == 1) {
            QVERIFY2(Tells(said, sample.startsWith("vrx-2.0") ? "VRX 2.0" : "VRX 2.1"),
                     qPrintable(said.join('|')));
        }
    }

    void AUnitPassesWithOneClick()
    {
        const TestReceiver receiver(quick);
        QVERIFY(receiver.ready);
        const ProductTestDriver station(receiver.link, smallImage);
        station.ScanPn("PN-0001");
        station.Set("gpsCn0Thresh", 30);
        station.Start();
        QVERIFY2(station.Running(), qPrintable(station.Log().join('\n')));
        QVERIFY2(Tells(station.Log(), "VRX 2.1"), qPrintable(station.Log().join('\n')));
        QTRY_VERIFY_WITH_TIMEOUT(!station.Running(), longestUnitMs);
        QCOMPARE(station.Verdict(), QStringLiteral("PASS通过"));
        QCOMPARE(station.Row(0).at(6), QStringLiteral("PASS"));
        QVERIFY(station.Row(0).at(1).toInt() >= 30 && station.Row(0).at(3).toInt() >= 4);
        // The sentences of the report are those of the raw log.
        const QByteArray raw = station.Content(station.RawLogs().first());
        const QList<QByteArray> report = station.Content(station.Reports().first()).split('\n');
        int sentences = 0;
        int at = 0;
        for (const QByteArray& line : report) {
            if (line.startsWith('$')) {
                at = raw.indexOf(line + "\r\n", at);
                QVERIFY(at >= 0);
                ++sentences;
            }
        }
        QVERIFY(sentences > 20);
    }

    void AUnitThatNeverFixesFails()
    {
        const TestReceiver receiver(quick + QStringList{"--fault", "no-fix"});
        QVERIFY(receiver.ready);
        const ProductTestDriver station(receiver.link, smallImage);
        station.Set("testTimeout", 2);
        station.Start();
        QVERIFY(station.Running());
        QTRY_VERIFY_WITH_TIMEOUT(!station.Running(), longestUnitMs);
        QCOMPARE(station.Verdict(), QStringLiteral("FAILED不通过"));
    }

    void AUnitThatDoesNotLoadIsNotTested()
    {
        const TestReceiver receiver(quick + QStringList{"--fault", "loader-wrong=3"});
        QVERIFY(receiver.ready);
        const ProductTestDriver station(receiver.link, smallImage);
        station.Start();
        QVERIFY(!station.Running());
        QCOMPARE(station.Log().last(), QStringLiteral("固件加载失败，完成2/3条"));
        QCOMPARE(station.Rows(), 0);
        // The load from the first record again is all that the chip needs.
        station.Start();
        QVERIFY2(station.Running(), qPrintable(station.Log().join('\n')));
        QVERIFY(Tells(station.Log(), "VRX 2.1"));
    }

    void UnitsFollowEachOtherOnTwoStations()
    {
        constexpr int units = 4;
        const TestReceiver receivers[2] = {TestReceiver(quick), TestReceiver(quick)};
        ProductTestDriver one(receivers[0].link, smallImage);
        ProductTestDriver two(receivers[1].link, smallImage);
        two.window->setWindowTitle("产测视图2");
        struct Line {
            ProductTestDriver& station;
            int started;
            QTimer timer;

            explicit Line(ProductTestDriver& which) : station(which), started(0) {}
        };
        Line lines[2] = {Line(one), Line(two)};
        for (Line& line : lines) {
            line.station.Set("gpsCn0Thresh", 30);
            connect(&line.timer, &QTimer::timeout, [&line] {
                if (!line.station.Running() && line.started < units) {
                    line.station.ScanPn("PN" + QString::number(++line.started));
                    line.station.Start();
                }
            });
            line.timer.start(200);
        }
        QTRY_VERIFY_WITH_TIMEOUT(one.Rows() == units && two.Rows() == units, 4 * longestUnitMs);
        QTRY_VERIFY_WITH_TIMEOUT(!one.Running() && !two.Running(), longestUnitMs);
        for (const ProductTestDriver* station : {&one, &two}) {
            QCOMPARE(station->Text("passNum"), QString::number(units) + "次");
            for (int row = 0; row < units; ++row) {
                QCOMPARE(station->Row(row).at(0), "PN" + QString::number(row + 1));
            }
        }
        QCOMPARE(ProductTestDriver::Results().size(), 2);
        QCOMPARE(ProductTestDriver::Reports().size(), 2 * units);
        QCOMPARE(ProductTestDriver::RawLogs().size(), 2 * units);
        for (const QString& results : ProductTestDriver::Results()) {
            QCOMPARE(ProductTestDriver::Content(results).count('\n'), units + 1);
        }
    }

    void AReceiverThatGoesInTheLoadIsTold()
    {
        TestReceiver receiver(quick);
        QVERIFY(receiver.ready);
        const ProductTestDriver station(receiver.link, Sample("vrx-2.0"));
        QTimer::singleShot(500, [&] { receiver.Stop(); });
        QElapsedTimer clock;
        clock.start();
        station.Start();
        QVERIFY(!station.Running());
        QVERIFY(station.Log().last().startsWith("固件加载失败，完成"));
    }
};

QTEST_MAIN(TestStation)
#include "tst_station.moc"
