#include "production/EpochSignals.h"
#include "production/EpochStore.h"
#include "production/NmeaScan.h"
#include "production/UnitJudge.h"

#include <QtTest>

#include <algorithm>
#include <cstring>
#include <random>

namespace {

enum Place { Gps, Bds, Glo, Gal, Qzs };

EpochStore Gsv(std::initializer_list<const char*> sentences)
{
    EpochStore store;
    for (const char* sentence : sentences) {
        TakeGsv(store, sentence);
    }
    return store;
}

EpochStore Gsa(const char* sentence)
{
    EpochStore store;
    TakeGsa(store, sentence);
    return store;
}

/// The scan as it is told: byte by byte.
QList<QByteArray> ScanByByte(const QByteArray& bytes)
{
    QList<QByteArray> sentences;
    QByteArray buffer;
    for (const char c : bytes) {
        if (buffer.isEmpty() && c != '$') {
            continue;
        }
        if (c == '$') {
            buffer = "$";
            continue;
        }
        buffer += c;
        if (buffer.size() <= 9) {
            continue;
        }
        if (buffer.size() > 127) {
            buffer.clear();
        } else if (buffer.endsWith("\r\n")) {
            sentences.append(buffer);
            buffer.clear();
        }
    }
    return sentences;
}

QList<QByteArray> ScanInPieces(const QByteArray& bytes, int piece)
{
    QList<QByteArray> sentences;
    NmeaBuff buff = {};
    for (int at = 0; at < bytes.size(); at += piece) {
        const char* position = bytes.constData() + at;
        const char* const end = position + std::min(piece, bytes.size() - at);
        NmeaSentence sentence;
        while (NextNmeaSentence(buff, position, end, EndsInLine, sentence)) {
            sentences.append(QByteArray(sentence.text, static_cast<int>(sentence.length)));
        }
    }
    return sentences;
}

} // namespace

class TestEpoch : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheScanFindsWhatItsTableSays()
    {
        std::mt19937 random(11);
        const char letters[] = "$\r\nGA,*0\0x";
        QByteArray bytes;
        for (int i = 0; i < 60000; ++i) {
            bytes += letters[random() % (sizeof letters - 1)];
            if (random() % 20 == 0) {
                bytes += QByteArray(static_cast<int>(random() % 130), 'y') + "\r\n";
            }
        }
        for (const int length : {8, 9, 10, 125, 126, 127, 128}) {
            bytes += '$' + QByteArray(length - 3, 'z') + "\r\n";
        }
        const QList<QByteArray> expected = ScanByByte(bytes);
        QVERIFY(expected.size() > 1000);
        for (const int piece : {1, 2, 7, 100, 60000}) {
            QCOMPARE(ScanInPieces(bytes, piece), expected);
        }
    }

    void TalkersHaveTheirConstellation()
    {
        const QByteArray table = "ECNNNNNNNNNRNNNGJ";
        for (int c = 0; c < 256; ++c) {
            const char sentence[] = {'$', 'G', static_cast<char>(c), 0};
            const int index = static_cast<signed char>(c) - 'A';
            QCOMPARE(TalkerLetter(sentence), index >= 0 && index < table.size() ? table.at(index) : 'N');
        }
        QCOMPARE(TalkerLetter("$G"), 'N');
    }

    void GsvFieldsHaveTheirPlaces()
    {
        const GsvBlock four =
            Gsv({"$GPGSV,2,1,07,01,56,104,42,15,,196,32,16,06,105,30,18,15,319,37,1*6C\r\n"}).gsv[Gps];
        QVERIFY(four.valid);
        QCOMPARE(int(four.entries), 4);
        QCOMPARE(int(four.totalMessages), 2);
        QCOMPARE(int(four.totalSatellites), 7);
        QCOMPARE(int(four.entry[1].elevation), 0);
        QCOMPARE(int(four.entry[1].azimuth), 196);
        QCOMPARE(int(four.entry[1].cn0), 32);
        QVERIFY(std::all_of(four.entry, four.entry + 4, [](const GsvEntry& e) { return e.signalId == 1; }));

        const GsvBlock one = Gsv({"$GAGSV,1,1,01,08,12,240,35,7*76\r\n"}).gsv[Gal];
        QCOMPARE(int(one.entries), 1);
        QCOMPARE(int(one.entry[0].signalId), 7);

        // Without a signal id the checksum follows the last C/N0.
        const GsvBlock old = Gsv({"$GPGSV,1,1,01,08,12,240,35*7A\r\n"}).gsv[Gps];
        QCOMPARE(int(old.entry[0].cn0), 35);
        QCOMPARE(int(old.entry[0].signalId), 0);

        QCOMPARE(int(Gsv({"$GPGSV,1,1,00,1*64\r\n"}).gsv[Gps].entries), 0);
        QVERIFY(Gsv({"$GPGSV,1,1,00,1*64\r\n"}).gsv[Gps].valid);
        QCOMPARE(int(Gsv({"$GPGSV,1,1,01,08,12,240,35,*76\r\n"}).gsv[Gps].entry[0].signalId), 250);
        for (const GsvBlock& block : Gsv({"$GNGSV,1,1,01,08,12,240,35,7*76\r\n"}).gsv) {
            QVERIFY(!block.valid);
        }
    }

    void GlonassNumbersBeginAtOne()
    {
        const GsvBlock block = Gsv({"$GLGSV,1,1,02,65,12,240,35,,,,,1*76\r\n"}).gsv[Glo];
        QCOMPARE(int(block.entry[0].number), 1);
        QCOMPARE(int(block.entries), 2);
        QCOMPARE(int(block.entry[1].number), 0); // an empty field has nothing to take off
        QCOMPARE(int(Gsa("$GLGSA,A,3,66,,,,,,,,,,,,0.70,0.41,0.57*08\r\n").gsa[Glo].satellites[0]), 2);
    }

    void GroupsGrowOnlyInOrder()
    {
        const char* first = "$GPGSV,3,1,09,01,10,100,41,02,10,100,42,03,10,100,43,04,10,100,44,1*00";
        const char* second = "$GPGSV,3,2,09,05,10,100,45,06,10,100,46,07,10,100,47,08,10,100,48,1*00";
        const char* third = "$GPGSV,3,3,09,09,10,100,49,1*00";
        QCOMPARE(int(Gsv({first, second, third}).gsv[Gps].entries), 9);
        QCOMPARE(int(Gsv({first, third}).gsv[Gps].entries), 1); // a message is missing: the earlier ones go
        QCOMPARE(int(Gsv({first, second, "$GPGSV,3,3,10,09,10,100,49,1*00"}).gsv[Gps].entries), 1);
        QCOMPARE(int(Gsv({first, first}).gsv[Gps].entries), 4);
    }

    void TheRoomForSatellitesIsNeverLeft()
    {
        EpochStore store;
        for (int number = 1; number <= 256; ++number) {
            const QByteArray sentence = "$GPGSV,255," + QByteArray::number(number) +
                                        ",60,01,10,100,41,02,10,100,42,03,10,100,43,04,10,100,44,1*00";
            TakeGsv(store, sentence.toStdString());
            QVERIFY(store.gsv[Gps].entries <= kMostGsvEntries);
        }
        bool anyBlock = false;
        EpochStore sixty;
        for (int number = 1; number <= 15; ++number) {
            const QByteArray sentence = "$GPGSV,15," + QByteArray::number(number) +
                                        ",60,11,10,100,41,12,10,100,42,13,10,100,43,14,10,100,44,1*00";
            TakeGsv(sixty, sentence.toStdString());
        }
        QCOMPARE(SatellitesOf(sixty, anyBlock).size(), kMostGsvEntries);
        TakeGsa(sixty, "$GPGSA,A,3,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22");
        QCOMPARE(std::size_t{sixty.gsa[Gps].count}, kMostGsaSatellites);
    }

    void GsaGoesByItsSystemId()
    {
        QVERIFY(Gsa("$GNGSA,A,3,19,21,,,,,,,,,,,0.70,0.41,0.57,4*0F\r\n").gsa[Bds].valid == true);
        const GsaBlock gps = Gsa("$GPGSA,A,3,01,16,,18,,,,,,,,,0.70,0.41,0.57*01\r\n").gsa[Gps];
        QCOMPARE(int(gps.count), 3);
        QCOMPARE(int(gps.satellites[2]), 18);
        QCOMPARE(gps.mode, 'A');
        QCOMPARE(int(gps.fixType), 3);
        QCOMPARE(gps.vdop, 0.57F);
        QVERIFY(Gsa("$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,5*01\r\n").gsa[Qzs].valid);
        for (const char* dropped :
             {"$GNGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57*01\r\n", "$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,6*01\r\n",
              "$GPGSA,A,3,01,,,,,,,,,,,,0.70,0.41,0.57,*01\r\n"}) {
            const EpochStore store = Gsa(dropped);
            QVERIFY(
                std::none_of(store.gsa, store.gsa + kConstellations, [](const GsaBlock& b) { return b.valid; }));
        }
    }

    void GgaIsReadWhateverTheLocale()
    {
        EpochStore store;
        TakeGga(store, "$GNGGA,120001.900,4723.86210,S,00832.73504,W,2,40,0.41,-8.84,M,0.0,M,,*7B\r\n");
        QCOMPARE(store.gga.utc, 120001.9);
        QCOMPARE(store.gga.latitude, 4723.86210);
        QCOMPARE(store.gga.northSouth, 'S');
        QCOMPARE(store.gga.eastWest, 'W');
        QCOMPARE(int(store.gga.quality), 2);
        QCOMPARE(store.gga.altitude, -8.84F);
        TakeGga(store, "$GNGGA,inf,,,,,0x1,,,nan*7B\r\n");
        QCOMPARE(store.gga.utc, 0.0);
        QCOMPARE(int(store.gga.quality), 0);
        QCOMPARE(EpochStore().gga.northSouth, 'N');
        QCOMPARE(EpochStore().gga.eastWest, 'E');
    }

    void SatellitesAreListedAndSummedUp()
    {
        EpochStore store = Gsv({"$GAGSV,1,1,02,08,12,240,47,09,12,240,,7*76",
                                "$GPGSV,1,1,02,01,10,100,41,30,9,9,44,1*6", "$GBGSV,1,1,01,21,12,240,47,1*76",
                                "$GQGSV,1,1,01,193,12,240,30,1*76", "$GLGSV,1,1,01,65,12,240,12,1*76"});
        TakeGsa(store, "$GNGSA,A,3,30,,,,,,,,,,,,0.70,0.41,0.57,1*01");
        bool anyBlock = false;
        const std::vector<SatEntry> list = SatellitesOf(store, anyBlock);
        QByteArray text;
        for (const SatEntry& s : list) {
            text += QByteArray(1, s.system) + QByteArray::number(s.number) + (s.used ? "+" : "-") + s.signal + ' ';
        }
        QCOMPARE(text, QByteArray("G1-L1 G30+L1 C21-B1i R1-G1 E8-E1C E9-E1C J193-L1 "));
        const EpochSignals sums = SumUp(list);
        QCOMPARE(int(sums.total.count), 6); // the one without a signal is not counted
        QCOMPARE(int(sums.gps.count), 2);
        QCOMPARE(int(sums.gps.strongest), 44);
        QCOMPARE(int(sums.nonGps.count), 4);
        QCOMPARE(int(sums.nonGps.strongest), 47);
        QCOMPARE(int(sums.each[Glo].strongest), 12);
        QCOMPARE(sums.bars[Gal].size(), std::size_t{2});

        SatellitesOf(EpochStore(), anyBlock);
        QVERIFY(!anyBlock);
    }

    void JudgementTakesReachingForEnough()
    {
        QCOMPARE(int(JudgeUnit({true, 40, false, 99}, 40, 0)), int(UnitVerdict::Passed));
        QCOMPARE(int(JudgeUnit({true, 40, true, 40}, 39, 39)), int(UnitVerdict::WeakGps));
        QCOMPARE(int(JudgeUnit({true, 40, true, 40}, 40, 39)), int(UnitVerdict::WeakNonGps));
        QCOMPARE(int(JudgeUnit({false, 99, false, 99}, 0, 0)), int(UnitVerdict::Passed));
        QVERIFY(!IsLaterFix(120000.0, 120000.0));
        QVERIFY(IsLaterFix(120000.1, 120000.0));
        QVERIFY(!IsLaterFix(0.0, 235959.0));
        QCOMPARE(int(KeptTtff(70000)), 4464);
    }

    void RandomSentencesAreSurvived()
    {
        std::mt19937 random(5);
        const char letters[] = "0123456789,,,,,,*.-+ABGLPQNRE$\r\n\0 ";
        EpochStore store;
        bool anyBlock = false;
        for (int i = 0; i < 20000; ++i) {
            std::string sentence = i % 3 == 0 ? "$GPGSV," : i % 3 == 1 ? "$GLGSA," : "$GNGGA,";
            const std::size_t length = random() % 120;
            for (std::size_t j = 0; j < length; ++j) {
                sentence += letters[random() % (sizeof letters - 1)];
            }
            TakeGsv(store, sentence);
            TakeGsa(store, sentence);
            TakeGga(store, sentence);
            QVERIFY(SatellitesOf(store, anyBlock).size() <= kConstellations * kMostGsvEntries);
        }
    }
};

QTEST_GUILESS_MAIN(TestEpoch)
#include "tst_epoch.moc"
