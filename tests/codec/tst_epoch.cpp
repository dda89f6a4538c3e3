// SPDX-License-Identifier: MIT
#include "Collector.h"

#include <QtTest>

#include <cmath>

namespace {

const QByteArray kPlace = ",4807.038,N,01131.000,E,";

QByteArray Gga(const QByteArray& time, int quality = 1, const QByteArray& altitude = "100.0")
{
    return Sentence("GNGGA," + time + kPlace + QByteArray::number(quality) + ",08,0.9," + altitude +
                    ",M,46.9,M,,");
}

QByteArray Rmc(const QByteArray& time, const QByteArray& date = "230394", const QByteArray& course = "90.0",
               char status = 'A')
{
    return Sentence("GNRMC," + time + ',' + status + kPlace + "10.0," + course + ',' + date + ",,,A");
}

QByteArray Gsv(const QByteArray& talker, const QByteArray& satellites, const QByteArray& signal = {})
{
    return Sentence(talker + "GSV,1,1,04," + satellites + (signal.isEmpty() ? QByteArray() : ',' + signal));
}

QByteArray Gsa(const QByteArray& satellites, const QByteArray& system)
{
    return Sentence("GNGSA,A,3," + satellites + QByteArray(12 - satellites.count(',') - 1, ',') + ",1.5,0.9,1.2," +
                    system);
}

const QByteArray kGsv = Gsv("GP", "01,40,083,46");
const QByteArray kVtg = Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K");
const QByteArray kVoidRmc = Sentence("GNRMC,,V,,,,,,,,,,N");

QByteArray At(int second)
{
    return "1011" + QByteArray::number(second) + ".00";
}

/// The times of all fixes that a codec has found, at its end.
QStringList Times(Link& link)
{
    link.codec.EndOfInput();
    QStringList times;
    for (const protocol::FixRecord& fix : link.got.Fixes()) {
        times.append(QString::asprintf("%u-%u-%u %u:%u:%g", fix.year, fix.month, fix.day, fix.hour, fix.minute,
                                       fix.second));
    }
    return times;
}

template <typename Message> QByteArray MessageFrame(int type, const Message& message)
{
    return Frame(protocol::RptMessage + type,
                 QByteArray(reinterpret_cast<const char*>(&message), int(sizeof message)));
}

} // namespace

class EpochTest : public QObject {
    Q_OBJECT

private slots:
    void RecordsGoOutWithTheLearnedLastSentence()
    {
        const QByteArray gsa = Gsa("01,02", "1");
        const QByteArray gpsL5 = Gsv("GP", "01,40,083,40", "8");
        const QByteArrayList orders[] = {
            {"GGA", gsa, kGsv, "RMC"},  {"RMC", "GGA", gsa, kGsv, gpsL5},
            {"RMC", kGsv, "GGA", kGsv}, {"RMC"},
            {kGsv, gsa, "GGA", "RMC"},  {"GGA", "RMC", kGsv, Sentence("GNTXT,01,01,02,x")}};
        for (const QByteArrayList& order : orders) {
            Link link;
            QStringList times;
            for (int second = 10; second < 20; ++second) {
                for (const QByteArray& step : order) {
                    link.Say(step == "GGA" ? Gga(At(second)) : step == "RMC" ? Rmc(At(second)) : step);
                }
                times.append(QStringLiteral("1994-3-23 10:11:%1").arg(second));
                // The first cycle is known to be over when the second begins; from then
                // on each goes out at once. A list that stands before the position
                // belongs to the cycle before it, as far as can be told.
                const int late = order.first() == kGsv ? 1 : 0;
                QVERIFY(second == 10 || link.got.Count(protocol::CB_DATA) == second - 9 - late);
            }
            QCOMPARE(Times(link), times);
        }

        // A lost sentence costs no epoch.
        Link link;
        QStringList times;
        for (int second = 10; second < 30; ++second) {
            times.append(QStringLiteral("1994-3-23 10:11:%1").arg(second));
            link.Say((second % 4 != 1 ? Rmc(At(second)) : QByteArray()) +
                     (second % 7 != 2 ? Gga(At(second)) : QByteArray()) + kGsv +
                     (second % 5 != 3 ? kVtg : QByteArray()));
        }
        QCOMPARE(Times(link), times);
    }

    void WhatIsOneEpoch()
    {
        Link twoTalkers;
        for (int second = 10; second < 13; ++second) {
            const QByteArray place = At(second) + kPlace;
            twoTalkers.Say(Gga(At(second)) + Sentence("GAGGA," + place + "1,08,0.9,100.0,M,46.9,M,,") +
                           Sentence("GNGNS," + place + "AA,08,0.9,100.0,46.9,,") + Rmc(At(second)));
        }
        QCOMPARE(twoTalkers.got.Count(protocol::CB_DATA), 3);

        Link ownTime;
        for (int second = 10; second < 20; second += 2) {
            ownTime.Say(Rmc(At(second)) + Gga(At(second)) + kGsv +
                        Sentence("GPGLL,4807.038,N,01131.000,E," + At(second + 1) + ",A"));
        }
        QCOMPARE(ownTime.got.Count(protocol::CB_DATA), 10);
        QCOMPARE(Times(ownTime).last(), QString("1994-3-23 10:11:19"));
        QCOMPARE(ownTime.got.Fixes().last().altitude, 100.0);

        // The cycle of one GGA is over with it, and the same time brings a fix
        // after all.
        Link late;
        late.Say(Gga(At(10), 0) + Gga(At(11), 0) + Gga(At(12), 0) + Rmc(At(12)) + Gga(At(13), 0));
        QCOMPARE(late.got.Fixes(true).size(), 1);
        QCOMPARE(late.got.Fixes(true)[0].second, 12.0);
    }

    void DatesAndAltitudesAreCarriedOn()
    {
        Link link;
        // A date without a fix may come from a clock that was never set: it is not
        // carried on.
        link.Say(Gga("235957.50") + Rmc("235958.00", "010180", "90.0", 'V'));
        link.Say(Gga("235958.50") + Rmc("235959.00", "311223") + Gga("235959.50") + Gga("000000.00"));
        link.Say(Gga("000000.50") + Rmc("000001.00", "010124") + Gga("120000") + Gga("235959") + Gga("000000"));
        link.Say(Sentence("GPZDA,000001,28,02,2024,,") + Gga("000001") + Gga("235959") + Gga("000000"));
        link.Say(Sentence("GPZDA,000001,31,02,2024,,") + Gga("000001"));
        QCOMPARE(Times(link),
                 (QStringList{"0-0-0 23:59:57.5", "1980-1-1 23:59:58", "0-0-0 23:59:58.5", "2023-12-31 23:59:59",
                              "2023-12-31 23:59:59.5", "2024-1-1 0:0:0", "2024-1-1 0:0:0.5", "2024-1-1 0:0:1",
                              "2024-1-1 12:0:0", "2024-1-1 23:59:59", "2024-1-2 0:0:0", "2024-2-28 0:0:1",
                              "2024-2-28 23:59:59", "2024-2-29 0:0:0", "2024-2-29 0:0:1"}));

        // Over a leap second; times that do not exist give a fix without a time.
        Link leap;
        leap.Say(Rmc("235959.50", "311216") + Rmc("235960.00", "311216") + Rmc("235960.50", "311216") +
                 Rmc("000000.00", "010117") + Rmc("235961.00", "010117") + Rmc("240000.00", "010117"));
        const QStringList times = Times(leap);
        QCOMPARE(times.mid(0, 4), (QStringList{"2016-12-31 23:59:59.5", "2016-12-31 23:59:60",
                                               "2016-12-31 23:59:60.5", "2017-1-1 0:0:0"}));
        QCOMPARE(times.mid(4).count("0-0-0 0:0:0"), times.size() - 4);

        Link heights;
        heights.Say(Rmc("101110") + Gga("101111") + Rmc("101112") + Gga("101113", 0, "7.0") +
                    Gga("101114", 2, "") + Gga("101115", 1, "-3.5") + Gga("101116", 1, "8"));
        QVector<double> altitudes;
        for (const protocol::FixRecord& fix : heights.got.Fixes()) {
            altitudes.append(fix.altitude);
        }
        QCOMPARE(altitudes.mid(0, 6), (QVector<double>{0, 100, 100, 100, 100, -3.5}));
    }

    void SignalsAndUse()
    {
        Link link;
        link.Say(Gga("101110") + Gsa("02,33", "1") + Gsa("66", "2") + Gsa("33", "3") + Gsa("208", "4") +
                 Gsv("GP", "01,40,083,46,02,17,308,41,33,20,100,35", "1") + Gsv("GP", "02,17,308,38,01,,,", "8") +
                 Gsv("GP", "02,17,308,39", "1") + Gsv("GL", "66,40,075,", "1") + Gsv("GA", "33,53,047,47", "7") +
                 Gsv("BD", "08,09,030,39,21,,,49", "4") + Gga("101111"));
        QStringList texts;
        const auto cn0 = link.got.Last<protocol::Cn0Record>(protocol::CB_CN0);
        for (int i = 0; i < cn0.count; ++i) {
            const protocol::Cn0Entry& e = cn0.entry[i];
            float frequency;
            std::memcpy(&frequency, &e.carrierFreq, sizeof frequency);
            texts.append(QString::asprintf("%c%u %u %u %.2f", e.constellation, unsigned(e.svid), unsigned(e.cn0),
                                           unsigned(e.inuseFlag), double(frequency)));
        }
        QCOMPARE(texts,
                 (QStringList{"G1 46 0 1575.42", "G2 41 1 1575.42", "G2 38 1 1176.45", "S120 35 1 1575.42",
                              "R2 0 1 1602.00", "E33 47 1 1575.42", "C8 39 1 1575.42", "C21 49 0 1575.42"}));
        texts.clear();
        const auto satPos = link.got.Last<protocol::SatPosRecord>(protocol::CB_SAT_POS);
        for (int i = 0; i < satPos.count; ++i) {
            const protocol::SatPosEntry& e = satPos.entry[i];
            texts.append(QString::asprintf("%c%u %u/%u %u", e.constellation, unsigned(e.svid),
                                           unsigned(e.elevation), unsigned(e.azimuth), unsigned(e.cn0)));
        }
        QCOMPARE(texts, (QStringList{"G1 40/83 46", "G2 17/308 41", "S120 20/100 35", "R2 40/75 0", "E33 53/47 47",
                                     "C8 9/30 39"}));

        // The blocks in their order.
        enum { gps, beidou, galileo, glonass, qzss };
        const auto gsv = link.got.LastMessage<protocol::MsgGsv>(protocol::MsgTypeGsv);
        QVERIFY(gsv.block[gps].satellitesNum == 6 && gsv.block[gps].row[3].freq == 8 &&
                gsv.block[glonass].row[0].prn == 66);
        const auto gsa = link.got.LastMessage<protocol::MsgGsa>(protocol::MsgTypeGsa);
        QVERIFY(gsa.block[gps].validPrnNum == 2 && gsa.block[beidou].prn[0] == 208 &&
                gsa.block[galileo].vdop == 1.2F && gsa.block[qzss].valid == 0);
        QVERIFY(link.got.Fixes()[0].pdop == 1.5F && link.got.Fixes()[0].vdop == 1.2F);
        // Tracked first-band signals, the strongest first, and a zero behind for
        // the reader that looks too far.
        const protocol::KpiCn0Record& kpi = link.got.kpiCn0;
        QVERIFY(kpi.count == 6 && kpi.entry[0].cn0 == 49 && kpi.entry[1].constellation == 'E' &&
                kpi.entry[5].cn0 == 35 && kpi.entry[6].inuseFlag == 0);
    }

    void SatelliteListsWithoutAFix()
    {
        // No time and no fix: each return of the first sentence ends a cycle.
        Link cold;
        cold.Say((kVoidRmc + Sentence("GNGGA,,,,,,0,00,99.99,,,,,,") + kGsv).repeated(5));
        QVERIFY(cold.got.Count(protocol::CB_CN0) == 5 && cold.got.Count(protocol::CB_DATA) == 5 &&
                cold.got.Fixes(true).isEmpty());

        // The same when the sentence that used to begin the cycle has been switched
        // off.
        Link changed;
        changed.Say(Gga("101110") + Gga("101111") + kVoidRmc.repeated(5));
        QVERIFY(changed.got.Count(protocol::CB_DATA) >= 5 && changed.got.Fixes().last().fixMode == 0);

        Link listsOnly;
        listsOnly.Say((kGsv + Gsv("GL", "66,40,075,35", "1")).repeated(5));
        QVERIFY(listsOnly.got.Count(protocol::CB_CN0) == 4 && listsOnly.got.Count(protocol::CB_DATA) == 0);

        // A constellation that is no longer listed stays for one list more; a cycle
        // without lists gives none.
        Link link;
        link.Say(Gga("101110") + kGsv + Gsv("GL", "66,40,075,35") + Gga("101111") + kGsv + Gga("101112") + kGsv +
                 Gga("101113") + Gga("101114"));
        QVector<int> sizes;
        for (const QByteArray& image : link.got.Images(protocol::CB_CN0)) {
            sizes.append(image.size());
        }
        QCOMPARE(sizes, (QVector<int>{17, 17, 9}));
    }

    void CountsStayWithinTheRecords()
    {
        Link link;
        for (int i = 0; i < 9 * 6 * 24; ++i) {
            QByteArray body = QByteArrayList{"GP", "GL", "GA", "GB", "GQ", "GI"}[i % 6] + "GSV,99,99,99";
            for (int satellite = 1; satellite <= 4; ++satellite) {
                body += ',' + QByteArray::number(i / 6 % 24 * 4 + satellite) + ",950,1000,990";
            }
            link.Say(Sentence(body + ',' + QByteArray::number(i / 144 + 1)));
        }
        link.Say(Gga("101110") + Gga("101111"));
        QCOMPARE(link.got.Images(protocol::CB_CN0).last().size(), 1 + 255 * 8);
        QCOMPARE(link.got.Images(protocol::CB_SAT_POS).last().size(), 2 + 255 * 8);
        const auto satPos = link.got.Last<protocol::SatPosRecord>(protocol::CB_SAT_POS);
        QVERIFY(satPos.entry[0].elevation == 90 && satPos.entry[0].azimuth < 360);
        for (const protocol::GsvBlock& block :
             link.got.LastMessage<protocol::MsgGsv>(protocol::MsgTypeGsv).block) {
            QCOMPARE(int(block.satellitesNum), int(protocol::kGsvRows));
        }
        // More sentences than a cycle can be remembered with.
        Link endless;
        endless.Say(Gga(At(10)) + kVtg.repeated(1000) + Gga(At(11)) + kVtg.repeated(1000) + Gga(At(12)));
        QCOMPARE(endless.got.Count(protocol::CB_DATA), 2);
    }

    void HeadingOfTheCompass()
    {
        Link link;
        const auto heading = [&] { return link.got.Last<protocol::CompassRecord>(protocol::CB_COMPASS).heading; };
        link.Say(Rmc("101110", "230394", "45.5") + Rmc("101111", "230394", ""));
        QCOMPARE(heading(), 45.5F);
        link.Say(Rmc("101112", "230394", ""));
        QCOMPARE(heading(), 45.5F); // standing still: the last course
        link.Say(Sentence("HEHDT,244.28,T") + Rmc("101113"));
        QCOMPARE(heading(), 244.28F);
        QCOMPARE(link.got.Fixes().last().heading, 90.0F); // its own course
        link.Say(Sentence("GNTHS,12.0,V") + Rmc("101114"));
        link.codec.EndOfInput();
        QCOMPARE(heading(), 90.0F);
        QCOMPARE(int(link.got.Last<protocol::CompassRecord>(protocol::CB_COMPASS).fixMode), 1);
    }

    void StartForgetsTheUnfinishedCycle()
    {
        Link link;
        link.Say(Rmc("101110") + Gga("101110"));
        QVERIFY(!link.Encode(protocol::CmdPassThrough,
                             Frame(protocol::CmdConstellations, QByteArray(5, '\1'), protocol::kColdStartWord))
                     .isEmpty());
        // The rest of the old cycle and the first ones of the new life without a
        // fix: nothing counts as a fix.
        link.Say(Sentence("GPGLL,4807.038,N,01131.000,E,101110,A") + Gga("101111", 0) + Gga("101112", 0));
        QCOMPARE(link.got.Count(protocol::CB_FIRST_FIX), 0);
        QCOMPARE(link.got.Count(protocol::CB_KPI_POSITION), 0);
        QCOMPARE(link.got.Fixes().last().altitude, 0.0);
        link.Say(Gga("101113") + Gga("101114"));
        QCOMPARE(link.got.Count(protocol::CB_FIRST_FIX), 1);
    }

    void FirstFixOnceAStart()
    {
        const QByteArray payload(12, '\0');
        const QByteArray start = Frame(protocol::CmdStart, payload, protocol::kStartWord);
        const QByteArray hot = Frame(protocol::CmdConstellations, QByteArray(5, '\1'), protocol::kHotStartWord);
        Link link;
        int second = 10;
        int expected = 0;
        const auto fixes = [&](quint32 id, const QByteArray& command, bool armed) {
            expected += armed ? 1 : 0;
            const bool sent = !link.Encode(id, command).isEmpty();
            for (int i = 0; i < 4; ++i) {
                link.Say(Gga(At(second++)));
            }
            return sent && link.got.Count(protocol::CB_FIRST_FIX) == expected;
        };
        QVERIFY(fixes(protocol::CmdPps, "ab", true)); // the first of all needs no start
        QVERIFY(fixes(protocol::CmdStart, payload, true));
        for (const QByteArray& frame :
             {start, QByteArray("AT+GNSSSTART=1,1,1,0\r\n"), "AT+GNSSHEX=" + start.toHex() + "\r\n", hot}) {
            QVERIFY(fixes(protocol::CmdPassThrough, frame, true));
        }
        QVERIFY(fixes(protocol::CmdConstellations, QByteArray(5, '\1'), false));
        QVERIFY(fixes(protocol::CmdStop, {}, false));
        QVERIFY(fixes(protocol::CmdPassThrough, "AT+GNSSSTOP\r\n", false));
    }

    void ReportsStandInForSentences()
    {
        protocol::MsgLoc message{};
        message.validMask = 15;
        message.latitude = 10;
        message.longitude = 20;
        message.altitude = 30;
        message.speede = 3;
        message.speedn = -4;
        // Straight above the place on two bands, then due east at the horizon's
        // height and a little more, then below.
        const double lat = 10 / 57.29577951308232;
        const double lon = 20 / 57.29577951308232;
        const double place[3] = {25e6 * std::cos(lat) * std::cos(lon), 25e6 * std::cos(lat) * std::sin(lon),
                                 25e6 * std::sin(lat)};
        protocol::MsgMeas measurements{};
        for (int i = 0; i < 4; ++i) {
            auto& entry = measurements.entry[i];
            entry.svid = i == 0 ? 5 : 4 + i;
            entry.cn0 = QVector<int>{40, 44, 41, 40}[i];
            entry.carrierFreq = i == 1 ? 1176.45 : 1575.42;
            entry.constellation = i == 2 ? 3 : 0;
            entry.satPosX = (i == 3 ? -1 : 1) * place[0] - (i == 2 ? 25e6 * std::sin(lon) : 0);
            entry.satPosY = place[1] + (i == 2 ? 25e6 * std::cos(lon) : 0);
            entry.satPosZ = place[2];
        }
        Link alone;
        Link both;
        for (int i = 0; i < 3; ++i) {
            message.timestamp = 1393286417500U + quint64(i) * 500; // 2024-02-29 23:59:59.5 UTC and on
            const QByteArray reports =
                MessageFrame(protocol::MsgTypeLoc, message) + MessageFrame(protocol::MsgTypeMeas, measurements);
            alone.Say(reports);
            both.Say(Gga(At(10 + i)) + kGsv + reports);
        }
        // Beside sentences the reports add nothing.
        QVERIFY(both.got.Count(protocol::CB_DATA) == 3 && both.got.Count(protocol::CB_CN0) == 3);
        QCOMPARE(both.got.Fixes()[0].latitude, both.got.Fixes()[2].latitude);

        QVERIFY(alone.got.Count(protocol::CB_DATA) == 2 && alone.got.Count(protocol::CB_KPI_POSITION) == 2 &&
                alone.got.Count(protocol::CB_FIRST_FIX) == 1);
        QCOMPARE(alone.got.Fixes()[0].speed, 5.0F);
        const auto cn0 = alone.got.Last<protocol::Cn0Record>(protocol::CB_CN0);
        QVERIFY(cn0.count == 4 && cn0.entry[2].constellation == 'E');
        QVERIFY(alone.got.kpiCn0.count == 3 && alone.got.kpiCn0.entry[0].cn0 == 41);
        const auto satPos = alone.got.Last<protocol::SatPosRecord>(protocol::CB_SAT_POS);
        QCOMPARE(int(satPos.count), 2);
        QVERIFY(satPos.entry[0].elevation == 90 && satPos.entry[0].cn0 == 44);
        QVERIFY(satPos.entry[1].azimuth == 90 && satPos.entry[1].elevation == 37);
        QCOMPARE(Times(alone).first(), QString("2024-3-1 0:0:0"));
    }

    void ReportsWithoutNumbers()
    {
        Link link;
        for (int i = 0; i < 3; ++i) {
            for (const int type : {protocol::MsgTypeLoc, protocol::MsgTypeMeas}) {
                const int length = int(protocol::FindMessageLayout(quint32(type))->fullPayload);
                // All ones are not-a-number in every float; then times that no receiver
                // can mean.
                link.Say(Frame(protocol::RptMessage + type, QByteArray(length, '\xFF')) +
                         Frame(protocol::RptMessage + type, QByteArray(length, '\x7F')));
            }
        }
        QCOMPARE(link.got.Fixes(true).size(), 0);
        QCOMPARE(Times(link).count("0-0-0 0:0:0"), Times(link).size());
        for (const protocol::FixRecord& fix : link.got.Fixes()) {
            QVERIFY(std::isfinite(fix.speed) && std::isfinite(fix.heading) && std::isfinite(fix.altitude));
        }
    }
};

QTEST_GUILESS_MAIN(EpochTest)
#include "tst_epoch.moc"
