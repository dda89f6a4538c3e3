#include "main/PortList.h"

#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

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

    static QString Same(const QString& name) { return name; }

private Q_SLOTS:
    void NumbersSortByValue()
    {
        const QStringList system = {"ttyUSB10", "ttyUSB9", "ttyACM1", "ttyUSB1", "ttyS99999999999999999999",
                                    "ttyS2",    "COM10",   "COM9",    "console"};
        QCOMPARE(Names(MergePorts(system, QString(), Same)),
                 (QStringList{"COM9", "COM10", "console", "ttyACM1", "ttyS2", "ttyS99999999999999999999",
                              "ttyUSB1", "ttyUSB9", "ttyUSB10"}));
    }

    void ListedPathsComeLastByLastComponent()
    {
        QCOMPARE(Names(MergePorts({"ttyUSB1"}, "/z/port10::/b/port9:/dev/serial/by-id/a:", Same)),
                 (QStringList{"ttyUSB1", "/dev/serial/by-id/a", "/b/port9", "/z/port10"}));
    }

    void OneDeviceIsOfferedOnce()
    {
        QTemporaryDir folder;
        QFile device(folder.filePath("device"));
        QVERIFY(device.open(QIODevice::WriteOnly));
        QVERIFY(QFile::link(device.fileName(), folder.filePath("link")));
        const QString paths = folder.filePath("link") + ':' + device.fileName() + ':' + folder.filePath("link");
        QCOMPARE(Names(MergePorts({}, paths)), QStringList{device.fileName()});
        QCOMPARE(CanonicalPortPath("null"), QStringLiteral("/dev/null"));
        QCOMPARE(CanonicalPortPath("/no/such/../port"), QStringLiteral("/no/port"));
        QCOMPARE(PortFileName("/dev/pts/3"), QStringLiteral("3"));
        QCOMPARE(PortFileName("ttyUSB0"), QStringLiteral("ttyUSB0"));
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
    }

    void AProbeOfWhatIsNoPortFails()
    {
        QTemporaryDir folder;
        QVERIFY(!ProbePort(folder.filePath("missing")));
        QVERIFY(!ProbePort(folder.path()));
    }
};

QTEST_GUILESS_MAIN(TestPortList)
#include "tst_portlist.moc"
