// SPDX-License-Identifier: MIT
#include "Files.h"
#include "LogCatcher.h"

#include "bridge/ClassGnss.h"
#include "performance/KpiConfig.h"
#include "performance/KpiFixTexts.h"
#include "performance/KpiResultFile.h"
#include "performance/KpiSatellites.h"
#include "performance/KpiStatistics.h"

#include <limits>
#include <numeric>

namespace {

QByteArray Entry(char letter, int group, int used, int cn0)
{
    const char bytes[4] = {letter, static_cast<char>(group), static_cast<char>(used), static_cast<char>(cn0)};
    return QByteArray(bytes, 4);
}

/// Takes a record of its count and its entries.
bool Take(KpiSatellites& satellites, int count, const QByteArray& entries)
{
    const QByteArray record = static_cast<char>(count) + entries;
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
    void PercentilesAreElements()
    {
        const int rows[][3] = {{1, 1, 1},    {2, 1, 1},    {3, 2, 2},    {10, 6, 9},
                               {20, 13, 19}, {25, 17, 23}, {100, 68, 95}};
        for (const auto& row : rows) {
            std::vector<double> samples(static_cast<std::size_t>(row[0]));
            std::iota(samples.begin(), samples.end(), 1.0);
            const std::array<double, 4> expected = {double(row[1]), double(row[2]), double(row[0]),
                                                    (row[0] + 1) / 2.0};
            QVERIFY2(KpiSummary(samples) == expected, qPrintable(QString::number(row[0])));
        }
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
        QCOMPARE(KpiTtffSeconds(start, start.addMSecs(1234)), float(1234) / 1000.0f - 0.12f);
        // A clock that was set back wraps in 32 bits.
        QVERIFY(KpiTtffSeconds(start, start.addMSecs(-1)) > 4294000.0f);
    }

    void SamplesStaySorted()
    {
        constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
        KpiStatistics statistics;
        for (const double metres : {3.0, notANumber, 1.0, notANumber, 2.0}) {
            statistics.AddCep(KpiTestMode::Hot, metres);
        }
        const std::vector<double>& sorted = statistics.Cep(KpiTestMode::Hot);
        QVERIFY(sorted[0] == 1.0 && sorted[1] == 2.0 && sorted[2] == 3.0 && std::isnan(sorted[3] + sorted[4]));
        QVERIFY(statistics.Cep(KpiTestMode::Cold).empty());
    }

    void TheErrorIsHorizontal()
    {
        ClassGnss::InitGnssUtils();
        // A thousandth of a degree of latitude and of longitude at 60 degrees, 500 m too high.
        const double north = KpiHorizontalError({60.0, 8.0, 0.0}, {60.001, 8.0, 500.0});
        const double east = KpiHorizontalError({60.0, 8.0, 0.0}, {60.0, 8.001, 500.0});
        ClassGnss::UnloadCodec();
        QVERIFY2(std::abs(north - 111.41) < 0.02, qPrintable(QString::number(north)));
        QVERIFY2(std::abs(east - 55.80) < 0.02, qPrintable(QString::number(east)));
    }

    void TheLatestFix()
    {
        protocol::KpiFixRecord fix = {-0.5, 47.39771234567, -3.456, 2026, 3, 4, 5, 6, 0, 7.25, 1.005f, 123.4567f};
        const KpiFixTexts texts = KpiTextsOf(fix);
        QCOMPARE(
            (QStringList{texts.longitude, texts.latitude, texts.altitude, texts.date, texts.time, texts.speed,
                         texts.hdop}),
            (QStringList{"0.50000000W", "47.39771235N", "-3.46m", "2026-3-4", "5:6:7.25", "1.00m/s", "123.457"}));
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
        QCOMPARE(add(1, 45, 0), (40 + 30 + 45) / 10);
        QCOMPARE(stat.used, quint8(2));
        for (const int cn0 : {50, 50, 50}) {
            add(0, cn0);
        }
        QCOMPARE(add(2, 25), (45 + 25) / 10); // five samples in group 0: it no longer counts
        for (int i = 0; i < 8; ++i) {
            add(1 + i % 2, 1);
        }
        // Only the new group counts, behind three that add nothing.
        QCOMPARE(add(3, 44), 44 / 5);
        // Eight bits: 4 * 60 + 3 * 60 wraps.
        groups.clear();
        for (int group = 0; group < 7; ++group) {
            add(group, 60);
        }
        QCOMPARE(int(stat.top5), (7 * 60 % 256) / 35);
    }

    void TheSatelliteTable()
    {
        const LogCatcher log;
        KpiSatellites satellites;
        QVERIFY(Take(satellites, 5,
                     Entry('G', 0, 1, 40) + Entry('G', 0, 0, 30) + Entry('C', 0, 1, 42) + Entry('S', 0, 1, 33) +
                         Entry('J', 0, 0, 0)));
        QCOMPARE(log.Lines(), QStringList("not support sat is %s S"));
        QCOMPARE(Shown(satellites, 0), QString("2 1 40"));
        QCOMPARE(Shown(satellites, 1), QString("1 1 42"));
        QCOMPARE(Shown(satellites, 2), QString());
        QCOMPARE(Shown(satellites, 4), QString("1 0 0"));
        QCOMPARE(satellites.Count(), 5);
        QCOMPARE(satellites.UsedCount(), 3);
        QCOMPARE(int(satellites.Top5()), 41); // a column of 0 is not counted

        // What is missing from a record keeps its cells and counts on.
        QVERIFY(Take(satellites, 1, Entry('E', 0, 1, 20)));
        QCOMPARE(Shown(satellites, 0), QString("2 1 40"));
        QCOMPARE(int(satellites.Top5()), (40 + 42 + 20) / 3);

        // The used flag behind the last entry is looked at.
        Take(satellites, 1, Entry('G', 0, 0, 40) + Entry('G', 0, 7, 40));
        QCOMPARE(satellites.UsedCount(), 1);
        QCOMPARE(Shown(satellites, 0), QString("1 0 40"));

        satellites.ClearShown();
        QVERIFY(!Take(satellites, 1, Entry('G', 0, 1, 0))); // no CN0 at all: the totals stay
        QVERIFY(!Take(satellites, 0, QByteArray()));
    }

    void RecordsThatLie()
    {
        const LogCatcher log;
        KpiSatellites satellites;
        Take(satellites, 255, Entry('G', 0, 1, 40));
        QCOMPARE(satellites.Count(), 1);
        satellites.Take("", 0);
        QCOMPARE(satellites.Count(), 0);
        Take(satellites, 255, QByteArray(4 * 255, 'G') + QByteArray(100, '\1'));
        QCOMPARE(satellites.Count(), 255);
        QCOMPARE(satellites.UsedCount(), 256);
        // The sums have eight bits.
        satellites.ClearShown();
        QVERIFY(Take(satellites, 2, Entry('G', 0, 1, 200) + Entry('C', 0, 1, 100)));
        QCOMPARE(int(satellites.Top5()), (300 % 256) / 2);
    }

    void NumbersOfTheForm()
    {
        const KpiTestConfig config = ParseKpiConfig({"", "", "", "4294967295", "65537", "-1", "1e2", //
                                                     "", "", "", "99999999999", "", "0x10", "65535"});
        QCOMPARE((QList<quint32>{config.coldNum, config.coldTimeout, config.coldInr, config.coldTrkTime,
                                 config.hotNum, config.hotTimeout, config.hotInr, config.hotTrkTime}),
                 (QList<quint32>{4294967295u, 1, 0, 0, 0, 0, 0, 65535}));
    }

    void TheConfigurationIsReadByPlace()
    {
        QByteArray file = "[TestCfg]\n";
        for (int i = 0; i < 14; ++i) {
            file += QByteArray("k") + char('a' + i) + "=" + (i == 2 ? "1, 2" : QByteArray::number(i)) + "\n";
        }
        WriteFile("Config.ini", file);
        const KpiConfigTexts expected = {"0", "1", "4",  "3",  "5",  "1,2", "6",
                                         "7", "8", "11", "10", "12", "9",   "13"};
        KpiConfigTexts texts;
        QVERIFY(LoadKpiConfig(texts));
        QCOMPARE(texts, expected);
        // A key too many or too few, or no group at all: nothing is taken.
        for (const QByteArray& bad : {file + "kz=1\n", QByteArray(file).remove(10, 5), QByteArray("\xff\0[", 3)}) {
            WriteFile("Config.ini", bad);
            QVERIFY(!LoadKpiConfig(texts));
            QCOMPARE(texts, expected);
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
    }
};

QTEST_GUILESS_MAIN(TestKpiRules)
#include "tst_rules.moc"
