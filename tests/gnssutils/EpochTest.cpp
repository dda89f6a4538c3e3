#include "Collector.h"

#include <QtTest>

#include <cmath>

namespace {

QByteArray Gga(const QByteArray& time, int quality = 1, const QByteArray& altitude = "100.0",
               const QByteArray& latitude = "4807.038")
{
    return Sentence("GNGGA," + time + ',' + latitude + ",N,01131.000,E," + QByteArray::number(quality) +
                    ",08,0.9," + altitude + ",M,46.9,M,,");
}

QByteArray Rmc(const QByteArray& time, const QByteArray& date, char status = 'A',
               const QByteArray& course = "90.0")
{
    return Sentence("GNRMC," + time + ',' + status + ",4807.038,N,01131.000,E,10.0," + course + ',' + date +
                    ",,,A");
}

QByteArray Gsv(const QByteArray& talker, const QByteArray& satellites, const QByteArray& signal = {})
{
    return Sentence(talker + "GSV,1,1,04," + satellites + (signal.isEmpty() ? QByteArray() : ',' + signal));
}

QString When(const gnss::FixRecord& fix)
{
    return QStringLiteral("%1-%2-%3 %4:%5:%6")
        .arg(fix.year)
        .arg(fix.month)
        .arg(fix.day)
        .arg(fix.hour)
        .arg(fix.minute)
        .arg(fix.second);
}

struct Receiver {
    Receiver() : codec(&got) {}
    void Say(const QByteArray& bytes) { Feed(codec, bytes); }

    Collector got;
    gnss::Codec codec;
};

} // namespace

class EpochTest : public QObject {
    Q_OBJECT

private slots:
    void RecordsGoOutWithTheLearnedLastSentence_data();
    void RecordsGoOutWithTheLearnedLastSentence();
    void ALostSentenceCostsNoEpoch();
    void TwoTalkersAreOneEpoch();
    void ASentenceOfItsOwnTimeIsItsOwnEpoch();
    void LateFixOfAnInvalidCycle();
    void DatesAreCarriedOn();
    void LeapSecond();
    void MissingAltitudeIsTheLastKnown();
    void SignalsAndUse();
    void KpiSatellites();
    void SatelliteListsWithoutAFix();
    void CountsStayWithinTheRecords();
    void HeadingOfTheCompass();
    void StartForgetsTheUnfinishedCycle();
    void FirstFixOnceAStart();
    void ReportsStandInForSentences();
    void ReportsWithoutNumbers();
};

void EpochTest::RecordsGoOutWithTheLearnedLastSentence_data()
{
    QTest::addColumn<QByteArrayList>("order");
    const QByteArray gsa = Sentence("GNGSA,A,3,01,02,,,,,,,,,,,1.5,0.9,1.2,1");
    const QByteArray gps = Gsv("GP", "01,40,083,46,02,17,308,41", "1");
    const QByteArray gpsL5 = Gsv("GP", "01,40,083,40", "8");
    QTest::newRow("RMC last") << QByteArrayList{"GGA", gsa, gps, "RMC"};
    QTest::newRow("satellites last") << QByteArrayList{"RMC", "GGA", gsa, gps, gpsL5};
    QTest::newRow("the same group twice") << QByteArrayList{"RMC", gps, "GGA", gps};
    QTest::newRow("one sentence") << QByteArrayList{"RMC"};
    QTest::newRow("satellites first") << QByteArrayList{gps, gsa, "GGA", "RMC"};
    QTest::newRow("text behind") << QByteArrayList{"GGA", "RMC", gps, Sentence("GNTXT,01,01,02,x")};
}

void EpochTest::RecordsGoOutWithTheLearnedLastSentence()
{
    QFETCH(QByteArrayList, order);
    Receiver receiver;
    for (int second = 10; second < 20; ++second) {
        const QByteArray time = "1011" + QByteArray::number(second) + ".00";
        for (const QByteArray& step : order) {
            receiver.Say(step == "GGA" ? Gga(time) : step == "RMC" ? Rmc(time, "230394") : step);
        }
        // The first cycle is known to be over when the second begins; from then on each goes out at once. A
        // list that stands before the position belongs to the cycle before it, as far as can be told.
        const bool listFirst = !order.first().contains("GGA") && !order.first().contains("RMC");
        if (second > 10) {
            QCOMPARE(receiver.got.fixes.size(), second - (listFirst ? 10 : 9));
        }
    }
    receiver.codec.EndOfInput();
    QCOMPARE(receiver.got.fixes.size(), 10);
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(When(receiver.got.fixes[i]), QStringLiteral("1994-3-23 10:11:%1").arg(10 + i));
    }
}

void EpochTest::ALostSentenceCostsNoEpoch()
{
    Receiver receiver;
    for (int second = 10; second < 30; ++second) {
        const QByteArray time = "1011" + QByteArray::number(second);
        if (second % 4 != 1) {
            receiver.Say(Rmc(time, "230394"));
        }
        if (second % 7 != 2) {
            receiver.Say(Gga(time));
        }
        receiver.Say(Gsv("GP", "01,40,083,46"));
        if (second % 5 != 3) {
            receiver.Say(Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K"));
        }
    }
    receiver.codec.EndOfInput();
    QCOMPARE(receiver.got.fixes.size(), 20);
    for (int i = 0; i < 20; ++i) {
        QCOMPARE(receiver.got.fixes[i].second, 10.0 + i);
        QCOMPARE(receiver.got.fixes[i].year, 1994U);
    }
}

void EpochTest::TwoTalkersAreOneEpoch()
{
    Receiver receiver;
    for (const QByteArray time : {"101110", "101111", "101112"}) {
        QByteArray second = Gga(time);
        second.replace("GNGGA", "GAGGA");
        receiver.Say(Gga(time) + Sentence("GAGGA," + time + ",4807.038,N,01131.000,E,1,08,0.9,100.0,M,46.9,M,,") +
                     Sentence("GNGNS," + time + ",4807.038,N,01131.000,E,AA,08,0.9,100.0,46.9,,") +
                     Rmc(time, "230394"));
    }
    QCOMPARE(receiver.got.fixes.size(), 3);
}

void EpochTest::ASentenceOfItsOwnTimeIsItsOwnEpoch()
{
    Receiver receiver;
    for (int second = 10; second < 20; second += 2) {
        const QByteArray time = "1011" + QByteArray::number(second);
        const QByteArray next = "1011" + QByteArray::number(second + 1);
        receiver.Say(Rmc(time, "230394") + Gga(time) + Gsv("GP", "01,40,083,46") +
                     Sentence("GPGLL,4807.038,N,01131.000,E," + next + ",A"));
    }
    QCOMPARE(receiver.got.fixes.size(), 10);
    QCOMPARE(When(receiver.got.fixes.last()), QString("1994-3-23 10:11:19"));
    QCOMPARE(receiver.got.fixes.last().altitude, 100.0);
}

void EpochTest::LateFixOfAnInvalidCycle()
{
    Receiver receiver;
    for (const QByteArray time : {"101110", "101111"}) {
        receiver.Say(Gga(time, 0));
    }
    // The cycle of one GGA is over with it, and the same time brings a fix after all.
    receiver.Say(Gga("101112", 0) + Rmc("101112", "230394") + Gga("101113", 0));
    QCOMPARE(receiver.got.ValidFixes().size(), 1);
    QCOMPARE(receiver.got.ValidFixes()[0].second, 12.0);
}

void EpochTest::DatesAreCarriedOn()
{
    Receiver receiver;
    receiver.Say(Gga("235957.50"));
    // A date without a fix may come from a clock that was never set: it is not carried on.
    receiver.Say(Rmc("235958.00", "010180", 'V'));
    receiver.Say(Gga("235958.50") + Rmc("235959.00", "311223") + Gga("235959.50") + Gga("000000.00"));
    receiver.Say(Gga("000000.50") + Rmc("000001.00", "010124") + Gga("120000") + Gga("235959") + Gga("000000"));
    receiver.Say(Sentence("GPZDA,000001,28,02,2024,,") + Gga("000001") + Gga("235959") + Gga("000000"));
    receiver.Say(Sentence("GPZDA,000001,31,02,2024,,") + Gga("000001"));
    receiver.codec.EndOfInput();
    QStringList times;
    for (const gnss::FixRecord& fix : receiver.got.fixes) {
        times.append(When(fix));
    }
    QCOMPARE(times,
             (QStringList{"0-0-0 23:59:57.5", "1980-1-1 23:59:58", "0-0-0 23:59:58.5", "2023-12-31 23:59:59",
                          "2023-12-31 23:59:59.5", "2024-1-1 0:0:0", "2024-1-1 0:0:0.5", "2024-1-1 0:0:1",
                          "2024-1-1 12:0:0", "2024-1-1 23:59:59", "2024-1-2 0:0:0", "2024-2-28 0:0:1",
                          "2024-2-28 23:59:59", "2024-2-29 0:0:0", "2024-2-29 0:0:1"}));
}

void EpochTest::LeapSecond()
{
    Receiver receiver;
    receiver.Say(Rmc("235959.50", "311216") + Rmc("235960.00", "311216") + Rmc("235960.50", "311216") +
                 Rmc("000000.00", "010117") + Rmc("000000.50", "010117"));
    receiver.Say(Rmc("235961.00", "010117") + Rmc("240000.00", "010117"));
    receiver.codec.EndOfInput();
    QStringList times;
    for (const gnss::FixRecord& fix : receiver.got.fixes) {
        times.append(When(fix));
    }
    // Times that do not exist give a fix without a time.
    QCOMPARE(times.mid(0, 5), (QStringList{"2016-12-31 23:59:59.5", "2016-12-31 23:59:60", "2016-12-31 23:59:60.5",
                                           "2017-1-1 0:0:0", "2017-1-1 0:0:0.5"}));
    for (const QString& time : times.mid(5)) {
        QCOMPARE(time, QString("0-0-0 0:0:0"));
    }
}

void EpochTest::MissingAltitudeIsTheLastKnown()
{
    Receiver receiver;
    receiver.Say(Rmc("101110", "230394") + Gga("101111") + Rmc("101112", "230394") + Gga("101113", 0, "7.0") +
                 Gga("101114", 2, "") + Gga("101115", 1, "-3.5"));
    receiver.codec.EndOfInput();
    QVector<double> altitudes;
    for (const gnss::FixRecord& fix : receiver.got.fixes) {
        altitudes.append(fix.altitude);
    }
    QCOMPARE(altitudes, (QVector<double>{0, 100, 100, 100, 100, -3.5}));
}

void EpochTest::SignalsAndUse()
{
    Receiver receiver;
    receiver.Say(Gga("101110") + Sentence("GNGSA,A,3,02,33,,,,,,,,,,,1.5,0.9,1.2,1") +
                 Sentence("GNGSA,A,3,66,,,,,,,,,,,,1.5,0.9,1.2,2") +
                 Sentence("GNGSA,A,3,33,,,,,,,,,,,,1.5,0.9,1.2,3") +
                 Sentence("GNGSA,A,3,208,,,,,,,,,,,,1.5,0.9,1.2,4") +
                 Gsv("GP", "01,40,083,46,02,17,308,41,33,20,100,35", "1") + Gsv("GP", "02,17,308,38,01,,,", "8") +
                 Gsv("GP", "02,17,308,39", "1") + Gsv("GL", "66,40,075,", "1") + Gsv("GA", "33,53,047,47", "7") +
                 Gsv("BD", "08,09,030,39,21,,,49", "4") + Gga("101111"));
    QStringList signalTexts;
    for (int i = 0; i < receiver.got.cn0.count; ++i) {
        const gnss::Cn0Entry& entry = receiver.got.cn0.entry[i];
        float frequency;
        std::memcpy(&frequency, &entry.carrierFreq, sizeof frequency);
        signalTexts.append(QStringLiteral("%1%2 %3 %4 %5")
                               .arg(QChar::fromLatin1(entry.constellation))
                               .arg(entry.svid)
                               .arg(entry.cn0)
                               .arg(entry.inuseFlag)
                               .arg(double(frequency), 0, 'f', 2));
    }
    QCOMPARE(signalTexts,
             (QStringList{"G1 46 0 1575.42", "G2 41 1 1575.42", "G2 38 1 1176.45", "S120 35 1 1575.42",
                          "R2 0 1 1602.00", "E33 47 1 1575.42", "C8 39 1 1575.42", "C21 49 0 1575.42"}));
    QStringList places;
    for (int i = 0; i < receiver.got.satPos.count; ++i) {
        const gnss::SatPosEntry& entry = receiver.got.satPos.entry[i];
        places.append(QStringLiteral("%1%2 %3/%4 %5")
                          .arg(QChar::fromLatin1(entry.constellation))
                          .arg(entry.svid)
                          .arg(entry.elevation)
                          .arg(entry.azimuth)
                          .arg(entry.cn0));
    }
    QCOMPARE(places, (QStringList{"G1 40/83 46", "G2 17/308 41", "S120 20/100 35", "R2 40/75 0", "E33 53/47 47",
                                  "C8 9/30 39"}));

    const auto gsv = receiver.got.LastMessage<gnss::MsgGsv>(gnss::MsgTypeGsv);
    QCOMPARE(int(gsv.block[gnss::BlockGps].satellitesNum), 6);
    QCOMPARE(int(gsv.block[gnss::BlockGps].row[3].freq), 8);
    QCOMPARE(int(gsv.block[gnss::BlockGlo].row[0].prn), 66);
    const auto gsa = receiver.got.LastMessage<gnss::MsgGsa>(gnss::MsgTypeGsa);
    QCOMPARE(int(gsa.block[gnss::BlockGps].validPrnNum), 2);
    QCOMPARE(int(gsa.block[gnss::BlockBds].prn[0]), 208);
    QCOMPARE(gsa.block[gnss::BlockGal].vdop, 1.2F);
    QCOMPARE(int(gsa.block[gnss::BlockQzs].valid), 0);
    QCOMPARE(receiver.got.fixes[0].pdop, 1.5F);
    QCOMPARE(receiver.got.fixes[0].vdop, 1.2F);
}

void EpochTest::KpiSatellites()
{
    Receiver receiver;
    receiver.Say(Gga("101110") + Gsv("GP", "01,40,083,30,02,17,308,41,03,17,308,", "1") +
                 Gsv("GP", "01,40,083,45", "8") + Gsv("GL", "66,40,075,35", "1") + Gga("101111"));
    // Tracked first-band signals, the strongest first, and a zero behind for the reader that looks too far.
    QCOMPARE(int(receiver.got.kpiCn0.count), 3);
    QCOMPARE(int(receiver.got.kpiCn0.entry[0].cn0), 41);
    QCOMPARE(receiver.got.kpiCn0.entry[1].constellation, 'R');
    QCOMPARE(int(receiver.got.kpiCn0.entry[2].cn0), 30);
    QCOMPARE(int(receiver.got.kpiCn0.entry[3].inuseFlag), 0);
}

void EpochTest::SatelliteListsWithoutAFix()
{
    // No time and no fix: each return of the first sentence ends a cycle.
    Receiver cold;
    for (int i = 0; i < 5; ++i) {
        cold.Say(Sentence("GNRMC,,V,,,,,,,,,,N") + Sentence("GNGGA,,,,,,0,00,99.99,,,,,,") +
                 Gsv("GP", "01,40,083,30", "1"));
    }
    QCOMPARE(cold.got.Count(CB_CN0), 5);
    QCOMPARE(cold.got.Count(CB_DATA), 5);
    QCOMPARE(cold.got.ValidFixes().size(), 0);

    // The same when the sentence that used to begin the cycle has been switched off.
    Receiver changed;
    changed.Say(Gga("101110") + Gga("101111"));
    for (int i = 0; i < 5; ++i) {
        changed.Say(Sentence("GNRMC,,V,,,,,,,,,,N"));
    }
    QVERIFY(changed.got.fixes.size() >= 5);
    QCOMPARE(int(changed.got.fixes.last().fixMode), 0);

    Receiver listsOnly;
    for (int i = 0; i < 5; ++i) {
        listsOnly.Say(Gsv("GP", "01,40,083,30", "1") + Gsv("GL", "66,40,075,35", "1"));
    }
    QCOMPARE(listsOnly.got.Count(CB_CN0), 4);
    QCOMPARE(listsOnly.got.Count(CB_DATA), 0);
    QCOMPARE(int(listsOnly.got.cn0.count), 2);

    // A constellation that is no longer listed stays for one list more; a cycle without lists gives none.
    Receiver receiver;
    receiver.Say(Gga("101110") + Gsv("GP", "01,40,083,30") + Gsv("GL", "66,40,075,35"));
    receiver.Say(Gga("101111") + Gsv("GP", "01,40,083,30"));
    receiver.Say(Gga("101112") + Gsv("GP", "01,40,083,30"));
    receiver.Say(Gga("101113") + Gga("101114"));
    const QByteArrayList images = receiver.got.Images(CB_CN0);
    QCOMPARE(images.size(), 3);
    QCOMPARE(images[0].size(), 17);
    QCOMPARE(images[1].size(), 17);
    QCOMPARE(images[2].size(), 9);
}

void EpochTest::CountsStayWithinTheRecords()
{
    Receiver receiver;
    for (int signal = 1; signal <= 9; ++signal) {
        for (const QByteArray talker : {"GP", "GL", "GA", "GB", "GQ", "GI"}) {
            for (int satellite = 1; satellite <= 96; satellite += 4) {
                QByteArray body = talker + "GSV,99,99,99";
                for (int i = satellite; i < satellite + 4; ++i) {
                    body += ',' + QByteArray::number(i) + ",950,1000,990";
                }
                receiver.Say(Sentence(body + ',' + QByteArray::number(signal)));
            }
        }
    }
    receiver.Say(Gga("101110") + Gga("101111"));
    const QByteArrayList images = receiver.got.Images(CB_CN0) + receiver.got.Images(CB_SAT_POS);
    QCOMPARE(receiver.got.Images(CB_CN0).last().size(), 1 + 255 * 8);
    QCOMPARE(int(receiver.got.cn0.count), 255);
    QCOMPARE(receiver.got.Images(CB_SAT_POS).last().size(), 2 + 255 * 8);
    QCOMPARE(int(receiver.got.satPos.entry[0].elevation), 90);
    QVERIFY(receiver.got.satPos.entry[0].azimuth < 360);
    const auto gsv = receiver.got.LastMessage<gnss::MsgGsv>(gnss::MsgTypeGsv);
    for (const gnss::GsvBlock& block : gsv.block) {
        QCOMPARE(int(block.satellitesNum), int(gnss::kGsvRows));
    }
    // More sentences than a cycle can be remembered with.
    Receiver endless;
    for (int i = 0; i < 3; ++i) {
        endless.Say(Gga("1011" + QByteArray::number(10 + i)));
        for (int j = 0; j < 1000; ++j) {
            endless.Say(Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K"));
        }
    }
    QCOMPARE(endless.got.fixes.size(), 2);
}

void EpochTest::HeadingOfTheCompass()
{
    Receiver receiver;
    receiver.Say(Rmc("101110", "230394", 'A', "45.5") + Rmc("101111", "230394", 'A', ""));
    QCOMPARE(receiver.got.compass.heading, 45.5F);
    receiver.Say(Rmc("101112", "230394", 'A', ""));
    QCOMPARE(receiver.got.compass.heading, 45.5F); // standing still: the last course
    receiver.Say(Sentence("HEHDT,244.28,T") + Rmc("101113", "230394"));
    QCOMPARE(receiver.got.compass.heading, 244.28F);
    QCOMPARE(receiver.got.fixes.last().heading, 90.0F); // its own course
    receiver.Say(Sentence("GNTHS,12.0,V") + Rmc("101114", "230394"));
    receiver.codec.EndOfInput();
    QCOMPARE(receiver.got.compass.heading, 90.0F);
    QCOMPARE(int(receiver.got.compass.fixMode), 1);
}

void EpochTest::StartForgetsTheUnfinishedCycle()
{
    Receiver receiver;
    receiver.Say(Rmc("101110", "230394") + Gga("101110"));
    const QByteArray cold = Frame(gnss::CmdConstellations, QByteArray(5, '\1'), gnss::kColdStartWord);
    quint8 out[100];
    QVERIFY(receiver.codec.Encode(gnss::CmdPassThrough, cold.constData(), std::size_t(cold.size()), out,
                                  sizeof out) > 0);
    // The rest of the old cycle and the first ones of the new life without a fix: nothing counts as a fix.
    receiver.Say(Sentence("GPGLL,4807.038,N,01131.000,E,101110,A") + Gga("101111", 0) + Gga("101112", 0));
    QCOMPARE(receiver.got.Count(CB_FIRST_FIX), 0);
    QCOMPARE(receiver.got.Count(CB_KPI_POSITION), 0);
    QCOMPARE(receiver.got.fixes.last().altitude, 0.0);
    receiver.Say(Gga("101113") + Gga("101114"));
    QCOMPARE(receiver.got.Count(CB_FIRST_FIX), 1);
}

void EpochTest::FirstFixOnceAStart()
{
    Receiver receiver;
    int second = 10;
    const auto run = [&] {
        for (int i = 0; i < 4; ++i) {
            receiver.Say(Gga("1011" + QByteArray::number(second++)));
        }
    };
    run();
    QCOMPARE(receiver.got.Count(CB_FIRST_FIX), 1);
    run();
    QCOMPARE(receiver.got.Count(CB_FIRST_FIX), 1);
    quint8 out[100];
    const QByteArray payload(12, '\0');
    struct Command {
        quint32 id;
        QByteArray payload;
        bool arms;
    };
    const QByteArray start = Frame(gnss::CmdStart, payload, gnss::kStartWord);
    const Command commands[] = {
        {gnss::CmdStart, payload, true},
        {gnss::CmdPassThrough, start, true},
        {gnss::CmdPassThrough, "AT+GNSSSTART=1,1,1,0\r\n", true},
        {gnss::CmdPassThrough, "AT+GNSSHEX=" + start.toHex() + "\r\n", true},
        {gnss::CmdPassThrough, Frame(gnss::CmdConstellations, QByteArray(5, '\1'), gnss::kHotStartWord), true},
        {gnss::CmdConstellations, QByteArray(5, '\1'), false},
        {gnss::CmdStop, {}, false},
        {gnss::CmdPassThrough, "AT+GNSSSTOP\r\n", false},
    };
    int expected = 1;
    for (const Command& command : commands) {
        QVERIFY(receiver.codec.Encode(command.id, command.payload.constData(), std::size_t(command.payload.size()),
                                      out, sizeof out) >= 0);
        run();
        expected += command.arms ? 1 : 0;
        QCOMPARE(receiver.got.Count(CB_FIRST_FIX), expected);
    }
}

void EpochTest::ReportsStandInForSentences()
{
    const auto loc = [](quint64 timestamp) {
        gnss::MsgLoc message{};
        message.validMask = 15;
        message.timestamp = timestamp;
        message.latitude = 10;
        message.longitude = 20;
        message.altitude = 30;
        message.speede = 3;
        message.speedn = -4;
        message.heading = 143.1F;
        return Frame(quint16(gnss::RptMessage + gnss::MsgTypeLoc),
                     QByteArray(reinterpret_cast<const char*>(&message), sizeof message));
    };
    gnss::MsgMeas measurements{};
    measurements.entry[0].svid = 5;
    measurements.entry[0].cn0 = 40;
    measurements.entry[0].carrierFreq = 1575.42;
    // Straight above the place, then due east at the horizon's height and a little more, then below.
    double up[3] = {25e6 * std::cos(10 / 57.29577951308232) * std::cos(20 / 57.29577951308232),
                    25e6 * std::cos(10 / 57.29577951308232) * std::sin(20 / 57.29577951308232),
                    25e6 * std::sin(10 / 57.29577951308232)};
    measurements.entry[0].satPosX = up[0];
    measurements.entry[0].satPosY = up[1];
    measurements.entry[0].satPosZ = up[2];
    measurements.entry[1] = measurements.entry[0];
    measurements.entry[1].carrierFreq = 1176.45;
    measurements.entry[1].cn0 = 44;
    measurements.entry[2] = measurements.entry[0];
    measurements.entry[2].svid = 6;
    measurements.entry[2].constellation = 3;
    measurements.entry[2].cn0 = 41;
    measurements.entry[2].satPosX = up[0] - 25e6 * std::sin(20 / 57.29577951308232);
    measurements.entry[2].satPosY = up[1] + 25e6 * std::cos(20 / 57.29577951308232);
    measurements.entry[3] = measurements.entry[0];
    measurements.entry[3].svid = 7;
    measurements.entry[3].satPosX = -up[0];
    const QByteArray meas = Frame(quint16(gnss::RptMessage + gnss::MsgTypeMeas),
                                  QByteArray(reinterpret_cast<const char*>(&measurements), sizeof measurements));

    // Beside sentences the reports add nothing.
    Receiver both;
    for (const QByteArray time : {"101110", "101111", "101112"}) {
        both.Say(Gga(time) + Gsv("GP", "01,40,083,30") + loc(1) + meas);
    }
    QCOMPARE(both.got.fixes.size(), 3);
    QCOMPARE(both.got.fixes[0].latitude, both.got.fixes[2].latitude);
    QCOMPARE(both.got.Count(CB_CN0), 3);

    Receiver alone;
    for (int i = 0; i < 3; ++i) {
        // 2024-02-29 23:59:59.5 UTC and on
        alone.Say(loc(1393286417500U + quint64(i) * 500) + meas);
    }
    QCOMPARE(alone.got.fixes.size(), 2);
    QCOMPARE(When(alone.got.fixes[0]), QString("2024-3-1 0:0:0"));
    QCOMPARE(alone.got.fixes[0].speed, 5.0F);
    QCOMPARE(alone.got.Count(CB_KPI_POSITION), 2);
    QCOMPARE(alone.got.Count(CB_FIRST_FIX), 1);
    QCOMPARE(int(alone.got.cn0.count), 4);
    QCOMPARE(alone.got.cn0.entry[2].constellation, 'E');
    QCOMPARE(int(alone.got.kpiCn0.count), 3);
    QCOMPARE(int(alone.got.kpiCn0.entry[0].cn0), 41);
    QCOMPARE(int(alone.got.satPos.count), 2);
    QCOMPARE(int(alone.got.satPos.entry[0].elevation), 90);
    QCOMPARE(int(alone.got.satPos.entry[0].cn0), 44);
    QCOMPARE(int(alone.got.satPos.entry[1].azimuth), 90);
    QCOMPARE(int(alone.got.satPos.entry[1].elevation), 37);
}

void EpochTest::ReportsWithoutNumbers()
{
    Receiver receiver;
    for (int i = 0; i < 3; ++i) {
        for (const int type : {gnss::MsgTypeLoc, gnss::MsgTypeMeas}) {
            const gnss::MessageLayout* layout = gnss::FindMessageLayout(quint32(type));
            // All ones are not-a-number in every float; then times that no receiver can mean.
            receiver.Say(Frame(quint16(gnss::RptMessage + type), QByteArray(int(layout->fullPayload), '\xFF')));
            receiver.Say(Frame(quint16(gnss::RptMessage + type), QByteArray(int(layout->fullPayload), '\x7F')));
        }
    }
    QCOMPARE(receiver.got.ValidFixes().size(), 0);
    for (const gnss::FixRecord& fix : receiver.got.fixes) {
        QCOMPARE(When(fix), QString("0-0-0 0:0:0"));
        QVERIFY(std::isfinite(fix.speed) && std::isfinite(fix.heading) && std::isfinite(fix.altitude));
    }
}

QTEST_GUILESS_MAIN(EpochTest)
#include "EpochTest.moc"
