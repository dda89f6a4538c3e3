#include "Collector.h"

#include <QDate>
#include <QDir>
#include <QMap>
#include <QSet>
#include <QtTest>

#include <cmath>

namespace {

/// All distinct times with a valid position, from the table that comes with the captures.
const QMap<QString, int> kTimes = {
    {"ublox-zed-f9p-nmea", 29},
    {"quectelLC79D", 30},
    {"skytraq-PX1172RH_DS", 9},
    {"garmin48", 14},
    {"oncore", 7},
    {"nmea-fuzzy-cases", 14},
    {"gp-320fw-2019-04-07-coldboot", 2},
    {"quectel-l76k-dual", 130},
    {"ublox-zed-f9t-ubx_nmea_l5", 9},
    {"ericsson-gru04-02-70sec", 71},
    {"telit-pls83-w", 10},
    {"st-teseo-liv4f", 12},
    {"bu353-glonass", 9},
    {"firefly-II", 23},
    {"saab-r4", 12},
    {"tn200-all", 0},
};

QString TimeText(const gnss::FixRecord& fix)
{
    return QStringLiteral("%1:%2:%3Z")
        .arg(fix.hour, 2, 10, QLatin1Char('0'))
        .arg(fix.minute, 2, 10, QLatin1Char('0'))
        .arg(fix.second, 6, 'f', 3, QLatin1Char('0'));
}

QString DateText(const gnss::FixRecord& fix)
{
    return QStringLiteral("%1-%2-%3")
        .arg(fix.year, 4, 10, QLatin1Char('0'))
        .arg(fix.month, 2, 10, QLatin1Char('0'))
        .arg(fix.day, 2, 10, QLatin1Char('0'));
}

} // namespace

class CapturesTest : public QObject {
    Q_OBJECT

private slots:
    void Figures_data();
    void Figures();
    void TextIsWhatWasReceived_data() { Figures_data(); }
    void TextIsWhatWasReceived();

private:
    void CheckFix(const gnss::FixRecord& fix, const QStringList& expected);
};

void CapturesTest::Figures_data()
{
    const QString folder = QStringLiteral(GNSS_CAPTURES);
    QFile table(folder + "/expected.tsv");
    if (!table.open(QIODevice::ReadOnly)) {
        QSKIP("no captures here");
    }
    QTest::addColumn<QStringList>("row");
    table.readLine();
    while (!table.atEnd()) {
        QStringList row = QString::fromUtf8(table.readLine()).split('\t');
        row.last() = row.last().trimmed();
        QTest::newRow(qPrintable(row.first())) << row;
    }
}

void CapturesTest::CheckFix(const gnss::FixRecord& fix, const QStringList& expected)
{
    const QString time = expected[0];
    const int split = time.indexOf('T');
    if (split >= 0) {
        QCOMPARE(DateText(fix), time.left(split));
    }
    QCOMPARE(TimeText(fix), time.mid(split + 1));
    QVERIFY(std::abs(fix.latitude - expected[1].toDouble()) < 1e-7);
    QVERIFY(std::abs(fix.longitude - expected[2].toDouble()) < 1e-7);
    if (expected[3] != "-") {
        QVERIFY(std::abs(fix.altitude - expected[3].toDouble()) < 0.006);
    }
}

void CapturesTest::Figures()
{
    QFETCH(QStringList, row);
    const QString name = row[0];
    const QByteArray bytes = ReadAll(QStringLiteral(GNSS_CAPTURES) + '/' + name + ".log");
    QCOMPARE(bytes.size(), row[1].toInt());
    Collector got;
    gnss::Codec codec(&got);
    Feed(codec, bytes);

    QCOMPARE(codec.Counters().bytes, quint64(bytes.size()));
    int counted = 0;
    for (const QByteArray& sentence : got.whole) {
        counted += sentence.size() <= 125 ? 1 : 0;
    }
    QCOMPARE(counted, row[2].toInt());
    QCOMPARE(int(codec.Counters().checksumErrors), row[3].toInt());

    // What the capture completes is out by itself; one capture stops inside a cycle.
    const int inside = name == "telit-pls83-w" ? 1 : 0;
    QCOMPARE(got.ValidFixes().size(), kTimes.value(name) - inside);
    codec.EndOfInput();
    const QVector<gnss::FixRecord> fixes = got.ValidFixes();
    QSet<QString> times;
    for (const gnss::FixRecord& fix : fixes) {
        times.insert(TimeText(fix));
    }
    QCOMPARE(fixes.size(), times.size());
    QCOMPARE(times.size(), kTimes.value(name, -1));
    QVERIFY(times.size() >= row[4].toInt());
    // An epoch without a position gives no point for the track.
    QVERIFY(got.Count(CB_POSITION) >= times.size() && got.Count(CB_POSITION) <= got.Count(CB_DATA));
    QCOMPARE(got.Count(CB_KPI_POSITION), times.size());
    QCOMPARE(got.Count(CB_FIRST_FIX), times.isEmpty() ? 0 : 1);
    if (!times.isEmpty()) {
        // The figures of another decoder leave some epochs out, so they are looked up by their time.
        for (const int column : {5, 9}) {
            const QStringList expected = row.mid(column, 4);
            const QString time = expected[0].mid(expected[0].indexOf('T') + 1);
            QVERIFY2(times.contains(time), qPrintable(time));
            for (const gnss::FixRecord& fix : fixes) {
                if (TimeText(fix) == time) {
                    CheckFix(fix, expected);
                }
            }
        }
    }

    QMap<char, QSet<int>> directions;
    for (int i = 0; i < got.satPos.count; ++i) {
        const gnss::SatPosEntry& entry = got.satPos.entry[i];
        QVERIFY2(!directions[entry.constellation].contains(entry.svid), "a satellite twice");
        directions[entry.constellation].insert(entry.svid);
        QVERIFY(entry.elevation <= 90 && entry.azimuth < 360);
    }
    QStringList parts;
    for (auto it = directions.cbegin(); it != directions.cend(); ++it) {
        parts.append(QChar::fromLatin1(it.key()) + QString::number(it.value().size()));
    }
    parts.sort();
    QCOMPARE(parts.join(' '), row.value(14));
    QCOMPARE(int(got.satPos.count), row[13].toInt());
}

void CapturesTest::TextIsWhatWasReceived()
{
    QFETCH(QStringList, row);
    const QByteArray bytes = ReadAll(QStringLiteral(GNSS_CAPTURES) + '/' + row[0] + ".log");
    Collector got;
    gnss::Codec codec(&got);
    Feed(codec, bytes);
    QVERIFY(!got.overfull);
    QCOMPARE(got.slots_.size(), got.whole.size());
    int from = 0;
    for (const QByteArray& slot : got.slots_) {
        // Each slot stands in the capture, behind the one before it, and only a cut one lacks a line end.
        const int at = bytes.indexOf(slot, from);
        QVERIFY2(at >= 0, slot.constData());
        QVERIFY(slot.endsWith('\n') || slot.size() == 127);
        from = at + slot.size();
    }
}

QTEST_GUILESS_MAIN(CapturesTest)
#include "CapturesTest.moc"
