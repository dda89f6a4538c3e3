// SPDX-License-Identifier: MIT
#include "host/app/HostOptions.h"
#include "host/app/StationReceivers.h"

#include <QSerialPort>
#include <QtTest>

/// What the host offers to the production windows.
class TestStationReceivers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void UnitsAreOfferedWhileTheyRun()
    {
        qputenv("GNSS_SERIAL_PORTS", "/dev/mine");
        ReceiverSettings settings;
        settings.program = QStringLiteral(GNSS_BUILD_BIN "/gnss-receiver");
        settings.capture = "/not/theirs.log";
        settings.extra = QStringList{"--memory", "kept"};
        StationReceivers station;
        station.Start(settings, 2);
        station.Offer(10000);
        QStringList offered = qEnvironmentVariable("GNSS_SERIAL_PORTS").split(':');
        QCOMPARE(offered.size(), 3);
        QVERIFY(offered.removeOne("/dev/mine"));
        for (const QString& path : qAsConst(offered)) {
            QVERIFY2(path.size() < 40, qPrintable(path));
            QSerialPort port;
            port.setPortName(path);
            QVERIFY(port.open(QIODevice::ReadWrite));
            QVERIFY(!port.waitForReadyRead(700)); // it waits for its start
        }
        station.Stop();
        QCOMPARE(qEnvironmentVariable("GNSS_SERIAL_PORTS"), QStringLiteral("/dev/mine"));
    }

    void AMissingProgramOffersNothing()
    {
        qunsetenv("GNSS_SERIAL_PORTS");
        StationReceivers station;
        station.Start(ReceiverSettings(), 3);
        station.Offer(1000);
        QVERIFY(qEnvironmentVariableIsEmpty("GNSS_SERIAL_PORTS"));
    }

    void TheUsersArgumentsCount()
    {
        QCOMPARE(UnitArguments(3, {"--ttff-cold", "1,0"}).mid(4), (QStringList{"--ttff-cold", "1,0"}));
        QCOMPARE(ParseHostOptions({"host", "--station", "4"}).options.station, 4);
        for (const char* bad : {"-1", "17", "x", ""}) {
            QVERIFY(!ParseHostOptions({"host", "--station", bad}).error.isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(TestStationReceivers)
#include "tst_stationreceivers.moc"
