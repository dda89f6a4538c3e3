#include "BoxAnswerer.h"
#include "ProductTestDriver.h"
#include "TestReceiver.h"

namespace {

const QString smallImage = QStringLiteral(GNSS_BUILD_BIN "/Firmware/vrx-2.1-small.bin");
const QStringList quick = {"--idle", "--rate", "10", "--ttff-cold", "0.3,0", "--time", "2026-11-22T12:00:00"};

constexpr int longestUnitMs = 60000;

} // namespace

/// Whole units: the window, a virtual receiver and its loader.
class TestStation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProductTestDriver::CleanFolders(); }

    void AUnitPassesWithOneClick()
    {
        TestReceiver receiver(quick);
        QVERIFY(receiver.ready);
        ProductTestDriver station(receiver.link, smallImage);
        station.ScanPn("PN-0001");
        station.Set("gpsCn0Thresh", 30);
        station.Start();
        QVERIFY2(station.Running(), qPrintable(station.Log().join('\n')));
        QVERIFY(station.Log().contains("当前固件版本：$GNTXT,01,01,02,VERSION VRX 2.1*7A") ||
                station.Log().join('\n').contains("VRX 2.1"));
        QTRY_VERIFY_WITH_TIMEOUT(!station.Running(), longestUnitMs);
        QCOMPARE(station.Verdict(), QStringLiteral("PASS通过"));
        qDebug() << station.Row(0) << station.Log();
        qDebug().noquote() << ProductTestDriver::Content(ProductTestDriver::Results().value(0));
        qDebug().noquote() << QString::fromUtf8(ProductTestDriver::Content(ProductTestDriver::Reports().value(0)));
    }
};

QTEST_MAIN(TestStation)
#include "tst_station.moc"
