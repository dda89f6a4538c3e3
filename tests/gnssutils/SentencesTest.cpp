#include "Collector.h"

#include "gnssutils/nmea/Satellites.h"

#include <QtTest>

#include <cmath>

using gnss::System;
using gnss::TalkerSystem;

namespace {

/// What one sentence alone gives.
struct Outcome {
    Outcome(const QByteArray& bytes) : codec(&got)
    {
        Feed(codec, bytes);
        codec.EndOfInput();
    }
    Collector got;
    gnss::Codec codec;
};

} // namespace

class SentencesTest : public QObject {
    Q_OBJECT

private slots:
    void Validity_data();
    void Validity();
    void Coordinates_data();
    void Coordinates();
    void Framing_data();
    void Framing();
    void LongSentencesAreCutToTheSlot();
    void SatelliteNumbers_data();
    void SatelliteNumbers();
    void Carriers();
    void MessagesKeepTheSentencesForm();
};

void SentencesTest::Validity_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<int>("fixMode"); // -1: no record at all
    QTest::newRow("GGA") << QByteArray("GNGGA,101112.00,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,") << 1;
    QTest::newRow("GGA float") << QByteArray("GPGGA,101112,4807.038,N,01131.000,E,5,08,0.9,545.4,M,,M,,") << 5;
    QTest::newRow("GGA no fix") << QByteArray("GPGGA,101112,4807.038,N,01131.000,E,0,08,0.9,545.4,M,,M,,") << 0;
    QTest::newRow("GGA no quality") << QByteArray("GPGGA,101112,4807.038,N,01131.000,E,,08,0.9,545.4,M,,M,,") << 0;
    QTest::newRow("GGA no position") << QByteArray("GPGGA,101112,,,,,1,08,0.9,545.4,M,46.9,M,,") << 0;
    QTest::newRow("GGA no letter") << QByteArray("GPGGA,101112,4807.038,,01131.000,E,1,08,0.9,545.4,M,,M,,") << 0;
    QTest::newRow("GGA not a number") << QByteArray("GPGGA,101112,48x7.038,N,01131.000,E,1,08,0.9,5,M,,M,,") << 0;
    QTest::newRow("GGA latitude too large")
        << QByteArray("GPGGA,101112,9100.000,N,01131.000,E,1,08,,,M,,M,,") << 0;
    QTest::newRow("GGA cut short") << QByteArray("GPGGA,101112,4807.038,N") << 0;
    QTest::newRow("GGA odd quality") << QByteArray("GPGGA,101112,4807.038,N,01131.000,E,9,08,,,M,,M,,") << 1;
    QTest::newRow("RMC 2.1") << QByteArray("GPRMC,101112,A,4807.038,N,01131.000,E,022.4,084.4,230394,003.1,W")
                             << 1;
    QTest::newRow("RMC 2.3") << QByteArray("GPRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,D") << 2;
    QTest::newRow("RMC 4.1") << QByteArray("GNRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,R,V") << 4;
    QTest::newRow("RMC mode N") << QByteArray("GNRMC,101112,A,4807.038,N,01131.000,E,,,230394,,,N") << 0;
    QTest::newRow("RMC void") << QByteArray("GNRMC,101112,V,4807.038,N,01131.000,E,,,230394,,,A") << 0;
    QTest::newRow("GLL") << QByteArray("GPGLL,4807.038,N,01131.000,E,101112,A") << 1;
    QTest::newRow("GLL void") << QByteArray("GPGLL,4807.038,N,01131.000,E,101112,V") << 0;
    QTest::newRow("GNS") << QByteArray("GNGNS,101112,4807.038,N,01131.000,E,NAD,08,0.9,545.4,46.9,,") << 2;
    QTest::newRow("GNS none") << QByteArray("GNGNS,101112,4807.038,N,01131.000,E,NNN,08,0.9,545.4,46.9,,") << 0;
    QTest::newRow("ZDA") << QByteArray("GPZDA,101112,23,03,1994,00,00") << -1;
    QTest::newRow("proprietary") << QByteArray("PGGGA,101112,4807.038,N,01131.000,E,1,08,,,M,,M,,") << -1;
}

void SentencesTest::Validity()
{
    QFETCH(QByteArray, body);
    QFETCH(int, fixMode);
    Outcome outcome(Sentence(body));
    QCOMPARE(outcome.got.whole.size(), 1);
    QCOMPARE(outcome.got.fixes.size(), fixMode < 0 ? 0 : 1);
    if (fixMode >= 0) {
        QCOMPARE(int(outcome.got.fixes[0].fixMode), fixMode);
        QCOMPARE(outcome.got.Count(CB_KPI_POSITION), fixMode > 0 ? 1 : 0);
        QCOMPARE(outcome.got.Count(CB_FIRST_FIX), fixMode > 0 ? 1 : 0);
    }

    // The same with one bit changed gives neither text nor records.
    QByteArray wrong = Sentence(body);
    wrong[8] = char(wrong[8] ^ 1);
    Outcome rejected(wrong);
    QVERIFY(rejected.got.whole.isEmpty() && rejected.got.slots_.isEmpty() && rejected.got.numbers.isEmpty());
    QCOMPARE(int(rejected.codec.Counters().checksumErrors), 1);
}

void SentencesTest::Coordinates_data()
{
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<double>("latitude");
    QTest::addColumn<double>("longitude");
    QTest::newRow("two decimals") << QByteArray("4807.03,N,01131.50,E") << 48 + 7.03 / 60 << 11.525;
    QTest::newRow("eight decimals") << QByteArray("4134.49821229,N,09345.03351845,W") << 41.574970204833333
                                    << -93.750558640833333;
    QTest::newRow("no decimals") << QByteArray("0030,S,00030,W") << -0.5 << -0.5;
    QTest::newRow("pole") << QByteArray("9000.0000,S,18000.0000,E") << -90.0 << 180.0;
    QTest::newRow("many digits") << QByteArray("4530.000000000000000000,N,00130.00000000000000000000001,E") << 45.5
                                 << 1.5;
    QTest::newRow("zero") << QByteArray("0000.0000,N,00000.0000,E") << 0.0 << 0.0;
}

void SentencesTest::Coordinates()
{
    QFETCH(QByteArray, fields);
    QFETCH(double, latitude);
    QFETCH(double, longitude);
    Outcome outcome(Sentence("GPGGA,000000.00," + fields + ",1,04,1,1,M,,M,,"));
    QCOMPARE(outcome.got.fixes.size(), 1);
    QVERIFY(std::abs(outcome.got.fixes[0].latitude - latitude) < 1e-13);
    QVERIFY(std::abs(outcome.got.fixes[0].longitude - longitude) < 1e-13);
}

void SentencesTest::Framing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArrayList>("slots_");
    const QByteArray good = Sentence("GPTXT,01,01,02,ok", "");
    const auto row = [](const char* name, const QByteArray& bytes, const QByteArrayList& expected) {
        QTest::newRow(name) << bytes << expected;
    };
    row("CR LF", good + "\r\n", {good + "\r\n"});
    row("LF", good + "\n", {good + "\n"});
    row("CR CR LF", good + "\r\r\n", {good + "\r\r\n"});
    row("CR alone", good + "\rX", {good + "\r"});
    row("three CR", good + "\r\r\r\n", {good + "\r\r"});
    row("no line end", good, {});
    row("followed by the next", good + good + "\r\n", {good + "\r\n"});
    row("two dollar signs", "$" + good + "\n", {good + "\n"});
    row("noise in front", QByteArray("\0\xFF!AIVDM,1*", 12) + good + "\n", {good + "\n"});
    row("cut by another", "$GPGGA,10" + good + "\n", {good + "\n"});
    row("NUL inside", QByteArray("$GPTXT,01,\0", 11) + "01,02,ok*1D\r\n", {});
    row("tail of a lost one behind", good + "0,*4E\r\n", {});
    row("lower case checksum", Sentence("GPTXT,01,01,02,nn", "").toLower().replace("gptxt", "GPTXT") + "\n",
        {Sentence("GPTXT,01,01,02,nn", "").toLower().replace("gptxt", "GPTXT") + "\n"});
    row("without a checksum", "$GPTXT,01,01,02,ok\r\n", {});
    row("other sentence kinds", "!AIVDO,1,1,,B,13`kvwO005wJnb0Lfo:@7P8F05`L,0*5B\n" + good + "\n", {good + "\n"});
    row("bytes of another code page", Sentence("GPTXT,01,01,02,Z\xC3\xBCrich"),
        {Sentence("GPTXT,01,01,02,Z\xC3\xBCrich")});
}

void SentencesTest::Framing()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArrayList, slots_);
    Outcome outcome(bytes);
    QCOMPARE(outcome.got.slots_, slots_);
    // Nothing lingers: the next sentence comes through.
    Feed(outcome.codec, "\r\n" + Sentence("GPTXT,01,01,02,next"));
    QCOMPARE(outcome.got.slots_.last(), Sentence("GPTXT,01,01,02,next"));
}

void SentencesTest::LongSentencesAreCutToTheSlot()
{
    for (int length = 120; length <= 132; ++length) {
        const QByteArray sentence = Sentence(QByteArray("PX,").leftJustified(length - 6, 'x'));
        Outcome outcome(sentence);
        QCOMPARE(outcome.got.slots_, QByteArrayList{sentence.left(127)});
        QCOMPARE(outcome.got.whole[0].size(), length - 2);
    }
    QCOMPARE(Outcome(Sentence(QByteArray(1020, 'x'))).got.slots_.size(), 1);
    QCOMPARE(Outcome(Sentence(QByteArray(1021, 'x'))).got.slots_.size(), 0);
    // 33 sentences do not fit one record.
    QByteArray many;
    for (int i = 0; i < 33; ++i) {
        many += Sentence("GPTXT,01,01,02," + QByteArray::number(i));
    }
    Outcome outcome(many);
    QCOMPARE(outcome.got.slots_.size(), 33);
    QCOMPARE(outcome.got.textRecords, 2);
    QVERIFY(!outcome.got.overfull);
}

void SentencesTest::SatelliteNumbers_data()
{
    QTest::addColumn<int>("talker");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("expected");
    const auto row = [](TalkerSystem talker, int number, const char* expected) {
        QTest::addRow("%d of talker %d", number, int(talker)) << int(talker) << number << QByteArray(expected);
    };
    row(TalkerSystem::Gps, 1, "G1");
    row(TalkerSystem::Gps, 33, "S120");
    row(TalkerSystem::Gps, 46, "S133");
    row(TalkerSystem::Gps, 193, "J1");
    row(TalkerSystem::Mixed, 32, "G32");
    row(TalkerSystem::Mixed, 65, "R1");
    row(TalkerSystem::Mixed, 96, "R32");
    row(TalkerSystem::Mixed, 301, "E1");
    row(TalkerSystem::Mixed, 401, "C1");
    row(TalkerSystem::Mixed, 208, "C8");
    row(TalkerSystem::Glonass, 7, "R7");
    row(TalkerSystem::Glonass, 71, "R7");
    row(TalkerSystem::Galileo, 33, "E33");
    row(TalkerSystem::Galileo, 102, "E2");
    row(TalkerSystem::Galileo, 336, "E36");
    row(TalkerSystem::Beidou, 33, "C33");
    row(TalkerSystem::Beidou, 201, "C1");
    row(TalkerSystem::Beidou, 219, "C19");
    row(TalkerSystem::Beidou, 463, "C63");
    row(TalkerSystem::Qzss, 2, "J2");
    row(TalkerSystem::Qzss, 194, "J2");
    row(TalkerSystem::Navic, 5, "I5");
    row(TalkerSystem::Gps, 0, "-");
    row(TalkerSystem::Gps, -5, "-");
    row(TalkerSystem::Beidou, 100, "-");
    row(TalkerSystem::Mixed, 99999, "-");
}

void SentencesTest::SatelliteNumbers()
{
    QFETCH(int, talker);
    QFETCH(int, number);
    QFETCH(QByteArray, expected);
    const gnss::SatelliteId id = gnss::IdentifySatellite(TalkerSystem(talker), number);
    QCOMPARE(id.svid == 0 ? QByteArray("-") : gnss::kSystemLetters[int(id.system)] + QByteArray::number(id.svid),
             expected);
}

void SentencesTest::Carriers()
{
    QCOMPARE(gnss::CarrierFrequency(System::Gps, 8), 1176.45F);
    // Unknown ids fall back to the first signal and never read beyond the table.
    for (int id = 0; id < 256; ++id) {
        for (int system = 0; system < gnss::kSystems; ++system) {
            QVERIFY(gnss::CarrierFrequency(System(system), quint8(id)) > 1000);
        }
    }
    QCOMPARE(gnss::CarrierFrequency(System::Galileo, 255), 1575.42F);
}

void SentencesTest::MessagesKeepTheSentencesForm()
{
    Outcome outcome(Sentence("GPGGA,123519.25,4807.038,N,01131.000,W,2,08,0.9,545.4,M,46.9,M,,") +
                    Sentence("GPRMC,123519.25,A,4807.038,N,01131.000,W,022.4,084.4,230394,003.1,W,D") +
                    Sentence("GPVTG,054.7,T,034.4,M,005.5,N,010.2,K,D") +
                    Sentence("GPZDA,123519.25,23,03,1994,-05,30") +
                    Sentence("GPGLL,4807.038,N,01131.000,W,123519.25,A,D"));
    const auto gga = outcome.got.LastMessage<gnss::MsgGga>(gnss::MsgTypeGga);
    QCOMPARE(gga.utcTime, 123519.25);
    QCOMPARE(gga.latitude, 4807.038);
    QCOMPARE(gga.lonDirection, 'W');
    QCOMPARE(int(gga.mode), 2);
    QCOMPARE(int(gga.svNumInUse), 8);
    QCOMPARE(gga.altitude, 545.4);
    QCOMPARE(gga.altitudeUnits, 'M');
    const auto rmc = outcome.got.LastMessage<gnss::MsgRmc>(gnss::MsgTypeRmc);
    QCOMPARE(rmc.posStatus, 'A');
    QCOMPARE(rmc.knotSpd, 22.4F);
    QCOMPARE(rmc.course, 84.4F);
    QCOMPARE(rmc.date, 230394U);
    QCOMPARE(rmc.magDec, 3.1F);
    QCOMPARE(rmc.magDecDir, 'W');
    QCOMPARE(rmc.mode, 'D');
    const auto vtg = outcome.got.LastMessage<gnss::MsgVtg>(gnss::MsgTypeVtg);
    QCOMPARE(vtg.magCourse, 34.4F);
    QCOMPARE(vtg.kmSpeed, 10.2F);
    const auto zda = outcome.got.LastMessage<gnss::MsgZda>(gnss::MsgTypeZda);
    QCOMPARE(zda.date, 230394U);
    QCOMPARE(int(zda.hourBias), -5);
    QCOMPARE(int(zda.minBias), 30);
    const auto gll = outcome.got.LastMessage<gnss::MsgGll>(gnss::MsgTypeGll);
    QCOMPARE(gll.longitude, 1131.0);
    QCOMPARE(gll.status, 'A');
    const gnss::FixRecord fix = outcome.got.fixes.at(0);
    QVERIFY(std::abs(fix.speed - 22.4 * 1852 / 3600) < 1e-5);
    QCOMPARE(fix.year, 1994U);
    QCOMPARE(fix.second, 19.25);
}

QTEST_GUILESS_MAIN(SentencesTest)
#include "SentencesTest.moc"
