// SPDX-License-Identifier: MIT
#include "production/EpochSignals.h"
#include "production/EpochStore.h"
#include "production/UnitJudge.h"

#include <QtTest>

#include <algorithm>
#include <iterator>
#include <random>

namespace {

using Sentences = QByteArrayList;

void Take(EpochStore& store, const std::string& sentence)
{
    const SentenceKind kind = KindOf(sentence);
    if (kind == SentenceKind::Gsv) {
        TakeGsv(store, sentence);
    } else if (kind == SentenceKind::Gsa) {
        TakeGsa(store, sentence);
    } else if (kind == SentenceKind::Gga) {
        TakeGga(store, sentence);
    }
}

/// What a store holds: "G:" and number/elevation/azimuth/CN0/signal of the satellites of a list, "G=" and mode,
/// type and numbers of those used.
QString Told(const EpochStore& store)
{
    QStringList words;
    for (std::size_t i = 0; i < kConstellations; ++i) {
        const GsvBlock& list = store.gsv[i];
        const GsaBlock& used = store.gsa[i];
        const QChar letter("GCREJ"[i]);
        if (list.valid) {
            words << letter + QString(':');
        }
        std::for_each(list.entry, list.entry + list.entries, [&words](const GsvEntry& e) {
            words << QString::asprintf("%d/%d/%d/%d/%d", e.number, e.elevation, e.azimuth, e.cn0, e.signalId);
        });
        if (used.valid) {
            words << letter + QString("=%1%2").arg(used.mode).arg(used.fixType);
        }
        std::transform(used.satellites, used.satellites + used.count, std::back_inserter(words),
                       [](int number) { return QString::number(number); });
    }
    return words.join(' ');
}

} // namespace

class TestEpoch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void FieldsHaveTheirPlaces_data()
    {
        QTest::addColumn<Sentences>("sentences");
        QTest::addColumn<QString>("told");
        const auto row = [](const char* name, const Sentences& sentences, const QString& told) {
            QTest::newRow(name) << sentences << told;
        };
        row("an empty field keeps its place",
            {"$GPGSV,2,1,07,01,56,104,42,15,,196,32,16,06,105,30,18,15,319,37,1*6C\r\n"},
            "G: 1/56/104/42/1 15/0/196/32/1 16/6/105/30/1 18/15/319/37/1");
        row("one satellite", {"$GAGSV,1,1,01,08,12,240,35,7*76\r\n"}, "E: 8/12/240/35/7");
        row("no signal id", {"$GPGSV,1,1,01,08,12,240,35*7A\r\n"}, "G: 8/12/240/35/0");
        row("an empty signal id", {"$GPGSV,1,1,01,08,12,240,35,*76\r\n"}, "G: 8/12/240/35/250");
        row("no satellite", {"$GPGSV,1,1,00,1*64\r\n"}, "G:");
        row("GLONASS", {"$GLGSV,1,1,02,65,12,240,35,,,,,1*76\r\n"}, "R: 1/12/240/35/1 0/0/0/0/1");
        const QByteArray first = "$GPGSV,3,1,9,1,0,0,41,2,0,0,42,3,0,0,43,4,0,0,44,1*00";
        const QByteArray second = "$GPGSV,3,2,9,5,0,0,45,6,0,0,46,7,0,0,47,8,0,0,48,1*00";
        const char* four = "G: 1/0/0/41/1 2/0/0/42/1 3/0/0/43/1 4/0/0/44/1";
        const QByteArray nine = QByteArray(four) + " 5/0/0/45/1 6/0/0/46/1 7/0/0/47/1 8/0/0/48/1 9/0/0/49/1";
        row("a group", {first, second, "$GPGSV,3,3,9,9,0,0,49,1*00"}, nine);
        row("a message is missing", {first, "$GPGSV,3,3,9,9,0,0,49,1*00"}, "G: 9/0/0/49/1");
        row("another total", {first, second, "$GPGSV,3,3,10,9,0,0,49,1*00"}, "G: 9/0/0/49/1");
        row("the same again", {first, first}, four);
        row("talkers",
            {"$GBGSV,1,1,1,7*00", "$BDGSV,1,1,1,8*00", "$GNGSV,1,1,1,7*00", "$G@GSV,1,1,1,7*00",
             "$G\xC1GSV,1,1,1,7*00", "$GRGSV,1,1,1,7*00", "$GQGSV,1,1,1,7*00"},
            "C: J:");
        row("by talker", {"$GPGSA,A,3,01,16,,18,,,,,,,,,0.70,0.41,0.57*01\r\n"}, "G=A3 1 16 18");
        row("GLONASS used", {"$GLGSA,A,3,66,,,,,,,,,,,,0.70,0.41,0.57*08\r\n"}, "R=A3 2");
        row("by system id", {"$GNGSA,A,3,19,21,,,,,,,,,,,0.70,0.41,0.57,4*0F\r\n"}, "C=A3 19 21");
        row("over the talker", {"$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,5*01\r\n"}, "J=A3 1");
        row("unknown",
            {"$GNGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57*01", "$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,6*01",
             "$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,*01"},
            "");
    }

    void FieldsHaveTheirPlaces()
    {
        QFETCH(Sentences, sentences);
        QFETCH(QString, told);
        EpochStore store;
        for (const QByteArray& sentence : qAsConst(sentences)) {
            Take(store, sentence.toStdString());
        }
        QCOMPARE(Told(store), told);
    }

    void GgaTakesNumbersOnly()
    {
        EpochStore store;
        Take(store, "$GNGGA,120001.900,4723.86210,S,00832.73504,W,2,40,0.41,-8.84,M,0.0,M,,*7B\r\n");
        QVERIFY(store.gga.utc == 120001.9 && store.gga.latitude == 4723.86210 && store.gga.northSouth == 'S');
        QVERIFY(store.gga.eastWest == 'W' && store.gga.quality == 2 && store.gga.altitude == -8.84F);
        Take(store, "$GNGGA,inf,,,,,0x1,,,nan*7B\r\n");
        QVERIFY(store.gga.utc == 0.0 && store.gga.quality == 0);
    }

    void TheRoomForSatellitesIsNeverLeft()
    {
        bool anyBlock = false;
        for (const int messages : {15, 255}) {
            EpochStore store;
            for (int number = 1; number <= messages; ++number) {
                Take(store, QString("$GPGSV,%1,%2,60,1,0,0,41,2,0,0,42,3,0,0,43,4,0,0,44,1*00")
                                .arg(messages)
                                .arg(number)
                                .toStdString());
            }
            QCOMPARE(SatellitesOf(store, anyBlock).size(), kMostGsvEntries);
        }
        std::mt19937 random(5);
        const char letters[] = "0123456789,,,,,,*.-+ABGLPQNRE$\r\n\0 ";
        EpochStore store;
        for (int i = 0; i < 20000; ++i) {
            std::string sentence = i % 3 == 0 ? "$GPGSV," : i % 3 == 1 ? "$GLGSA," : "$GNGGA,";
            for (unsigned j = random() % 120; j > 0; --j) {
                sentence += letters[random() % (sizeof letters - 1)];
            }
            Take(store, sentence);
            QVERIFY(SatellitesOf(store, anyBlock).size() <= kConstellations * kMostGsvEntries);
            QVERIFY(store.gsa[0].count <= kMostGsaSatellites && store.gsa[2].count <= kMostGsaSatellites);
        }
    }

    void SatellitesAreListedAndSummedUp()
    {
        EpochStore store;
        for (const char* sentence :
             {"$GAGSV,1,1,02,08,12,240,47,09,12,240,,7*76", "$GPGSV,1,1,02,01,10,100,41,30,9,9,44,1*6",
              "$GBGSV,1,1,01,21,12,240,47,1*76", "$GQGSV,1,1,01,193,12,240,30,1*76",
              "$GLGSV,1,1,01,65,12,240,12,1*76", "$GNGSA,A,3,30,,,,,,,,,,,,0.70,0.41,0.57,1*01"}) {
            Take(store, sentence);
        }
        bool anyBlock = false;
        const std::vector<SatEntry> list = SatellitesOf(store, anyBlock);
        QByteArray text;
        for (const SatEntry& s : list) {
            text += s.system + QByteArray::number(s.number) + (s.used ? "+" : "-") + s.signal + ' ';
        }
        QCOMPARE(text, QByteArray("G1-L1 G30+L1 C21-B1i R1-G1 E8-E1C E9-E1C J193-L1 "));
        const EpochSignals sums = SumUp(list);
        QCOMPARE(int(sums.total.count), 6); // the one without a signal is not counted
        QVERIFY(sums.gps.count == 2 && sums.gps.strongest == 44);
        QVERIFY(sums.nonGps.count == 4 && sums.nonGps.strongest == 47 && sums.each[2].strongest == 12);
        SatellitesOf(EpochStore(), anyBlock);
        QVERIFY(!anyBlock);
    }

    void TimesAreKeptAsTheyAreMeant()
    {
        QVERIFY(!IsLaterFix(120000.0, 120000.0) && IsLaterFix(120000.1, 120000.0));
        QVERIFY(!IsLaterFix(0.0, 235959.0)); // past midnight no fix is a later one
        QCOMPARE(int(KeptTtff(70000)), 4464);
    }
};

QTEST_GUILESS_MAIN(TestEpoch)
#include "tst_epoch.moc"
