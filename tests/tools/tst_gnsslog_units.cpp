#include "tools/CaptureSummary.h"
#include "tools/FixTime.h"
#include "tools/IntervalStatistics.h"
#include "tools/LogInput.h"
#include "tools/LogOutput.h"
#include "tools/Numbers.h"
#include "tools/Progress.h"
#include "tools/TrackCollector.h"

#include <QFile>
#include <QtTest>

using namespace gnsslog;

namespace {

gnss::FixRecord Fix(int year, int month, int day, int hour, int minute, double second, int mode = 1)
{
    gnss::FixRecord fix{};
    fix.year = quint32(year);
    fix.month = quint32(month);
    fix.day = quint32(day);
    fix.hour = quint32(hour);
    fix.minute = quint32(minute);
    fix.second = second;
    fix.fixMode = quint8(mode);
    return fix;
}

QString Fixed(double value, int decimals)
{
    std::string text;
    AppendFixed(text, value, decimals);
    return QString::fromStdString(text);
}

} // namespace

class TestGnssLogUnits : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TimesAreCutToMilliseconds()
    {
        QCOMPARE(FixTime(Fix(2026, 3, 14, 9, 26, 53.5)).Text(), std::string("2026-03-14T09:26:53.500Z"));
        QCOMPARE(FixTime(Fix(0, 0, 0, 9, 26, 3)).Text(), std::string("T09:26:03.000Z"));
        QCOMPARE(FixTime(Fix(0, 0, 0, 0, 0, 0)).Text(), std::string());
        QCOMPARE(FixTime(Fix(2026, 3, 14, 9, 26, 59.9999)).Text(), std::string("2026-03-14T09:26:59.999Z"));
        QCOMPARE(FixTime(Fix(2016, 12, 31, 23, 59, 60.5)).Text(), std::string("2016-12-31T23:59:60.500Z"));
        QCOMPARE(FixTime(Fix(2016, 12, 31, 23, 59, 60.5)).Text(false), std::string("2016-12-31T23:59:59.999Z"));
        // Every millisecond as a binary fraction.
        for (int ms = 0; ms < 60000; ++ms) {
            const std::string text = FixTime(Fix(2026, 1, 1, 0, 0, (ms / 1000) + (ms % 1000) / 1000.0)).Text();
            QCOMPARE(text.substr(17, 6), QStringLiteral("%1.%2")
                                             .arg(ms / 1000, 2, 10, QLatin1Char('0'))
                                             .arg(ms % 1000, 3, 10, QLatin1Char('0'))
                                             .toStdString());
        }
    }

    void StepsCrossDaysAndYears_data()
    {
        QTest::addColumn<QDateTime>("from");
        QTest::addColumn<QDateTime>("to");
        const auto at = [](const char* text) { return QDateTime::fromString(text, Qt::ISODateWithMs); };
        QTest::newRow("leap day") << at("2024-02-28T23:59:59.500Z") << at("2024-03-01T00:00:00.250Z");
        QTest::newRow("no leap day") << at("2100-02-28T23:00:00.000Z") << at("2100-03-01T00:00:00.000Z");
        QTest::newRow("year") << at("1999-12-31T23:59:59.000Z") << at("2000-01-01T00:00:00.000Z");
        QTest::newRow("back") << at("2026-05-01T00:00:00.000Z") << at("2019-11-30T12:00:00.000Z");
    }

    void StepsCrossDaysAndYears()
    {
        QFETCH(QDateTime, from);
        QFETCH(QDateTime, to);
        const auto time = [](const QDateTime& at) {
            return FixTime(Fix(at.date().year(), at.date().month(), at.date().day(), at.time().hour(),
                               at.time().minute(), at.time().second() + at.time().msec() / 1000.0));
        };
        QCOMPARE(qint64(time(to).MillisecondsSince(time(from))), from.msecsTo(to));
    }

    void WithoutADateTheShorterWayIsTaken()
    {
        const FixTime late(Fix(0, 0, 0, 23, 59, 59));
        const FixTime early(Fix(2026, 1, 2, 0, 0, 1));
        QCOMPARE(qint64(early.MillisecondsSince(late)), qint64(2000));
        QCOMPARE(qint64(late.MillisecondsSince(early)), qint64(-2000));
    }

    void GapsAreMeasuredByTheUsualStep()
    {
        IntervalStatistics statistics;
        QCOMPARE(qint64(statistics.Typical()), qint64(0));
        QCOMPARE(quint64(statistics.FindGaps().count), quint64(0));
        const auto at = [](int second) { return FixTime(Fix(2026, 1, 1, 1, second / 60, second % 60)); };
        for (int i = 0; i < 100; ++i) {
            statistics.Add(at(i), 200);
        }
        statistics.Add(at(1), 300); // one and a half times is none yet
        for (int i = 0; i < 30; ++i) {
            statistics.Add(at(i), 400 + (i * 7) % 30);
        }
        statistics.Add(at(500), 3600000);
        QCOMPARE(qint64(statistics.Typical()), qint64(200));
        const IntervalStatistics::Gaps gaps = statistics.FindGaps();
        QCOMPARE(quint64(gaps.count), quint64(31));
        QCOMPARE(qint64(gaps.milliseconds), qint64(3600000 + 30 * 400 + 29 * 30 / 2));
        QCOMPARE(gaps.longest.size(), IntervalStatistics::kListed);
        QCOMPARE(qint64(gaps.longest.back().milliseconds), qint64(3600000));
        for (std::size_t i = 0; i + 1 < gaps.longest.size(); ++i) {
            QVERIFY(gaps.longest[i].milliseconds >= 421);
            QVERIFY(gaps.longest[i + 1].from.MillisecondsSince(gaps.longest[i].from) > 0);
        }
    }

    void AnEpochThatGetsItsFixLateIsOneEpoch()
    {
        std::vector<TrackPoint> points;
        TrackCollector track([&](const TrackPoint& point) { points.push_back(point); });
        CaptureSummary summary;
        const auto take = [&](double second, int mode) {
            const gnss::FixRecord fix = Fix(2026, 1, 1, 1, 0, second, mode);
            track.OnFix(fix);
            summary.OnFix(fix);
        };
        take(0, 0);
        for (int second = 1; second <= 3; ++second) {
            take(second, 0);
            take(second, 1);
        }
        take(4, 0);
        take(5, 2);
        take(6, 0);
        track.Finish();
        QCOMPARE(quint64(summary.Epochs()), quint64(7));
        QCOMPARE(quint64(summary.Fixes()), quint64(4));
        QCOMPARE(quint64(summary.FixesOfMode(2)), quint64(1));
        QCOMPARE(quint64(summary.FixLosses()), quint64(2));
        QCOMPARE(qint64(summary.TimeToFirstFixMs()), qint64(1000));
        QList<bool> begins;
        for (const TrackPoint& point : points) {
            begins.append(point.beginsSegment);
        }
        QCOMPARE(begins, (QList<bool>{true, false, false, true}));
    }

    void SentenceTypesDoNotFillTheMemory()
    {
        CaptureSummary summary;
        for (int i = 0; i < 10000; ++i) {
            const std::string text = "$X" + std::to_string(i) + std::string(900, 'y') + ",1*00";
            summary.OnSentence(text.data(), text.size());
        }
        summary.OnSentence("$GPGGA", 6);
        QCOMPARE(summary.SentenceTypes().size(), CaptureSummary::kMostTypes);
        QCOMPARE(quint64(summary.OtherTypes()), quint64(10001 - CaptureSummary::kMostTypes));
    }

    void NumbersHaveTheirDecimals()
    {
        QCOMPARE(Fixed(-45.8775672, 8), QStringLiteral("-45.87756720"));
        QCOMPARE(Fixed(-0.0000000001, 8), QStringLiteral("0.00000000"));
        QCOMPARE(Fixed(-0.05, 2), QStringLiteral("-0.05"));
        QCOMPARE(Fixed(1e300, 0).size(), 301);
    }

    void AnyNameBecomesValidText()
    {
        QCOMPARE(JsonEscaped("a\"\\\n\x01"), std::string("a\\\"\\\\\\u000a\\u0001"));
        QCOMPARE(XmlEscaped("a<b>&\x02"), std::string("a&lt;b&gt;&amp;\xEF\xBF\xBD"));
        const std::string good = "\xE4\xB8\xAD \xF0\x9F\x9B\xB0";
        QCOMPARE(JsonEscaped(good), good);
        for (const char* bad : {"\xFF", "\xC0\xAF", "\xE4\xB8", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80"}) {
            const std::string text = JsonEscaped(std::string("x") + bad + "y");
            QCOMPARE(QString::fromUtf8(text.c_str()).toUtf8().toStdString(), text);
            QVERIFY(text.front() == 'x' && text.back() == 'y');
        }
    }

    void TheBarFitsItsTerminal()
    {
        QCOMPARE(ProgressText(250000000, 500000000, 1.0, 100),
                 std::string("[") + std::string(25, '#') + std::string(25, '.') + "]  50 %  250/500 MB  250 MB/s");
        QCOMPARE(ProgressText(5000000, 0, 0.0, 79), std::string("5 MB"));
        // A file that grows is never more than done.
        QVERIFY(QString::fromStdString(ProgressText(600, 500, 1, 79)).contains("] 100 %"));
        for (int width = 0; width < 100; ++width) {
            QVERIFY(int(ProgressText(123456789, 500000000, 0.5, width).size()) <= width);
        }
    }

    void AFileThatIsCutIsAnError()
    {
        {
            QFile file("cut.bin");
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(QByteArray(1000, 'x'));
        }
        LogInput input;
        QVERIFY(input.Open("cut.bin"));
        QCOMPARE(quint64(input.Size()), quint64(1000));
        char bytes[400];
        QCOMPARE(input.Read(bytes, sizeof bytes), sizeof bytes);
        QVERIFY(QFile::resize("cut.bin", 500));
        QCOMPARE(input.Read(bytes, sizeof bytes), std::size_t(100));
        QVERIFY(input.Error().empty());
        QCOMPARE(input.Read(bytes, sizeof bytes), std::size_t(0));
        QCOMPARE(input.Error(), std::string("cut.bin: became shorter while it was read, at 500 of 1000 bytes"));

        // One that is removed can be read to its end.
        LogInput removed;
        QVERIFY(removed.Open("cut.bin"));
        QVERIFY(QFile::remove("cut.bin"));
        while (removed.Read(bytes, sizeof bytes) > 0) {
        }
        QVERIFY(removed.Error().empty());
        QCOMPARE(quint64(removed.Position()), quint64(500));
    }

    void OutputKeepsItsOrderWhateverTheSizes()
    {
        QByteArray expected;
        LogOutput output;
        QVERIFY(output.Open("out.bin"));
        for (const int size : {1, 1000, 262144, 262143, 2, 300000, 0, 5, 1000000}) {
            const QByteArray bytes(size, char('a' + expected.size() % 26));
            output.Write(bytes.constData(), std::size_t(bytes.size()));
            expected += bytes;
        }
        QVERIFY(output.Finish());
        QFile file("out.bin");
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll() == expected);
    }
};

QTEST_GUILESS_MAIN(TestGnssLogUnits)
#include "tst_gnsslog_units.moc"
