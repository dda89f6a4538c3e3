// SPDX-License-Identifier: MIT
#include "Files.h"
#include "line/PortList.h"
#include "line/RawCapture.h"

#include <QTemporaryDir>

class TestPortList : public QObject {
    Q_OBJECT

private:
    static QStringList Names(const QVector<PortEntry>& ports)
    {
        QStringList names;
        for (const PortEntry& port : ports) {
            names.append(port.name);
        }
        return names;
    }

private Q_SLOTS:
    void NumbersSortByValueAndListedPathsComeLast()
    {
        const QStringList system = {"ttyUSB10", "ttyUSB9", "ttyACM1", "ttyUSB1", "ttyS99999999999999999999",
                                    "ttyS2",    "COM10",   "COM9",    "console"};
        QCOMPARE(Names(MergePorts(system, "/z/port10::/b/port9:/dev/serial/by-id/a:")),
                 (QStringList{"COM9", "COM10", "console", "ttyACM1", "ttyS2", "ttyS99999999999999999999",
                              "ttyUSB1", "ttyUSB9", "ttyUSB10", "/dev/serial/by-id/a", "/b/port9", "/z/port10"}));
    }

    void OneDeviceIsOfferedOnce()
    {
        QTemporaryDir folder;
        const QString device = folder.filePath("device");
        const QString link = folder.filePath("link");
        WriteFile(device, "");
        QVERIFY(QFile::link(device, link));
        QCOMPARE(Names(MergePorts({}, link + ':' + device + ':' + link)), QStringList{device});
        QCOMPARE(CanonicalPortPath("null"), QStringLiteral("/dev/null"));
        QCOMPARE(CanonicalPortPath("/no/such/../port"), QStringLiteral("/no/port"));
    }

    void BusyPortsAreFoundButOwnOnesNotProbed()
    {
        const QVector<PortEntry> ports = {{"free", "/dev/free"}, {"busy", "/dev/busy"}, {"link", "/dev/own"}};
        QStringList probed;
        const PortScan scan = ScanPorts(ports, {"/dev/own"}, [&probed](const QString& name) {
            probed.append(name);
            return name == "free";
        });
        QCOMPARE(scan.names, (QStringList{"free", "busy", "link"}));
        QCOMPARE(scan.busy, QStringList{"busy"});
        QCOMPARE(probed, (QStringList{"free", "busy"}));
        QVERIFY(!ProbePort("/no/such/port"));
        QVERIFY(!ProbePort(QDir::tempPath()));
    }

    void NamesOfCapturesHoldPortAndMillisecond()
    {
        const QDateTime time(QDate(2026, 1, 5), QTime(10, 15, 30, 123));
        QCOMPARE(RawCaptureName("COM3", time), QStringLiteral("COM3_20260105101530123.bin"));
        QCOMPARE(RawCaptureName("/dev/pts/4", time), QStringLiteral("4_20260105101530123.bin"));
    }
};

QTEST_GUILESS_MAIN(TestPortList)
#include "tst_portlist.moc"
