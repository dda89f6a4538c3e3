#include "LogCatcher.h"

#include "production/KpiConfig.h"
#include "production/KpiFixTexts.h"
#include "production/KpiResultFile.h"
#include "production/KpiSatellites.h"
#include "production/KpiStatistics.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QtTest>

#include <limits>
#include <numeric>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QByteArray Content(const char* name)
{
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const char* name, const QByteArray& content)
{
    QFile file(QString::fromLatin1(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// A satellite record; `tail` follows the entries.
QByteArray Record(int count, const QByteArray& entries, const QByteArray& tail = QByteArray())
{
    return QByteArray(1, static_cast<char>(count)) + entries + tail;
}

QByteArray Entry(char letter, int group, int used, int cn0)
{
    const char bytes[4] = {letter, static_cast<char>(group), static_cast<char>(used), static_cast<char>(cn0)};
    return QByteArray(bytes, 4);
}

bool Take(KpiSatellites& satellites, const QByteArray& record)
{
    return satellites.Take(record.constData(), static_cast<std::size_t>(record.size()));
}

/// "tracked used top5" of a constellation.
QString Shown(const KpiSatellites& satellites, int constellation)
{
    const KpiSatellites::Column& column = satellites.ColumnOf(constellation);
    return column.shown ? QString("%1 %2 %3").arg(column.tracked).arg(column.stat.used).arg(column.stat.top5)
                        : QString();
}

} // namespace

class TestKpiRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QFile::remove("Config.ini");
        QFile::remove("testResult.csv");
        QDir().rmdir("testResult.csv");
    }

    void PercentilesAreElements_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<double>("at68");
        QTest::addColumn<double>("at95");
        QTest::newRow("1") << 1 << 1.0 << 1.0;
        QTest::newRow("2") << 2 << 1.0 << 1.0;
        QTest::newRow("3") << 3 << 2.0 << 2.0;
        QTest::newRow("10") << 10 << 6.0 << 9.0;
        QTest::newRow("20") << 20 << 13.0 << 19.0;
        QTest::newRow("25") << 25 << 17.0 << 23.0;
        QTest::newRow("100") << 100 << 68.0 << 95.0;
    }

    void PercentilesAreElements()
    {
        QFETCH(int, count);
        QFETCH(double, at68);
        QFETCH(double, at95);
        std::vector<double> samples(static_cast<std::size_t>(count));
        std::iota(samples.begin(), samples.end(), 1.0);
        const auto summary = KpiSummary(samples);
        QCOMPARE(summary[0], at68);
        QCOMPARE(summary[1], at95);
        QCOMPARE(summary[2], double(count));
        QCOMPARE(summary[3], (count + 1) / 2.0);
    }

    void TtffInSinglePrecision()
    {
        const QDateTime start = QDateTime::fromMSecsSinceEpoch(1700000000000);
        // One value alone is exactly on the bound, and both kinds take it.
        for (int ms = 10100; ms <= 10140; ++ms) {
            const float seconds = KpiTtffSeconds(start, start.addMSecs(ms));
            QCOMPARE(seconds == 10.0f, ms == 10120);
            QCOMPARE(IsKpiTtffCounted(KpiTestMode::Cold, seconds), ms >= 10120);
            QCOMPARE(IsKpiTtffCounted(KpiTestMode::Hot, seconds), ms <= 10120);
        }
        const float expected = float(1234) / 1000.0f - 0.12f;
        QCOMPARE(KpiTtffSeconds(start, start.addMSecs(1234)), expected);
        // A clock that was set back wraps in 32 bits.
        QVERIFY(KpiTtffSeconds(start, start.addMSecs(-1)) > 4294000.0f);
    }

    void SamplesStaySortedAndTheRejectedChangeNothing()
    {
        KpiStatistics statistics;
        QVERIFY(!statistics.AddTtff(KpiTestMode::Cold, 8.0f));
        QVERIFY(!statistics.AddTtff(KpiTestMode::Hot, 12.0f));
        QVERIFY(statistics.Ttff(KpiTestMode::Cold).empty() && statistics.Ttff(KpiTestMode::Hot).empty());
        for (const double metres : {3.0, notANumber, 1.0, notANumber, 2.0}) {
            statistics.AddCep(KpiTestMode::Hot, metres);
        }
        const std::vector<double>& sorted = statistics.Cep(KpiTestMode::Hot);
        QCOMPARE(std::vector<double>(sorted.begin(), sorted.begin() + 3), (std::vector<double>{1.0, 2.0, 3.0}));
        QVERIFY(std::isnan(sorted[3]) && std::isnan(sorted[4]));
        QVERIFY(statistics.Cep(KpiTestMode::Cold).empty());
        QVERIFY(statistics.AddTtff(KpiTestMode::Hot, 1.5f));
        statistics.Clear();
        QVERIFY(statistics.Ttff(KpiTestMode::Hot).empty() && statistics.Cep(KpiTestMode::Hot).empty());
    }

    void TheLatestFix()
    {
        gnss::KpiFixRecord fix = {};
        fix.longitude = -0.5;
        fix.latitude = 47.39771234567;
        fix.altitude = -3.456;
        fix.year = 2026;
        fix.month = 3;
        fix.day = 4;
        fix.hour = 5;
        fix.minute = 6;
        fix.second = 7.25;
        fix.speed = 1.005f;
        fix.heading = 123.4567f;
        const KpiFixTexts texts = KpiTextsOf(fix);
        QCOMPARE(texts.longitude, QString("0.50000000W"));
        QCOMPARE(texts.latitude, QString("47.39771235N"));
        QCOMPARE(texts.altitude, QString("-3.46m"));
        QCOMPARE(texts.date, QString("2026-3-4"));
        QCOMPARE(texts.time, QString("5:6:7.25"));
        QCOMPARE(texts.speed, QString("1.00m/s"));
        QCOMPARE(texts.hdop, QString("123.457"));
        fix.longitude = 0.0;
        fix.latitude = -1e-12;
        QCOMPARE(KpiTextsOf(fix).longitude, QString("0.00000000E"));
        QCOMPARE(KpiTextsOf(fix).latitude, QString("0.00000000S"));
    }

    void GroupsAndTheirTop5()
    {
        SatGroupList groups;
        SatStat stat;
        const auto add = [&](int group, int cn0, int used = 1) {
            AddSatSample(groups, stat, {quint8(group), quint8(cn0), quint8(used)});
            return int(stat.top5);
        };
        QCOMPARE(add(0, 40), 40);
        QCOMPARE(add(0, 30), 40); // the same group computes nothing
        QCOMPARE(groups[0].front().cn0, quint8(30));
        QCOMPARE(add(1, 45, 0), (40 + 30 + 45) / 10);
        QCOMPARE(stat.used, quint8(2));
        for (int i = 0; i < 3; ++i) {
            add(0, 50);
        }
        QCOMPARE(add(2, 25), (45 + 25) / 10); // five samples in group 0: it no longer counts
        for (int i = 0; i < 4; ++i) {
            add(1, 1);
            add(2, 1);
        }
        // Only the new group counts, behind three that add nothing.
        QCOMPARE(add(3, 44), 44 / 5);
        // Eight bits: 4 * 60 + 3 * 60 wraps.
        SatGroupList many;
        SatStat wrapped;
        for (int group = 0; group < 7; ++group) {
            AddSatSample(many, wrapped, {quint8(group), 60, 0});
        }
        QCOMPARE(int(wrapped.top5), (7 * 60 % 256) / 35);
    }

    void TheSatelliteTable()
    {
        KpiSatellites satellites;
        const QByteArray entries = Entry('G', 0, 1, 40) + Entry('G', 0, 0, 30) + Entry('C', 0, 1, 42) +
                                   Entry('S', 0, 1, 33) + Entry('J', 0, 0, 0);
        {
            const LogCatcher log;
            QVERIFY(Take(satellites, Record(5, entries)));
            QCOMPARE(log.Lines(), QStringList("not support sat is %s S"));
        }
        QCOMPARE(Shown(satellites, 0), QString("2 1 40"));
        QCOMPARE(Shown(satellites, 1), QString("1 1 42"));
        QCOMPARE(Shown(satellites, 2), QString());
        QCOMPARE(Shown(satellites, 4), QString("1 0 0"));
        QCOMPARE(satellites.Count(), 5);
        QCOMPARE(satellites.UsedCount(), 3);
        QCOMPARE(int(satellites.Top5()), 41); // a column of 0 is not counted

        // What is missing from a record keeps its cells and counts on.
        QVERIFY(Take(satellites, Record(1, Entry('E', 0, 1, 20))));
        QCOMPARE(Shown(satellites, 0), QString("2 1 40"));
        QCOMPARE(int(satellites.Top5()), (40 + 42 + 20) / 3);

        // The used flag behind the last entry is looked at.
        Take(satellites, Record(1, Entry('G', 0, 0, 40), Entry('G', 0, 7, 40)));
        QCOMPARE(satellites.UsedCount(), 1);
        QCOMPARE(Shown(satellites, 0), QString("1 0 40"));

        satellites.ClearShown();
        QVERIFY(!Take(satellites, Record(1, Entry('G', 0, 1, 0)))); // no CN0 at all: the totals stay
        QVERIFY(!Take(satellites, Record(0, QByteArray())));
    }

    void RecordsThatLie()
    {
        const LogCatcher log;
        KpiSatellites satellites;
        Take(satellites, Record(255, Entry('G', 0, 1, 40)));
        QCOMPARE(satellites.Count(), 1);
        Take(satellites, QByteArray());
        QCOMPARE(satellites.Count(), 0);
        Take(satellites, Record(255, QByteArray(4 * 255, 'G'), QByteArray(100, '\1')));
        QCOMPARE(satellites.Count(), 255);
        QCOMPARE(satellites.UsedCount(), 256);
        // The sums have eight bits.
        satellites.ClearShown();
        QVERIFY(Take(satellites, Record(2, Entry('G', 0, 1, 200) + Entry('C', 0, 1, 100))));
        QCOMPARE(int(satellites.Top5()), (300 % 256) / 2);
    }

    void NumbersOfTheForm()
    {
        KpiConfigTexts texts;
        texts[KpiColdNum] = "4294967295";
        texts[KpiColdTimeout] = "65537";
        texts[KpiColdInr] = "-1";
        texts[KpiColdTrkTime] = "1e2";
        texts[KpiHotNum] = "99999999999";
        texts[KpiHotTimeout] = "";
        texts[KpiHotInr] = "0x10";
        texts[KpiHotTrkTime] = "65535";
        const KpiTestConfig config = ParseKpiConfig(texts);
        QCOMPARE(config.coldNum, 4294967295u);
        QCOMPARE(int(config.coldTimeout), 1);
        QCOMPARE(int(config.coldInr), 0);
        QCOMPARE(int(config.coldTrkTime), 0);
        QCOMPARE(config.hotNum, 0u);
        QCOMPARE(int(config.hotTimeout), 0);
        QCOMPARE(int(config.hotInr), 0);
        QCOMPARE(int(config.hotTrkTime), 65535);
    }

    void TheConfigurationComesBack()
    {
        KpiConfigTexts saved = {"true",  "false", "true",  "1",  "2", "3,5", "",
                                "false", "true",  "false", "五", "6", "7",   "8"};
        Write("Config.ini", "[Other]\nkey=1\n");
        SaveKpiConfig(saved);
        const QByteArray file = Content("Config.ini");
        QVERIFY(file.startsWith("[TestCfg]\n"));
        QVERIFY(!file.contains("Other"));
        QVERIFY(file.contains("ColdStartTest=true\n") && file.contains("ColdStartTestTrkTime=0\n"));
        KpiConfigTexts loaded;
        QVERIFY(LoadKpiConfig(loaded));
        saved[KpiColdTrkTime] = "0";
        QCOMPARE(loaded, saved);
    }

    void TheConfigurationIsReadByPlace()
    {
        QByteArray file = "[TestCfg]\n";
        for (int i = 0; i < 14; ++i) {
            file += QByteArray("k") + char('a' + i) + "=" + (i == 2 ? "1, 2" : QByteArray::number(i)) + "\n";
        }
        Write("Config.ini", file);
        KpiConfigTexts texts;
        QVERIFY(LoadKpiConfig(texts));
        QCOMPARE(texts[KpiColdAgnss], QString("1"));
        QCOMPARE(texts[KpiColdInr], QString("1,2"));
        QCOMPARE(texts[KpiColdPgnss], QString("4"));
        QCOMPARE(texts[KpiHotTrkTime], QString("13"));
        // A key too many or too few, or no group at all: nothing is taken.
        for (const QByteArray& bad : {file + "kz=1\n", QByteArray(file).remove(10, 5), QByteArray("\xff\0[", 3)}) {
            Write("Config.ini", bad);
            const KpiConfigTexts before = texts;
            QVERIFY(!LoadKpiConfig(texts));
            QCOMPARE(texts, before);
        }
    }

    void TheResultFile()
    {
        const auto cell = [](KpiTestMode mode, int row, int column) {
            if (mode == KpiTestMode::Cold && row == KpiRowTtff) {
                return QString();
            }
            return row == KpiRowCounts && column == KpiColumnRate ? QString("66.6667%")
                                                                  : QString("%1.%2").arg(row).arg(column);
        };
        QVERIFY(SaveKpiResult(cell));
        const QByteArray header = "TestNum,FixedNum,succFixedRate,TTFF_68%,TTFF_95%,TTFF_MAX,TTFF_AVG,"
                                  "CEP_68%,CEP_95%,CEP_MAX,CEP_AVG\n";
        QCOMPARE(Content("testResult.csv"), header + "Cold Test\n2.0,2.1,66.6667%,0,0,0,0,6.0,6.1,6.2,6.3,\n" +
                                                header +
                                                "Hot Test\n2.0,2.1,66.6667%,4.0,4.1,4.2,4.3,6.0,6.1,6.2,6.3,\n");
        QFile::remove("testResult.csv");
        QDir().mkdir("testResult.csv");
        QVERIFY(!SaveKpiResult(cell));
    }
};

QTEST_GUILESS_MAIN(TestKpiRules)
#include "tst_kpirules.moc"
