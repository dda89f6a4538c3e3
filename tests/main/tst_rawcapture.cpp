#include "LogCatcher.h"
#include "main/RawCapture.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QtTest>

class TestRawCapture : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void NamesHoldPortAndMillisecond()
    {
        const QDateTime time(QDate(2026, 1, 5), QTime(10, 15, 30, 123));
        QCOMPARE(RawCaptureName("COM3", time), QStringLiteral("COM3_20260105101530123.bin"));
        QCOMPARE(RawCaptureName("/dev/pts/4", time), QStringLiteral("4_20260105101530123.bin"));
    }

    void AChosenDirectoryLeavesTheDefaultUnmade()
    {
        const QString base = QCoreApplication::applicationDirPath() + "/GnssData";
        QVERIFY(QDir(base).removeRecursively());
        const QDateTime time(QDate(2026, 1, 5), QTime(10, 15, 30, 123));
        QCOMPARE(RawCapturePath("/chosen", "COM3", time), QStringLiteral("/chosen/COM3_20260105101530123.bin"));
        QVERIFY(!QDir(base).exists());
        QCOMPARE(RawCapturePath("", "COM3", time), base + "/COM3_20260105101530123.bin");
        QVERIFY(QDir(base).exists());
    }

    void BytesAreKeptAsTheyCame()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("a.bin");
        CreateRawCapture(path);
        QVERIFY(QFile::exists(path));
        const QByteArray first = QByteArray::fromHex("00ff0d0a00efbbbf80");
        AppendRawCapture(path, first);
        AppendRawCapture(path, "$G");
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), first + "$G");
    }

    void AFileThatCannotBeMadeIsADebugLine()
    {
        QTemporaryDir folder;
        QFile blocker(folder.filePath("blocked"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const QString path = folder.filePath("blocked/a.bin");
        const LogCatcher log;
        CreateRawCapture(path);
        AppendRawCapture(path, "x");
        QCOMPARE(log.Lines(), QStringList{"Create GnssData file failed!"});
    }
};

QTEST_GUILESS_MAIN(TestRawCapture)
#include "tst_rawcapture.moc"
