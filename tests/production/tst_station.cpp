// SPDX-License-Identifier: MIT
#include "ProductTestDriver.h"
#include "TestReceiver.h"

#include "production/VersionLoad.h"

#include <QTextEdit>

namespace {

const QString smallImage = QStringLiteral(GNSS_BUILD_BIN "/Firmware/vrx-2.1-small.bin");
const QStringList quick = {"--idle", "--rate", "10", "--ttff-cold", "0.3,0", "--time", "2026-11-22T12:00:00"};

constexpr int longestUnitMs = 120000;
/// The windows wait 150 ms for an answer, which on a busy machine comes too late now and then. What such a load
/// says is right, and it is played again, as an operator would.
constexpr int mostAttempts = 12;

/// Whether the log tells the version, last of all.
bool Tells(const QStringList& log, const QString& version)
{
    return log.last().startsWith("当前固件版本：$GNTXT,01,01,02,VERSION " + version + '*');
}

} // namespace

/// Whole units: the windows, virtual receivers and their loaders.
class TestStation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProductTestDriver::CleanFolders(); }

    void TheFirmwareWindowLoadsASample_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("log");
        QTest::newRow("vrx-2.0") << ""
                                 << "";
        QTest::newRow("vrx-2.1-small in two parts") << "loader-split=150"
                                                    << "";
        QTest::newRow("vrx-2.1-small late") << "loader-late=20000"
                                            << "串口读取ACK数据失败|ACK处理异常|固件加载失败，完成0/3条";
        QTest::newRow("vrx-2.1-small wrong") << "loader-wrong=2"
                                             << "固件加载失败，ACK值为43 15|ACK处理异常|固件加载失败，完成1/3条";
        QTest::newRow("broken-checksum") << ""
                                         << "固件加载失败，ACK值为43 15|ACK处理异常|固件加载失败，完成2/2条";
        QTest::newRow("broken-cut") << ""
                                    << "串口读取ACK数据失败|ACK处理异常|固件加载失败，完成1/0条";
    }

    void TheFirmwareWindowLoadsASample()
    {
        QFETCH(QString, fault);
        QFETCH(QString, log);
        const QString sample = QString(QTest::currentDataTag()).section(' ', 0, 0);
        const QStringList options = quick + (fault.isEmpty() ? QStringList() : QStringList{"--fault", fault});
        QStringList said;
        const auto asExpected = [&] {
            return log.isEmpty() ? said.first() == "固件加载成功" && Tells(said, "VRX " + sample.mid(4, 3))
                                 : said.join('|') == log;
        };
        for (int attempt = 0; attempt < mostAttempts && (attempt == 0 || !asExpected()); ++attempt) {
            const TestReceiver receiver(options);
            QVERIFY(receiver.ready);
            qputenv("GNSS_SERIAL_PORTS", receiver.link.toLocal8Bit());
            VersionLoad window;
            window.Prepare();
            window.findChild<QComboBox*>()->setCurrentText(receiver.link);
            window.findChild<QLineEdit*>()->setText(QStringLiteral(GNSS_BUILD_BIN "/Firmware/%1.bin").arg(sample));
            window.SlotStartLoadVersion();
            said = window.findChild<QTextEdit*>()->toPlainText().split('\n');
        }
        QVERIFY2(asExpected(), qPrintable(said.join('|')));
    }

    void AUnitThatDoesNotLoadIsNotTested()
    {
        const TestReceiver receiver(quick + QStringList{"--fault", "loader-wrong=3"});
        const ProductTestDriver station(receiver.link, smallImage);
        for (int attempt = 0; attempt < mostAttempts && !station.Log().contains("固件加载失败，ACK值为43 15");
             ++attempt) {
            station.Start();
            QVERIFY(!station.Running());
        }
        QCOMPARE(station.Rows(), 0);
        // The load from the first record again is all that the chip needs.
        for (int attempt = 0; attempt < mostAttempts && !station.Running(); ++attempt) {
            station.Start();
        }
        QVERIFY2(station.Running(), qPrintable(station.Log().join('|')));
    }

    void UnitsFollowEachOtherOnTwoStations()
    {
        constexpr int units = 3;
        const TestReceiver receivers[2] = {TestReceiver(quick), TestReceiver(quick)};
        ProductTestDriver one(receivers[0].link, smallImage);
        ProductTestDriver two(receivers[1].link, smallImage);
        const ProductTestDriver* stations[] = {&one, &two};
        QTimer next[2];
        for (int i : {0, 1}) {
            const ProductTestDriver& station = *stations[i];
            station.Set("gpsCn0Thresh", 30);
            connect(&next[i], &QTimer::timeout, [&station] {
                if (!station.Running() && station.Rows() < units) {
                    station.ScanPn("PN" + QString::number(station.Rows() + 1));
                    station.Start();
                }
            });
            next[i].start(100);
        }
        for (const ProductTestDriver* station : stations) {
            QTRY_VERIFY_WITH_TIMEOUT(station->Rows() == units && !station->Running(), 4 * longestUnitMs);
            QCOMPARE(station->Text("passNum"), QString::number(units) + "次");
            for (int row = 0; row < units; ++row) {
                QCOMPARE(station->Row(row).at(0), "PN" + QString::number(row + 1));
            }
        }
        const QStringList reports = ProductTestDriver::Reports();
        QCOMPARE(reports.size(), 2 * units);
        for (const QString& report : reports) {
            QVERIFY(ProductTestDriver::Content(report).count("\n$GNGGA,") >= 2);
        }
        QCOMPARE(ProductTestDriver::Results().size(), 2);
        for (const QString& results : ProductTestDriver::Results()) {
            QCOMPARE(ProductTestDriver::Content(results).count('\n'), units + 1);
        }
    }
};

QTEST_MAIN(TestStation)
#include "tst_station.moc"
