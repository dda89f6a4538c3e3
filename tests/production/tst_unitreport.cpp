#include "LogCatcher.h"

#include "production/UnitFiles.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>

#include <csignal>
#include <random>
#include <utility>

namespace {

const QDateTime ended(QDate(2026, 1, 5), QTime(10, 15, 30, 123));

UnitRecord Unit()
{
    UnitRecord unit;
    unit.productNumber = "PN%1";
    unit.windowTitle = "产测视图2";
    unit.resultText = "PASS通过";
    unit.passed = true;
    unit.ttffMs = 12999;
    unit.gpsMaxCn0 = 44;
    unit.nonGpsMaxCn0 = 47;
    unit.gpsSvCount = 9;
    unit.nonGpsSvCount = 21;
    unit.gpsThreshold = 40;
    unit.nonGpsThreshold = 38;
    unit.timeoutSeconds = 60;
    unit.delaySeconds = 5;
    return unit;
}

/// A raw log and the report made of it, without its own lines.
QStringList Copied(const QByteArray& raw)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("raw.bin"));
    if (!file.open(QIODevice::WriteOnly) || file.write(raw) != raw.size()) {
        return {"not written"};
    }
    file.close();
    const QString report = folder.filePath("report.txt");
    if (!WriteUnitReport(report, Unit(), file.fileName(), ended)) {
        return {"no report"};
    }
    QFile written(report);
    if (!written.open(QIODevice::ReadOnly)) {
        return {"not read"};
    }
    QStringList lines = QString::fromUtf8(written.readAll()).split('\n');
    return lines.mid(5, lines.size() - 9);
}

} // namespace

class TestUnitReport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir(QCoreApplication::applicationDirPath() + "/ProductTest").removeRecursively(); }

    void RowsNamesAndLinesHaveTheirForms()
    {
        UnitRecord unit = Unit();
        QCOMPARE(UnitReport::CsvRow(unit), QStringLiteral("PN%1,44,47,9,21,12,PASS,0,0,40,NA,60,NA,\n"));
        QCOMPARE(UnitReport::TableRow(unit),
                 (QStringList{"PN%1", "44", "47", "9", "NA", "12.00", "PASS", "0", "0"}));
        QCOMPARE(UnitReport::ReportName(unit, ended),
                 QStringLiteral("PN%1[2026-01-05-10-15-30-123][PASS通过]产测视图2.txt"));
        QCOMPARE(UnitReport::CsvName(ended), QStringLiteral("ProductTestRslt_20260105101530123.csv"));
        QCOMPARE(UnitReport::Head(unit, ended).at(3), QStringLiteral("如下是产品编号 PN%1的测试数据。"));

        unit.productNumber.clear();
        unit.passed = false;
        unit.ttffMs = 0;
        unit.needGps = false;
        unit.needNonGps = true;
        unit.delayed = true;
        QCOMPARE(UnitReport::CsvRow(unit), QStringLiteral(",44,47,9,21,NA,FAILED,0,0,NA,38,60,5,\n"));
        QCOMPARE(UnitReport::TableRow(unit), (QStringList{"", "44", "47", "NA", "21", "NA", "FAILED", "0", "0"}));
        QVERIFY(UnitReport::ReportName(unit, ended).startsWith("NA[2026"));
        QCOMPARE(
            UnitReport::Head(unit, ended),
            (QStringList{"2026/01/05 10:15:30.123",
                         "当前系统配置的GPS CN0载造比允收值(dB)设定为：40，且GPS通道测试配置为False；"
                         "BDS/GLONASS CN0载造比允收值(dB)设定为：40； 且BDS/GLONASS通道测试配置为True",
                         "测试定位的时间设置为：60 秒。", "如下是产品编号 NA的测试数据。", QString(53, '*')}));
        QCOMPARE(UnitReport::Tail(unit, ended),
                 (QStringList{"经测试，产品的定位时间 TTFF = 0.00 秒",
                              "在当前信号输入环境和测试阈值的设置下，软件部分的测试结论为： PASS通过",
                              "2026/01/05 10:15:30.123"}));
        unit.ttffMs = 999; // less than a second is a time all the same
        QVERIFY(UnitReport::CsvRow(unit).contains(",21,0,FAILED,"));
        QCOMPARE(UnitReport::TableRow(unit).at(5), QStringLiteral("0.00"));
    }

    void OnlySentencesAreCopied()
    {
        const QByteArray gga = "$GNGGA,120001.900,4723.86210,N,00832.73504,E,1,40,0.41,408.84,M,0.0,M,,*7B";
        const auto one = [](const QByteArray& line) { return QStringList{QString::fromLatin1(line)}; };
        QCOMPARE(Copied(gga + "\r\n" + gga + "\n" + gga), one(gga) + one(gga) + one(gga));
        QCOMPARE(Copied("noise " + gga + "\r\n"), one("noise " + gga));
        // Binary bytes before the sentence, with and without a letter that is found first.
        QCOMPARE(Copied(QByteArray("\x7e\x04\x00\xff", 4) + gga + "\r\n"), one(gga));
        QCOMPARE(Copied(QByteArray("\x7eG\x01", 3) + gga + "\r\n"), one(gga));
        QCOMPARE(Copied(gga + QByteArray("\0\x01\x02\r\n", 5)), one(gga));
        QCOMPARE(Copied(QByteArray("\xff\xfe", 2) + gga + "\r\n"), one(gga));
        QCOMPARE(Copied("$PNSTA,231741.000,COLD,1.9*77\r\n"), one("$PNSTA,231741.000,COLD,1.9*77"));
        // The first G lies behind the talker, or at the very beginning, or there is no letter at all.
        for (const QByteArray& skipped :
             {QByteArray("$BDGSV,1,1,01,21*76"), QByteArray("GPGGA,1,2*33"), QByteArray("$BDXYZ,1,2,3*11"),
              QByteArray("G$GPGGA,1,2*33"), QByteArray("$GNGGA,12*7B1"), QByteArray("$GN,*7B"),
              QByteArray("$GNGGA,1_2*7B"), QByteArray("$GNGGA,12*"), QByteArray()}) {
            QCOMPARE(Copied(skipped + "\r\n"), QStringList());
        }
        QCOMPARE(Copied(""), QStringList());
    }

    void TheFilterIsTheRegularExpression()
    {
        const QRegularExpression expression("\\$[A-Za-z.,0-9-]{4,256}\\*[0-9A-Za-z]{1,2}$");
        std::mt19937 random(3);
        const char letters[] = "GP,1.-*A*$";
        int found = 0;
        for (int i = 0; i < 200000; ++i) {
            QByteArray line = i % 2 == 0 ? "$G" : "";
            const int length = i % 1000 == 0 ? 262 : static_cast<int>(random() % 24);
            for (int j = 0; j < length; ++j) {
                line += i % 1000 == 0 ? '1' : letters[random() % (sizeof letters - 1)];
            }
            line += i % 1000 == 0 ? QByteArray(static_cast<int>(random() % 3), '1') + "*1" : QByteArray();
            int letter = line.indexOf('G');
            letter = letter < 0 ? line.indexOf('P') : letter;
            const bool expected =
                letter > 0 && expression.match(QString::fromLatin1(line.mid(letter - 1))).hasMatch();
            QCOMPARE(!ReportLine(line).isEmpty(), expected);
            found += expected;
        }
        QVERIFY2(found > 300, qPrintable(QString::number(found)));
    }

    void RowsGoToOneFileWithOneHeader()
    {
        const QString path = NewResultPath(ended);
        QVERIFY(path.startsWith(QCoreApplication::applicationDirPath() + "/ProductTest/ProductTestRslt_"));
        QVERIFY(AppendResultRow(path, Unit(), true));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray one = file.readAll();
        const QByteArray row = UnitReport::CsvRow(Unit()).toUtf8();
        QCOMPARE(one, QByteArray("PN, Cn0(GPS), Cn0(NonGPS), SVs(GPS), SVs(NonGPS), TTFF,Result, MES, Log, "
                                 "GpsCn0(Th), NonGpsCn0(Th), TTFF(Th), Delay\n") +
                          row);
        // Another window in the same millisecond has a file of its own.
        QVERIFY(NewResultPath(ended) != path);

        // A disk with room for half a row: no half is left, and the next row stands on a line of its own.
        const LogCatcher log;
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit room = {};
        getrlimit(RLIMIT_FSIZE, &room);
        const rlim_t before = std::exchange(room.rlim_cur, static_cast<rlim_t>(one.size() + row.size() / 2));
        setrlimit(RLIMIT_FSIZE, &room);
        const bool written = AppendResultRow(path, Unit(), false);
        room.rlim_cur = before;
        setrlimit(RLIMIT_FSIZE, &room);
        QVERIFY(!written);
        QCOMPARE(LogCatcher::Lines().size(), 1);
        QVERIFY(AppendResultRow(path, Unit(), false));
        file.seek(0);
        QCOMPARE(file.readAll(), one + row);
    }

    void FilesThatCannotBeWrittenAreTold()
    {
        const LogCatcher log;
        UnitRecord unit = Unit();
        for (const QString& number : {QStringLiteral("a/b"), QString(300, 'x')}) {
            unit.productNumber = number;
            LogCatcher::Lines().clear();
            QVERIFY(!WriteUnitReport(NewReportPath(unit, ended), unit, "/nowhere", ended));
            QCOMPARE(LogCatcher::Lines(), QStringList{ReportFailureText()});
        }
        unit.productNumber = "产品一号";
        LogCatcher::Lines().clear();
        const QString path = NewReportPath(unit, ended);
        QVERIFY(WriteUnitReport(path, unit, "/nowhere", ended));
        QCOMPARE(LogCatcher::Lines(),
                 QStringList{"Production test report generation failed: NMEA file could not be opened"});
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll().count('\n'), 8);
    }
};

QTEST_GUILESS_MAIN(TestUnitReport)
#include "tst_unitreport.moc"
