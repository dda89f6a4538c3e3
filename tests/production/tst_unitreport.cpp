// SPDX-License-Identifier: MIT
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
    return {"PN%1", "产测视图2", "PASS通过", true, 12999, 44, 47, 9, 21, 0, 0, true, 40, false, 38, 60, false, 5};
}

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestUnitReport : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QDir(QCoreApplication::applicationDirPath() + "/ProductTest").removeRecursively(); }

    void RowsHaveTheirForms()
    {
        UnitRecord unit = Unit();
        QCOMPARE(UnitReport::CsvRow(unit), QStringLiteral("PN%1,44,47,9,21,12,PASS,0,0,40,NA,60,NA,\n"));
        QCOMPARE(UnitReport::TableRow(unit).join(' '), QStringLiteral("PN%1 44 47 9 NA 12.00 PASS 0 0"));
        unit = {"", "", "", false, 0, 44, 47, 9, 21, 0, 0, false, 40, true, 38, 60, true, 5};
        QCOMPARE(UnitReport::CsvRow(unit), QStringLiteral(",44,47,9,21,NA,FAILED,0,0,NA,38,60,5,\n"));
        QCOMPARE(UnitReport::TableRow(unit).join(' '), QStringLiteral(" 44 47 NA 21 NA FAILED 0 0"));
        unit.ttffMs = 999; // less than a second is a time all the same
        QVERIFY(UnitReport::CsvRow(unit).contains(",21,0,FAILED,"));
        QCOMPARE(UnitReport::TableRow(unit).at(5), QStringLiteral("0.00"));
    }

    void TheReportSaysItAll()
    {
        const QTemporaryDir folder;
        QFile raw(folder.filePath("raw.bin"));
        QVERIFY(raw.open(QIODevice::WriteOnly));
        const QByteArray gga = "$GNGGA,120001.900,4723.86210,N,00832.73504,E,1,40,0.41,408.84,M,0.0,M,,*7B";
        raw.write("\xff\xfe" + gga + "\r\n$BDXYZ,1,2,3*11\r\nnoise " + gga + '\n' + gga);
        raw.close();
        UnitRecord unit = Unit();
        unit.ttffMs = 0;
        unit.needGps = false;
        QString path = NewReportPath(unit, ended);
        QVERIFY(path.endsWith("/ProductTest/PN%1[2026-01-05-10-15-30-123][PASS通过]产测视图2.txt"));
        QVERIFY(WriteUnitReport(path, unit, raw.fileName(), ended));
        QByteArray text = Content(path);
        text.replace(text.size() - 24, 23, "now");
        const QByteArray expected =
            "2026/01/05 10:15:30.123\n"
            "当前系统配置的GPS CN0载造比允收值(dB)设定为：40，且GPS通道测试配置为False；"
            "BDS/GLONASS CN0载造比允收值(dB)设定为：40； 且BDS/GLONASS通道测试配置为False\n"
            "测试定位的时间设置为：60 秒。\n如下是产品编号 PN%1的测试数据。\n" +
            QByteArray(53, '*') + '\n' + gga + "\nnoise " + gga + '\n' + gga +
            "\n经测试，产品的定位时间 TTFF = 0.00 秒\n"
            "在当前信号输入环境和测试阈值的设置下，软件部分的测试结论为： PASS通过\nnow\n";
        QCOMPARE(QString::fromUtf8(text), QString::fromUtf8(expected));

        const LogCatcher log;
        unit.productNumber = "产品一号";
        path = NewReportPath(unit, ended);
        QVERIFY(WriteUnitReport(path, unit, "/nowhere", ended));
        QCOMPARE(Content(path).count('\n'), 8);
        unit.productNumber.clear();
        QVERIFY(NewReportPath(unit, ended).contains("/NA[2026"));
        QVERIFY(UnitReport::Head(unit, ended).contains("如下是产品编号 NA的测试数据。"));
        for (const QString& number : {QStringLiteral("a/b"), QString(300, 'x')}) {
            unit.productNumber = number;
            QVERIFY(!WriteUnitReport(NewReportPath(unit, ended), unit, "/nowhere", ended));
        }
        const QString failure = ReportFailureText();
        QCOMPARE(LogCatcher::Lines(),
                 (QStringList{"Production test report generation failed: NMEA file could not be opened", failure,
                              failure}));
    }

    void BinaryBytesStayOutside()
    {
        const QByteArray good = "$GPGGA,1,2*33";
        for (const QByteArray& before : {QByteArray("\x7e\x04\x00\xff", 4), QByteArray("\x7eG\x01", 3)}) {
            QCOMPARE(ReportLine(before + good), good);
        }
        QCOMPARE(ReportLine(good + QByteArray("\0\x01\x02", 3)), good);
        QCOMPARE(ReportLine("$PNSTA,2317*77"), QByteArray("$PNSTA,2317*77"));
        // The first G lies behind the talker, or at the very beginning.
        for (const char* skipped : {"$BDGSV,1,1,01,21*76", "GPGGA,1,2*33", "G$GPGGA,1,2*33", ""}) {
            QCOMPARE(ReportLine(skipped), QByteArray());
        }
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
        const QByteArray one = Content(path);
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
        QCOMPARE(Content(path), one + row);
    }
};

QTEST_GUILESS_MAIN(TestUnitReport)
#include "tst_unitreport.moc"
