// SPDX-License-Identifier: MIT
#include "tools/log/CaptureSummary.h"
#include "tools/log/FixTime.h"
#include "tools/log/IntervalStatistics.h"
#include "tools/log/LogInput.h"
#include "tools/log/LogOutput.h"
#include "tools/log/Numbers.h"
#include "tools/log/Progress.h"

#include <QFile>
#include <QtTest>

using namespace tools;

namespace {

protocol::FixRecord Fix(quint32 year, quint32 month, quint32 day, quint32 hour, quint32 minute, double second)
{
    protocol::FixRecord fix{};
    fix.year = year;
    fix.month = month;
    fix.day = day;
    fix.hour = hour;
    fix.minute = minute;
    fix.second = second;
    return fix;
}

std::string Fixed(double value, int decimals)
{
    std::string text;
    AppendFixed(text, value, decimals);
    return text;
}

} // namespace

class TestGnssLogUnits : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TimesAreCutToMilliseconds()
    {
        const auto text = [](const protocol::FixRecord& fix) { return FixTime(fix).Text(); };
        QCOMPARE(text(Fix(2026, 3, 14, 9, 26, 53.5)), std::string("2026-03-14T09:26:53.500Z"));
        QCOMPARE(text(Fix(0, 0, 0, 9, 26, 3)), std::string("T09:26:03.000Z"));
        QCOMPARE(text(Fix(0, 0, 0, 0, 0, 0)), std::string());
        QCOMPARE(text(Fix(2026, 3, 14, 9, 26, 59.9999)), std::string("2026-03-14T09:26:59.999Z"));
        QCOMPARE(text(Fix(2016, 12, 31, 23, 59, 60.5)), std::string("2016-12-31T23:59:60.500Z"));
        QCOMPARE(FixTime(Fix(2016, 12, 31, 23, 59, 60.5)).Text(false), std::string("2016-12-31T23:59:59.999Z"));
        // Every millisecond as a binary fraction.
        for (int ms = 0; ms < 60000; ++ms) {
            const int whole = ms / 1000;
            QCOMPARE(text(Fix(2026, 1, 1, 0, 0, whole + ms % 1000 / 1000.0)).substr(17, 6),
                     QTime::fromMSecsSinceStartOfDay(ms).toString("ss.zzz").toStdString());
        }
    }

    void StepsCrossDaysAndYears()
    {
        const auto step = [](const protocol::FixRecord& from, const protocol::FixRecord& to) {
            return qint64(FixTime(to).MillisecondsSince(FixTime(from)));
        };
        QCOMPARE(step(Fix(2024, 2, 28, 23, 59, 59.5), Fix(2024, 3, 1, 0, 0, 0.25)), qint64(86400750));
        QCOMPARE(step(Fix(2100, 2, 28, 23, 0, 0), Fix(2100, 3, 1, 0, 0, 0)), qint64(3600000));
        QCOMPARE(step(Fix(2026, 5, 1, 0, 0, 0), Fix(2019, 11, 30, 12, 0, 0)), qint64(-202478400000));
        // Without a date the shorter way is taken.
        QCOMPARE(step(Fix(0, 0, 0, 23, 59, 59), Fix(2026, 1, 2, 0, 0, 1)), qint64(2000));
        QCOMPARE(step(Fix(2026, 1, 2, 0, 0, 1), Fix(0, 0, 0, 23, 59, 59)), qint64(-2000));
    }

    void GapsAreMeasuredByTheUsualStep()
    {
        IntervalStatistics statistics;
        QVERIFY(statistics.Typical() == 0 && statistics.FindGaps().count == 0);
        const auto add = [&](int second, int step) {
            statistics.Add(FixTime(Fix(2026, 1, 1, 1, second / 60, second % 60)), step);
        };
        for (int i = 0; i < 100; ++i) {
            add(i, i == 1 ? 300 : 200); // one and a half times is no gap yet
        }
        for (int i = 0; i < 30; ++i) {
            add(i, 400 + (i * 7) % 30);
        }
        add(500, 3600000);
        QCOMPARE(qint64(statistics.Typical()), qint64(200));
        const IntervalStatistics::Gaps gaps = statistics.FindGaps();
        QVERIFY(gaps.count == 31 && gaps.milliseconds == 3600000 + 30 * 400 + 29 * 30 / 2);
        // The longest ones, in the order of time.
        QCOMPARE(gaps.longest.size(), IntervalStatistics::kListed);
        QCOMPARE(qint64(gaps.longest.back().milliseconds), qint64(3600000));
        for (std::size_t i = 0; i + 1 < gaps.longest.size(); ++i) {
            QVERIFY(gaps.longest[i].milliseconds >= 421 &&
                    gaps.longest[i + 1].from.MillisecondsSince(gaps.longest[i].from) > 0);
        }
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

    void NumbersNamesAndTheBar()
    {
        QCOMPARE(Fixed(-45.8775672, 8), std::string("-45.87756720"));
        QCOMPARE(Fixed(-0.0000000001, 8), std::string("0.00000000"));
        QCOMPARE(Fixed(-0.05, 2), std::string("-0.05"));
        QCOMPARE(Fixed(1e300, 0).size(), std::size_t(301));

        // Any name becomes valid text.
        QCOMPARE(JsonEscaped("a\"\\\n\x01"), std::string("a\\\"\\\\\\u000a\\u0001"));
        QCOMPARE(XmlEscaped("a<b>&\x02"), std::string("a&lt;b&gt;&amp;\xEF\xBF\xBD"));
        QCOMPARE(JsonEscaped("\xE4\xB8\xAD \xF0\x9F\x9B\xB0"), std::string("\xE4\xB8\xAD \xF0\x9F\x9B\xB0"));
        for (const char* bad : {"\xFF", "\xC0\xAF", "\xE4\xB8", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80"}) {
            const std::string text = JsonEscaped(std::string("x") + bad + "y");
            QCOMPARE(QString::fromUtf8(text.c_str()).toUtf8().toStdString(), text);
            QVERIFY(text.front() == 'x' && text.back() == 'y');
        }

        QCOMPARE(ProgressText(250000000, 500000000, 1.0, 100),
                 "[" + std::string(25, '#') + std::string(25, '.') + "]  50 %  250/500 MB  250 MB/s");
        QCOMPARE(ProgressText(5000000, 0, 0.0, 79), std::string("5 MB"));
        // A file that grows is never more than done.
        QVERIFY(ProgressText(600, 500, 1, 79).find("] 100 %") != std::string::npos);
        for (int width = 0; width < 100; ++width) {
            QVERIFY(int(ProgressText(123456789, 500000000, 0.5, width).size()) <= width);
        }
    }

    void AFileThatIsCutIsAnError()
    {
        QFile file("cut.bin");
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(1000));
        LogInput input;
        QVERIFY(input.Open("cut.bin") && input.Size() == 1000);
        char bytes[400];
        QCOMPARE(input.Read(bytes, sizeof bytes), sizeof bytes);
        QVERIFY(file.resize(500));
        QCOMPARE(input.Read(bytes, sizeof bytes), std::size_t(100));
        QVERIFY(input.Error().empty());
        QCOMPARE(input.Read(bytes, sizeof bytes), std::size_t(0));
        QCOMPARE(input.Error(), std::string("cut.bin: became shorter while it was read, at 500 of 1000 bytes"));

        // One that is removed can be read to its end.
        LogInput removed;
        QVERIFY(removed.Open("cut.bin") && file.remove());
        while (removed.Read(bytes, sizeof bytes) > 0) {
        }
        QVERIFY(removed.Error().empty() && removed.Position() == 500);
    }

    void OutputKeepsItsOrderWhateverTheSizes()
    {
        std::string expected;
        LogOutput output;
        QVERIFY(output.Open("out.bin"));
        for (const std::size_t size : {1, 1000, 262144, 262143, 2, 300000, 0, 5, 1000000}) {
            const std::string bytes(size, char('a' + expected.size() % 26));
            output.Write(bytes.data(), size);
            expected += bytes;
        }
        QFile file("out.bin");
        QVERIFY(output.Finish() && file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().toStdString() == expected);
    }
};

QTEST_GUILESS_MAIN(TestGnssLogUnits)
#include "tst_units.moc"
