// SPDX-License-Identifier: MIT
#include "LogFolder.h"
#include "base/GnssSaveData.h"
#include "base/WorkingLogs.h"

#include <QDateTime>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

// "[hh:mm:ss] " and the line end.
constexpr int kEntryOverhead = 12;

/// A file is named by the second: two logs are only told apart in different ones.
void WaitForNextSecond()
{
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    while (QDateTime::currentSecsSinceEpoch() == second) {
        QTest::qWait(10);
    }
}

} // namespace

class TestSaveData : public QObject {
    Q_OBJECT

private slots:
    void NamesTheLogByItsFolderAndTime();
    void WritesEveryByteAsItIs();
    void RollsOnlyAboveTheLimit();
    void RollsOnWithoutTheArchiver();
    void LosesWhatCannotBeWritten();
    void ClearingSparesOpenLogs();
};

void TestSaveData::NamesTheLogByItsFolderAndTime()
{
    const LogFolder folder;
    GnssSaveData log;
    log.SetLogName("package");
    const QDateTime before = QDateTime::currentDateTime();
    log.OpenLog();
    const QStringList names = folder.Files("GnssData/logs/package");
    QCOMPARE(names.size(), 1);
    QVERIFY(QRegularExpression("^log_[0-9]{14}\\.txt$").match(names[0]).hasMatch());
    const QDateTime named = QDateTime::fromString(names[0].mid(4, 14), "yyyyMMddhhmmss");
    QVERIFY(before.secsTo(named) >= -1 && before.secsTo(named) <= 5);

    log.Write(nullptr, 5);
    log.Write("x", 0);
    const QString path = folder.Path("GnssData/logs/package/" + names[0]);
    QCOMPARE(LogFolder::Content(path), QByteArray());
    log.Write("one", 3);
    const QByteArray content = LogFolder::Content(path);
    QVERIFY(QRegularExpression("^\\[[0-9]{2}:[0-9]{2}:[0-9]{2}\\] one\n$").match(content).hasMatch());
}

void TestSaveData::WritesEveryByteAsItIs()
{
    QByteArray all;
    for (int i = 0; i < 256; ++i) {
        all += static_cast<char>(i);
    }
    for (const QByteArray& bytes :
         {QByteArray("$GPGGA,1*00\r\n"), QByteArray("\xff\xfe\x80\xc3"), QByteArray("\xef\xbb\xbfx\0", 5), all}) {
        const LogFolder folder;
        GnssSaveData log;
        log.SetLogName("hex");
        const QString path = log.RollLog();
        log.Write(bytes.constData(), static_cast<quint32>(bytes.size()));
        log.Write(bytes.constData(), static_cast<quint32>(bytes.size()));
        QCOMPARE(LogFolder::WithoutTimes(LogFolder::Content(path)), bytes + '\n' + bytes + '\n');
    }
}

void TestSaveData::RollsOnlyAboveTheLimit()
{
    const QString archiver = QStandardPaths::findExecutable("7zr");
    QVERIFY2(!archiver.isEmpty(), "7zr (package p7zip) is what compresses");
    const LogFolder folder;
    QVERIFY(QDir().mkpath(folder.Path("Source-Datas/bin")));
    QVERIFY(QFile::link(archiver, folder.Path("Source-Datas/bin/7zr.exe")));

    GnssSaveData log;
    QSignalSpy cleared(&log, &GnssSaveData::clearWin);
    log.SetLogName("nmea");
    const QString first = log.RollLog();
    const QByteArray block(static_cast<int>(kLogRollSize) - kEntryOverhead, 'x');
    log.Write(block.constData(), static_cast<quint32>(block.size()));
    QCOMPARE(QFileInfo(first).size(), kLogRollSize);
    QCOMPARE(cleared.count(), 0);

    WaitForNextSecond();
    log.Write("last", 4);
    QCOMPARE(cleared.count(), 1);
    const QByteArray rolled = LogFolder::Content(first);
    QCOMPARE(rolled.size(), static_cast<int>(kLogRollSize) + kEntryOverhead + 4);

    log.Write("next", 4);
    log.Write(nullptr, 0);
    QCOMPARE(cleared.count(), 1);
    const QStringList names = folder.Files("GnssData/logs/nmea");
    QCOMPARE(names.size(), 2);
    QCOMPARE(LogFolder::WithoutTimes(LogFolder::Content(folder.Path("GnssData/logs/nmea/" + names[1]))),
             QByteArray("next\n"));
    QCOMPARE(LogFolder::Content(first).size(), rolled.size());

    // Once the archiver is done, its archive holds the rolled log whole.
    const QStringList unpack{"x", "-y", "-o" + folder.Path("unpacked"), folder.Path("GnssData/logs/nmea.zip")};
    const auto unpacks = [&] {
        QProcess process;
        process.start(archiver, unpack);
        return process.waitForFinished(30000) && process.exitCode() == 0;
    };
    QTRY_VERIFY_WITH_TIMEOUT(unpacks(), 30000);
    QVERIFY(LogFolder::Content(folder.Path("unpacked/nmea/" + QFileInfo(first).fileName())) == rolled);
}

void TestSaveData::RollsOnWithoutTheArchiver()
{
    const LogFolder folder;
    GnssSaveData log;
    log.SetLogName("nmea");
    log.OpenLog();
    const QString program = QDir::currentPath() + "/Source-Datas/bin/7zr.exe";
    QTest::ignoreMessage(QtDebugMsg, qPrintable("exe file is not exists: " + program));
    const QByteArray block(static_cast<int>(kLogRollSize), 'x');
    log.Write(block.constData(), static_cast<quint32>(block.size()));
    log.Write("next", 4);
    const QString last = folder.Path("GnssData/logs/nmea/" + folder.Files("GnssData/logs/nmea").last());
    QCOMPARE(LogFolder::WithoutTimes(LogFolder::Content(last)), QByteArray("next\n"));
}

void TestSaveData::LosesWhatCannotBeWritten()
{
    const LogFolder folder;
    {
        // A file stands where the folder belongs.
        QVERIFY(folder.Put("GnssData", "in the way"));
        GnssSaveData log;
        log.SetLogName("nmea");
        log.OpenLog();
        log.Write("lost", 4);
        QVERIFY(!QFile::exists(log.RollLog()));
        log.Write("lost", 4);
        QVERIFY(QFile::remove(folder.Path("GnssData")));
    }
    {
        // The disk is full: whatever second the log is opened in, its name leads to a full device.
        const QString logs = folder.Path("GnssData/logs/hex");
        QVERIFY(QDir().mkpath(logs));
        const QDateTime now = QDateTime::currentDateTime();
        for (int second = 0; second < 20; ++second) {
            QVERIFY(QFile::link("/dev/full",
                                logs + "/log_" + now.addSecs(second).toString("yyyyMMddhhmmss") + ".txt"));
        }
        GnssSaveData log;
        QSignalSpy cleared(&log, &GnssSaveData::clearWin);
        log.SetLogName("hex");
        log.OpenLog();
        const QByteArray block(1000000, 'x');
        for (int i = 0; i < 20; ++i) {
            log.Write(block.constData(), static_cast<quint32>(block.size()));
        }
        QCOMPARE(cleared.count(), 0);
    }
}

void TestSaveData::ClearingSparesOpenLogs()
{
    const LogFolder folder;
    QVERIFY(folder.Put("GnssData/logs/nmea.zip", "archive"));
    QVERIFY(folder.Put("GnssData/logs/other/log.txt", "other"));
    for (const char* name : {"nmea", "hex", "package"}) {
        QVERIFY(folder.Put(QString("GnssData/logs/%1/log_20200101000000.txt").arg(name), "old"));
    }
    QVERIFY(folder.Put("GnssData/logs/hex/kept/log.txt", "in a folder"));

    GnssSaveData nmea;
    nmea.SetLogName("nmea");
    const QString path = nmea.RollLog();
    {
        GnssSaveData hex;
        hex.SetLogName("hex");
        hex.OpenLog();
    }
    nmea.Write("before", 6);
    ClearWorkingLogs();
    nmea.Write("after", 5);

    QCOMPARE(folder.Files("GnssData/logs/nmea"), QStringList(QFileInfo(path).fileName()));
    QCOMPARE(LogFolder::WithoutTimes(LogFolder::Content(path)), QByteArray("before\nafter\n"));
    QCOMPARE(folder.Files("GnssData/logs/hex"), QStringList());
    QCOMPARE(folder.Files("GnssData/logs/package"), QStringList());
    QCOMPARE(folder.Files("GnssData/logs"), QStringList("nmea.zip"));
    QCOMPARE(folder.Files("GnssData/logs/other"), QStringList("log.txt"));
    QCOMPARE(folder.Files("GnssData/logs/hex/kept"), QStringList("log.txt"));
}

QTEST_GUILESS_MAIN(TestSaveData)
#include "tst_savedata.moc"
