// SPDX-License-Identifier: MIT
#include "Collector.h"
#include "Files.h"

#include <QMap>
#include <QSet>
#include <QtTest>

#include <cmath>

namespace {

/// All distinct times with a valid position, from the table that comes with the
/// captures.
const QMap<QString, int> kTimes = {
    {"ublox-zed-f9p-nmea", 29},
    {"quectelLC79D", 30},
    {"skytraq-PX1172RH_DS", 9},
    {"garmin48", 14},
    {"oncore", 7},
    {"nmea-fuzzy-cases", 14},
    {"quectel-l76k-dual", 130},
    {"telit-pls83-w", 10},
    {"gp-320fw-2019-04-07-coldboot", 2},
    {"st-teseo-liv4f", 12},
    {"bu353-glonass", 9},
    {"ublox-zed-f9t-ubx_nmea_l5", 9},
    {"ericsson-gru04-02-70sec", 71},
    {"firefly-II", 23},
    {"saab-r4", 12},
    {"tn200-all", 0},
};

/// As the table has it.
QString TimeText(const protocol::FixRecord& fix)
{
    return QString::asprintf("%02u:%02u:", fix.hour, fix.minute) +
           QString::number(fix.second, 'f', 3).rightJustified(6, '0') + 'Z';
}

void CheckFix(const protocol::FixRecord& fix, const QStringList& expected)
{
    const int split = expected[0].indexOf('T');
    QVERIFY(split < 0 ||
            QString::asprintf("%04u-%02u-%02u", fix.year, fix.month, fix.day) == expected[0].left(split));
    QVERIFY(std::abs(fix.latitude - expected[1].toDouble()) < 1e-7);
    QVERIFY(std::abs(fix.longitude - expected[2].toDouble()) < 1e-7);
    QVERIFY(expected[3] == "-" || std::abs(fix.altitude - expected[3].toDouble()) < 0.006);
}

} // namespace

class CapturesTest : public QObject {
    Q_OBJECT

private slots:
    void Figures_data()
    {
        QFile table(QStringLiteral(GNSS_CAPTURES "/expected.tsv"));
        if (!table.open(QIODevice::ReadOnly)) {
            QSKIP("no captures here");
        }
        QTest::addColumn<QStringList>("row");
        table.readLine();
        while (!table.atEnd()) {
            const QString line = QString::fromUtf8(table.readLine());
            QTest::newRow(qPrintable(line.section('\t', 0, 0))) << line.chopped(1).split('\t');
        }
    }

    void Figures()
    {
        QFETCH(QStringList, row);
        const QString name = row[0];
        const QByteArray bytes = Content(QStringLiteral(GNSS_CAPTURES "/") + name + ".log");
        QCOMPARE(bytes.size(), row[1].toInt());
        Link link;
        Collector& got = link.got;
        link.Say(bytes);

        QCOMPARE(link.codec.Counters().bytes, quint64(bytes.size()));
        const auto whole = [](const QByteArray& sentence) { return sentence.size() <= 125; };
        QCOMPARE(int(std::count_if(got.whole.begin(), got.whole.end(), whole)), row[2].toInt());
        QCOMPARE(int(link.codec.Counters().checksumErrors), row[3].toInt());

        // What the capture completes is out by itself; one capture stops inside a
        // cycle.
        const int inside = name == "telit-pls83-w" ? 1 : 0;
        QCOMPARE(got.Fixes(true).size(), kTimes.value(name) - inside);
        link.codec.EndOfInput();
        QMap<QString, protocol::FixRecord> times;
        for (const protocol::FixRecord& fix : got.Fixes(true)) {
            QVERIFY2(!times.contains(TimeText(fix)), "a time twice");
            times[TimeText(fix)] = fix;
        }
        QCOMPARE(times.size(), kTimes.value(name, -1));
        QVERIFY(times.size() >= row[4].toInt());
        // An epoch without a position gives no point for the track.
        QVERIFY(got.Count(protocol::CB_POSITION) >= times.size() &&
                got.Count(protocol::CB_POSITION) <= got.Count(protocol::CB_DATA));
        QCOMPARE(got.Count(protocol::CB_KPI_POSITION), times.size());
        QCOMPARE(got.Count(protocol::CB_FIRST_FIX), times.isEmpty() ? 0 : 1);
        // The figures of another decoder leave some epochs out, so they are looked
        // up by their time.
        for (int column = 5; column < 13 && !times.isEmpty(); column += 4) {
            const QString time = row[column].mid(row[column].indexOf('T') + 1);
            QVERIFY2(times.contains(time), qPrintable(time));
            CheckFix(times[time], row.mid(column, 4));
        }

        const auto satPos = got.Last<protocol::SatPosRecord>(protocol::CB_SAT_POS);
        QMap<char, QSet<int>> directions;
        for (int i = 0; i < satPos.count; ++i) {
            const protocol::SatPosEntry& entry = satPos.entry[i];
            directions[entry.constellation].insert(entry.svid);
            QVERIFY(entry.elevation <= 90 && entry.azimuth < 360);
        }
        QStringList parts; // in the order of the letters
        for (auto it = directions.cbegin(); it != directions.cend(); ++it) {
            parts.append(QLatin1Char(it.key()) + QString::number(it.value().size()));
        }
        QCOMPARE(parts.join(' '), row.value(14));
        QCOMPARE(int(satPos.count), row[13].toInt());

        // Each slot stands in the capture, behind the one before it, and only a cut
        // one lacks a line end.
        QVERIFY(!got.overfull);
        QCOMPARE(got.slots_.size(), got.whole.size());
        int from = 0;
        for (const QByteArray& slot : got.slots_) {
            const int at = bytes.indexOf(slot, from);
            QVERIFY2(at >= 0 && (slot.endsWith('\n') || slot.size() == 127), slot.constData());
            from = at + slot.size();
        }
    }
};

QTEST_GUILESS_MAIN(CapturesTest)
#include "tst_captures.moc"
