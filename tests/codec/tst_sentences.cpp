// SPDX-License-Identifier: MIT
#include "Collector.h"

#include "codec/nmea/Satellites.h"

#include <QtTest>

#include <cmath>

using codec::System;
using codec::TalkerSystem;

namespace {

/// What one piece of input alone gives.
struct Outcome : Link {
    explicit Outcome(const QByteArray& bytes)
    {
        Say(bytes);
        codec.EndOfInput();
    }
};

} // namespace

class SentencesTest : public QObject {
    Q_OBJECT

private slots:
    void Validity()
    {
        const QPair<const char*, int> rows[] = {
            // the fix mode, -1 for no record at all
            {"GNGGA,101112.00,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,", 1},
            {"GPGGA,101112,4807.038,N,01131.000,E,5,08,0.9,545.4,M,,M,,", 5},
            {"GPGGA,101112,4807.038,N,01131.000,E,0,08,0.9,545.4,M,,M,,", 0},
            {"GPGGA,101112,4807.038,N,01131.000,E,,08,0.9,545.4,M,,M,,", 0},
            {"GPGGA,101112,,,,,1,08,0.9,545.4,M,46.9,M,,", 0},
            {"GPGGA,101112,4807.038,,01131.000,E,1,08,0.9,545.4,M,,M,,", 0},
            {"GPGGA,101112,48x7.038,N,01131.000,E,1,08,0.9,5,M,,M,,", 0},
            {"GPGGA,101112,9100.000,N,01131.000,E,1,08,,,M,,M,,", 0},
            {"GPGGA,101112,4807.038,N", 0},
            {"GPGGA,101112,4807.038,N,01131.000,E,9,08,,,M,,M,,", 1},
            // Of NMEA 2.1, 2.3 and 4.1
            {"GPRMC,101112,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W", 1},
            {"GPRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,D", 2},
            {"GNRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,R,V", 4},
            {"GNRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,N", 0},
            {"GNRMC,101112,V,4807.038,N,01131.000,E,,,230394,,,A", 0},
            {"GPGLL,4807.038,N,01131.000,E,101112,A", 1},
            {"GPGLL,4807.038,N,01131.000,E,101112,V", 0},
            {"GNGNS,101112,4807.038,N,01131.000,E,NAD,08,0.9,545.4,46.9,,", 2},
            {"GNGNS,101112,4807.038,N,01131.000,E,NNN,08,0.9,545.4,46.9,,", 0},
            {"GPZDA,101112,23,03,1994,00,00", -1},
            {"PGGGA,101112,4807.038,N,01131.000,E,1,08,,,M,,M,,", -1},
        };
        for (const auto& [body, fixMode] : rows) {
            const Outcome outcome(Sentence(body));
            const auto fixes = outcome.got.Fixes();
            QVERIFY2(outcome.got.whole.size() == 1 && fixes.size() == (fixMode < 0 ? 0 : 1) &&
                         (fixMode < 0 || fixes[0].fixMode == fixMode) &&
                         outcome.got.Count(protocol::CB_KPI_POSITION) == (fixMode > 0 ? 1 : 0) &&
                         outcome.got.Count(protocol::CB_FIRST_FIX) == (fixMode > 0 ? 1 : 0),
                     body);
            // The same with one bit changed gives neither text nor records.
            QByteArray wrong = Sentence(body);
            wrong[8] = char(wrong[8] ^ 1);
            const Outcome rejected(wrong);
            QVERIFY2(rejected.got.whole.isEmpty() && rejected.got.numbers.isEmpty() &&
                         rejected.got.slots_.isEmpty() && rejected.codec.Counters().checksumErrors == 1,
                     body);
        }
    }

    void Coordinates()
    {
        const std::tuple<const char*, double, double> rows[] = {
            {"4807.03,N,01131.50,E", 48 + 7.03 / 60, 11.525},
            {"4134.49821229,N,09345.03351845,W", 41.574970204833333, -93.750558640833333},
            {"0030,S,00030,W", -0.5, -0.5},
            {"9000.0000,S,18000.0000,E", -90.0, 180.0},
            {"4530.000000000000000000,N,00130.00000000000000000000001,E", 45.5, 1.5},
            {"0000.0000,N,00000.0000,E", 0.0, 0.0}};
        for (const auto& [fields, latitude, longitude] : rows) {
            const Outcome outcome(Sentence(QByteArray("GPGGA,000000.00,") + fields + ",1,04,1,1,M,,M,,"));
            const protocol::FixRecord fix = outcome.got.Fixes().value(0);
            QVERIFY2(fix.fixMode == 1 && std::abs(fix.latitude - latitude) < 1e-13 &&
                         std::abs(fix.longitude - longitude) < 1e-13,
                     fields);
        }
    }

    void Framing()
    {
        const QByteArray good = Sentence("GPTXT,01,01,02,ok", "");
        const QByteArray lower = Sentence("GPTXT,01,01,02,nn", "").toLower().replace("gptxt", "GPTXT") + "\n";
        const QByteArray foreign = Sentence("GPTXT,01,01,02,Z\xC3\xBCrich");
        const QPair<QByteArray, QByteArrayList> rows[] = {
            // bytes and the texts out of them
            {good + "\r\n", {good + "\r\n"}},
            {good + "\n", {good + "\n"}},
            {good + "\r\r\n", {good + "\r\r\n"}},
            {good + "\rX", {good + "\r"}},
            {good + "\r\r\r\n", {good + "\r\r"}},
            {good, {}},
            {good + good + "\r\n", {good + "\r\n"}},
            {"$" + good + "\n", {good + "\n"}},
            {QByteArray("\0\xFF!AIVDM,1*", 12) + good + "\n", {good + "\n"}},
            {"$GPGGA,10" + good + "\n", {good + "\n"}},
            {QByteArray("$GPTXT,01,\0", 11) + "01,02,ok*1D\r\n", {}},
            {good + "0,*4E\r\n", {}}, // the tail of a lost one behind
            {lower, {lower}},
            {"$GPTXT,01,01,02,ok\r\n", {}},
            {"!AIVDO,1,1,,B,13`kvwO005wJnb0Lfo:@7P8F05`L,0*5B\n" + foreign, {foreign}}};
        for (const auto& [bytes, texts] : rows) {
            Outcome outcome(bytes);
            QCOMPARE(outcome.got.slots_, texts);
            // Nothing lingers: the next sentence comes through.
            outcome.Say("\r\n" + Sentence("GPTXT,01,01,02,next"));
            QVERIFY2(outcome.got.slots_.last() == Sentence("GPTXT,01,01,02,next"), bytes);
        }
    }

    void LongSentencesAreCutToTheSlot()
    {
        for (int length = 120; length <= 132; ++length) {
            const QByteArray sentence = Sentence(QByteArray("PX,").leftJustified(length - 6, 'x'));
            const Outcome outcome(sentence);
            QCOMPARE(outcome.got.slots_, QByteArrayList{sentence.left(127)});
            QCOMPARE(outcome.got.whole[0].size(), length - 2);
        }
        QCOMPARE(Outcome(Sentence(QByteArray(1020, 'x'))).got.slots_.size(), 1);
        QCOMPARE(Outcome(Sentence(QByteArray(1021, 'x'))).got.slots_.size(), 0);
        // 33 sentences do not fit one record.
        const Outcome outcome(Sentence("GPTXT,01,01,02,x").repeated(33));
        QCOMPARE(outcome.got.slots_.size(), 33);
        QCOMPARE(outcome.got.textRecords, 2);
        QVERIFY(!outcome.got.overfull);
    }

    void SatelliteNumbers()
    {
        const auto names = [](TalkerSystem talker, const QVector<int>& numbers) {
            QByteArrayList texts;
            for (const int number : numbers) {
                const codec::SatelliteId id = codec::IdentifySatellite(talker, number);
                texts.append(id.svid == 0 ? "-" : protocol::RowOf(id.system).letter + QByteArray::number(id.svid));
            }
            return texts.join(' ');
        };
        QCOMPARE(names(System::Gps, {1, 33, 46, 193, 0, -5}), QByteArray("G1 S120 S133 J1 - -"));
        QCOMPARE(names(std::nullopt, {32, 65, 96, 301, 401, 208, 99999}), QByteArray("G32 R1 R32 E1 C1 C8 -"));
        QCOMPARE(names(System::Glonass, {7, 71}), QByteArray("R7 R7"));
        QCOMPARE(names(System::Galileo, {33, 102, 336}), QByteArray("E33 E2 E36"));
        QCOMPARE(names(System::Beidou, {33, 201, 219, 463, 100}), QByteArray("C33 C1 C19 C63 -"));
        QCOMPARE(names(System::Qzss, {2, 194}), QByteArray("J2 J2"));
        QCOMPARE(names(System::Navic, {5}), QByteArray("I5"));
        // Unknown signal ids fall back to the first one and never read beyond the
        // table.
        for (int id = 0; id < 256; ++id) {
            for (int system = 0; system < codec::kSystems; ++system) {
                QVERIFY(codec::CarrierFrequency(System(system), quint8(id)) > 1000);
            }
        }
        QCOMPARE(codec::CarrierFrequency(System::Galileo, 255), 1575.42F);
    }

    void MessagesKeepTheSentencesForm()
    {
        const Outcome outcome(Sentence("GPGGA,123519.25,4807.038,N,01131.000,W,2,08,0.9,545.4,M,46.9,"
                                       "M,,") +
                              Sentence("GPRMC,123519.25,A,4807.038,N,01131.000,W,022.4,084.4,230394,"
                                       "003.1,W,D") +
                              Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K,D") +
                              Sentence("GPZDA,123519.25,23,03,1994,-05,30") +
                              Sentence("GPGLL,4807.038,N,01131.000,W,123519.25,A,D"));
        const auto gga = outcome.got.LastMessage<protocol::MsgGga>(protocol::MsgTypeGga);
        QVERIFY(gga.utcTime == 123519.25 && gga.latitude == 4807.038 && gga.lonDirection == 'W');
        QVERIFY(gga.mode == 2 && gga.svNumInUse == 8 && gga.altitude == 545.4 && gga.altitudeUnits == 'M');
        const auto rmc = outcome.got.LastMessage<protocol::MsgRmc>(protocol::MsgTypeRmc);
        QVERIFY(rmc.posStatus == 'A' && rmc.knotSpd == 22.4F && rmc.course == 84.4F && rmc.date == 230394U);
        QVERIFY(rmc.magDec == 3.1F && rmc.magDecDir == 'W' && rmc.mode == 'D');
        const auto vtg = outcome.got.LastMessage<protocol::MsgVtg>(protocol::MsgTypeVtg);
        QVERIFY(vtg.magCourse == 34.4F && vtg.kmSpeed == 10.2F);
        const auto zda = outcome.got.LastMessage<protocol::MsgZda>(protocol::MsgTypeZda);
        QVERIFY(zda.date == 230394U && zda.hourBias == -5 && zda.minBias == 30);
        const auto gll = outcome.got.LastMessage<protocol::MsgGll>(protocol::MsgTypeGll);
        QVERIFY(gll.longitude == 1131.0 && gll.status == 'A');
        const protocol::FixRecord fix = outcome.got.Fixes().at(0);
        QVERIFY(std::abs(fix.speed - 22.4 * 1852 / 3600) < 1e-5);
        QVERIFY(fix.year == 1994U && fix.second == 19.25);
    }
};

QTEST_GUILESS_MAIN(SentencesTest)
#include "tst_sentences.moc"
