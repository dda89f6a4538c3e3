#include "Collector.h"

#include "gnssutils/Geodesy.h"
#include "gnssutils/link/CommandEncoder.h"

#include <QtTest>

#include <cmath>

namespace {

struct Link {
    Link() : codec(&got) {}
    void Say(const QByteArray& bytes) { Feed(codec, bytes); }
    /// Encodes and returns the frame; empty for a negative result.
    QByteArray Encode(quint32 id, const QByteArray& payload, int outSize = 15000)
    {
        QByteArray out(outSize, '\0');
        const int length =
            codec.Encode(id, payload.constData(), std::size_t(payload.size()), out.data(), std::size_t(outSize));
        return length < 0 ? QByteArray() : out.left(length);
    }

    Collector got;
    gnss::Codec codec;
};

QByteArray Hex(const char* text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class LinkTest : public QObject {
    Q_OBJECT

private slots:
    void EncodesTheKnownFrames();
    void EncodeRefuses();
    void CommandsAreJudged_data();
    void CommandsAreJudged();
    void SentFramesAreTold();
    void Acknowledgements();
    void FrameInsideASentence();
    void AtForm();
    void SleepNotices();
    void HistoryParts();
    void MessagesHaveTheirLength();
    void NestedCallsAreTakenUp();
    void ResetFromARecord();
    void EastNorthUp_data();
    void EastNorthUp();
    void EastNorthUpOrders();
};

void LinkTest::EncodesTheKnownFrames()
{
    Link link;
    QCOMPARE(link.Encode(gnss::CmdStop, {}), Hex("7e 04 0d 00 02 00 00 00 00 00 00 00 7e"));
    QCOMPARE(link.Encode(gnss::CmdNmea, QByteArray(1, '\0')), Hex("7e 04 0e 00 05 00 00 00 00 00 01 00 00 7e"));
    QCOMPARE(link.Encode(gnss::CmdReadHistory, {}), Hex("7e 04 0d 00 02 01 00 00 01 00 00 00 7e"));
    QCOMPARE(link.Encode(gnss::CmdPps, Hex("01 14")), Hex("7e 04 0f 00 0a 00 00 00 00 00 02 00 01 14 7e"));
    const QByteArray ready = Hex("7e 04 12 00 03 00 03 00 00 00 05 00 01 00 01 00 01 7e");
    QCOMPARE(link.Encode(gnss::CmdPassThrough, ready), ready);
    QCOMPARE(link.Encode(gnss::CmdPassThrough, "anything"), QByteArray("anything"));
}

void LinkTest::EncodeRefuses()
{
    Link link;
    quint8 out[32];
    const quint8 payload[5] = {};
    QVERIFY(link.Encode(13, "x").isEmpty());
    QVERIFY(link.Encode(0, "x").isEmpty());
    QVERIFY(link.Encode(0x10003, QByteArray(5, '\0')).isEmpty()); // not id 3
    QVERIFY(link.Encode(gnss::CmdPassThrough, {}).isEmpty());
    QVERIFY(link.Encode(gnss::CmdPassThrough, "12345", 4).isEmpty());
    QVERIFY(link.Encode(gnss::CmdConstellations, QByteArray(5, '\0'), 17).isEmpty());
    QCOMPARE(link.Encode(gnss::CmdConstellations, QByteArray(5, '\0'), 18).size(), 18);
    QCOMPARE(link.codec.Encode(gnss::CmdStop, nullptr, 0, nullptr, 100), -1);
    QCOMPARE(link.codec.Encode(gnss::CmdConstellations, nullptr, 5, out, sizeof out), -1);
    QCOMPARE(link.codec.Encode(gnss::CmdPassThrough, payload, 0xFFFFFFFF, out, sizeof out), -1);
    QCOMPARE(link.codec.Encode(gnss::CmdConstellations, payload, 0xFFFFFFFF, out, 0xFFFFFFFF), -1);
    QCOMPARE(link.Encode(gnss::CmdInjectHistory, QByteArray(int(gnss::kMaxFramePayload), 'h')).size(), 15000);
    QVERIFY(
        link.Encode(gnss::CmdInjectHistory, QByteArray(int(gnss::kMaxFramePayload) + 1, 'h'), 20000).isEmpty());
    // A payload of a wrong length is the receiver's to refuse.
    QCOMPARE(link.Encode(gnss::CmdConstellations, "x").size(), 14);
}

void LinkTest::CommandsAreJudged_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("word1");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("check");
    const int accepted = int(gnss::CommandCheck::Accepted);
    const int badLength = int(gnss::CommandCheck::BadLength);
    const int unknown = int(gnss::CommandCheck::Unknown);
    QTest::newRow("start") << 1 << 3 << 12 << accepted;
    QTest::newRow("start, encoded") << 1 << 0 << 12 << accepted;
    QTest::newRow("start, short") << 1 << 3 << 11 << badLength;
    QTest::newRow("stop") << 2 << 0 << 0 << accepted;
    QTest::newRow("stop with a number") << 2 << 0 << 4 << accepted;
    QTest::newRow("stop between") << 2 << 0 << 2 << badLength;
    QTest::newRow("constellations") << 3 << 0 << 5 << accepted;
    QTest::newRow("NMEA mask") << 3 << 0x104 << 6 << accepted;
    QTest::newRow("NMEA mask, short") << 3 << 0x104 << 5 << badLength;
    QTest::newRow("other first word") << 3 << 9 << 5 << unknown;
    QTest::newRow("history") << 257 << 0 << 7400 << accepted;
    QTest::newRow("history too long") << 257 << 0 << 7401 << badLength;
    QTest::newRow("pass-through") << 512 << 0 << 5 << unknown;
    QTest::newRow("unknown") << 4000 << 0 << 5 << unknown;
}

void LinkTest::CommandsAreJudged()
{
    QFETCH(int, id);
    QFETCH(int, word1);
    QFETCH(int, length);
    QTEST(int(gnss::CheckCommand(quint16(id), quint16(word1), std::size_t(length))), "check");
}

void LinkTest::SentFramesAreTold()
{
    Link link;
    const QByteArray stop = link.Encode(gnss::CmdStop, {});
    link.Encode(gnss::CmdPassThrough, stop + Frame(gnss::CmdPps, "ab"));
    link.Encode(gnss::CmdPassThrough, "AT+GNSSHEX=" + Frame(gnss::CmdReports, "ab").toHex() + "\r\n");
    link.Encode(gnss::CmdPassThrough, "AT+GNSSSTART=1,1,1,0\r\n");
    link.Encode(gnss::CmdPassThrough, "AT+GNSSHEX=7e04zz\r\n");
    link.Encode(4000, "x");
    QVERIFY(link.got.numbers.isEmpty());
    link.Say("\n");
    const auto image = [](quint16 id, quint16 length) {
        const gnss::PackageRecord record{gnss::kFrameClass, 1, id, length};
        return QByteArray(reinterpret_cast<const char*>(&record), sizeof record);
    };
    QCOMPARE(link.got.Images(CB_PACKAGE),
             (QByteArrayList{image(2, 0), image(2, 0), image(10, 2), image(11, 2), image(1, 0)}));
    link.Say("\n");
    QCOMPARE(link.got.Count(CB_PACKAGE), 5);
    for (int i = 0; i < 100000; ++i) {
        link.Encode(gnss::CmdStop, {}, 13);
    }
    link.Say("\n");
    QCOMPARE(link.got.Count(CB_PACKAGE), 5 + int(gnss::Codec::kMaxQueuedPackages));
}

void LinkTest::Acknowledgements()
{
    Link link;
    link.Say(Frame(gnss::RptAck, Hex("0300 0200")) + Frame(gnss::RptAck, Hex("0102 0700 ff")) +
             Frame(gnss::RptAck, Hex("0300 02")) + Frame(gnss::RptAck, {}) + Frame(0x9999, "unknown"));
    QCOMPARE(link.got.Images(CB_ACK), (QByteArrayList{Hex("03000200"), Hex("01020700")}));
    QCOMPARE(link.got.Count(CB_PACKAGE), 5);
    QCOMPARE(link.got.Images(CB_PACKAGE).last(), Hex("0400 9999 0700"));
}

void LinkTest::FrameInsideASentence()
{
    const QByteArray sentence = Sentence("GPTXT,01,01,02,a~b");
    const QByteArray frame = Frame(gnss::RptAck, Hex("24 0a 7e 04"));
    for (int cut = 0; cut <= sentence.size(); ++cut) {
        Link link;
        link.Say(sentence.left(cut) + frame + sentence.mid(cut));
        QCOMPARE(link.got.Count(CB_ACK), 1);
        // Behind the CR a sentence is complete whatever comes.
        const QByteArray expected = cut == sentence.size() - 1 ? sentence.chopped(1) : sentence;
        QCOMPARE(link.got.slots_, QByteArrayList{expected});
    }
    // The acknowledgement does not wait for the sentence.
    Link link;
    link.Say(sentence.left(5) + frame);
    QCOMPARE(link.got.Count(CB_ACK), 1);
    QVERIFY(link.got.slots_.isEmpty());
}

void LinkTest::AtForm()
{
    const QByteArray digits = Frame(gnss::RptAck, Hex("0200 0000")).toHex();
    const auto acks = [](const QByteArray& bytes) {
        Link link;
        link.Say(bytes);
        return link.got.Count(CB_ACK);
    };
    QCOMPARE(acks("+GNSSHEX:" + digits + "\r\n"), 1);
    QCOMPARE(acks("+GNSSHEX:" + digits.toUpper() + "\n"), 1);
    QCOMPARE(acks("OK\r\n+GNSSHEX:" + digits + "\r\nERROR\r\n+GNSSHEX:" + digits + "\r\n"), 2);
    QCOMPARE(acks("$GPGGA,10+GNSSHEX:" + digits + "\r\n"), 1);
    QCOMPARE(acks("+GNSS+GNSSHEX:" + digits + "\r\n"), 1);
    QCOMPARE(acks("+GNSSHEX:" + digits), 0);
    QCOMPARE(acks("+GNSSHEX:" + digits.chopped(1) + "\r\n"), 0);
    QCOMPARE(acks("+GNSSHEX:" + digits + "00\r\n"), 0);
    QCOMPARE(acks("+GNSSHEX:\r\n"), 0);
    QCOMPARE(acks("+GNSSHEX:" + QByteArray(40000, '7') + "\r\n+GNSSHEX:" + digits + "\r\n"), 1);
    Link link;
    link.Say("+GNSSHEX:7e04" + Sentence("GPTXT,01,01,02,x"));
    QCOMPARE(link.got.slots_.size(), 1);
}

void LinkTest::SleepNotices()
{
    Link link;
    const QByteArray going = Frame(gnss::RptSleep, QByteArray(1, '\0'));
    const QByteArray waiting = Frame(gnss::RptSleep, QByteArray(1, '\1'));
    const auto wakeUps = [&link] { return link.got.Count(CB_SLEEP_WAKEUP); };
    link.Say(going + waiting + Frame(gnss::RptSleep, {}));
    QCOMPARE(wakeUps(), 1);
    link.codec.SetSleepSwitch(0);
    link.Say(going + waiting);
    QCOMPARE(wakeUps(), 3);
    link.codec.SetSleepSwitch(1);
    link.Say(going);
    QCOMPARE(wakeUps(), 3);
}

void LinkTest::HistoryParts()
{
    const auto part = [](int index, int parts, const QByteArray& bytes) {
        return Frame(gnss::RptHistory, bytes, quint16(index), quint16(parts));
    };
    Link link;
    link.Say(part(0, 1, "whole"));
    link.Say(part(0, 3, "a") + part(1, 3, "bb") + Frame(gnss::RptAck, Hex("02010000")) + part(2, 3, "ccc"));
    link.Say(part(0, 2, "lost") + part(0, 2, "x") + part(1, 2, "y"));
    QCOMPARE(link.got.Images(CB_HIS_INFO), (QByteArrayList{"whole", "abbccc", "xy"}));
    // Parts out of order, missing, contradicting each other or too large give nothing.
    link.Say(part(1, 2, "y") + part(0, 3, "a") + part(2, 3, "c") + part(0, 2, "a") + part(1, 3, "b") +
             part(0, 0, "z"));
    const QByteArray half(3701, 'h');
    link.Say(part(0, 2, half) + part(1, 2, half));
    QCOMPARE(link.got.Count(CB_HIS_INFO), 3);
    link.Say(part(0, 2, QByteArray(3700, 'h')) + part(1, 2, QByteArray(3700, 'h')));
    QCOMPARE(link.got.Images(CB_HIS_INFO).last().size(), int(gnss::kMaxHistoryBlock));
}

void LinkTest::MessagesHaveTheirLength()
{
    for (const gnss::MessageLayout& layout : gnss::kMessageLayouts) {
        const auto frame = [&layout](std::size_t length) {
            return Frame(quint16(gnss::RptMessage + layout.msgType), QByteArray(int(length), '\x11'));
        };
        Link link;
        link.Say(frame(layout.minPayload - 1) + frame(layout.fullPayload + 1));
        QCOMPARE(link.got.messages.size(), 0);
        link.Say(frame(layout.minPayload) + frame(layout.fullPayload));
        QCOMPARE(link.got.messages.size(), 2);
        QCOMPARE(link.got.messages[0].type, layout.msgType);
        QCOMPARE(link.got.messages[0].payload,
                 QByteArray(int(layout.minPayload), '\x11').leftJustified(int(layout.fullPayload), '\0'));
        QCOMPARE(link.got.Images(CB_MESSAGE)[1].size(), 4 + int(layout.fullPayload));
    }
    Link link;
    link.Say(Frame(gnss::RptMessage + 8, "ignored") + Frame(gnss::RptMessage + 102, {}));
    QCOMPARE(link.got.messages.size(), 0);
    QCOMPARE(link.got.Count(CB_PACKAGE), 2);
}

void LinkTest::NestedCallsAreTakenUp()
{
    /// Decodes and encodes from inside its records.
    struct Nester : Collector {
        void OnSentence(const char* text, std::size_t length) override
        {
            Collector::OnSentence(text, length);
            if (whole.size() == 1) {
                Feed(*codec, Sentence("GPTXT,01,01,02,nested"));
                quint8 out[13];
                codec->Encode(gnss::CmdStop, nullptr, 0, out, sizeof out);
            }
        }
        gnss::Codec* codec = nullptr;
    };
    Nester nester;
    gnss::Codec codec(&nester);
    nester.codec = &codec;
    Feed(codec, Sentence("GPTXT,01,01,02,first") + Sentence("GPTXT,01,01,02,second"));
    QCOMPARE(nester.whole.size(), 3);
    QVERIFY(nester.whole[1].contains("second"));
    QVERIFY(nester.whole[2].contains("nested"));
    Feed(codec, "\n");
    QCOMPARE(nester.Count(CB_PACKAGE), 1);
}

void LinkTest::ResetFromARecord()
{
    struct Resetter : Collector {
        void OnSentence(const char*, std::size_t) override
        {
            codec->Reset();
            codec->SetSink(this);
        }
        gnss::Codec* codec = nullptr;
    };
    Resetter resetter;
    gnss::Codec codec(&resetter);
    resetter.codec = &codec;
    Feed(codec, Sentence("GPTXT,01,01,02,first") + "$GPTXT,01,01,02,half");
    QCOMPARE(codec.Counters().bytes, quint64(0));
    Feed(codec, "*00\r\n");
    QCOMPARE(int(codec.Counters().checksumErrors), 0);
}

void LinkTest::EastNorthUp_data()
{
    QTest::addColumn<QVector<double>>("numbers"); // reference, position, east, north, up
    // Worked out over the reduced latitude and two rotations, in 50-digit arithmetic.
    QTest::newRow("near") << QVector<double>{
        39.9042, 116.4074, 43.5, 39.9051, 116.4060, 50.25, -119.717676677632, 99.9312483026719, 6.74809314121024};
    QTest::newRow("southern and western") << QVector<double>{
        -45.8775672,       -170.5001113,     14.2, -45.8775655, -170.5001117, 14.8, -0.0310536629815873,
        0.188953613953328, 0.599999997121352};
    QTest::newRow("across the date line") << QVector<double>{
        10.0, 179.9999, 0.5, 10.0001, -179.9999, 0.5, 21.9278678286432, 11.060784061454, -4.73422705639022e-5};
    QTest::newRow("far") << QVector<double>{
        48.1, 11.5, 500, -33.9, 151.2, 58, 3427663.14696257, 667284.092585263, -11698855.409427};
    QTest::newRow("near the pole") << QVector<double>{
        89.9999, 45, 100, 89.9999, -135, 100, -5.13485915207731e-50, 22.3391449783719, -3.89891631966286e-5};
    QTest::newRow("above") << QVector<double>{
        47.0, 8.0, 400, 47.0, 8.0, 20400, 7.80641440459701e-46, 2.67123091921005e-45, 20000.0};
}

void LinkTest::EastNorthUp()
{
    QFETCH(QVector<double>, numbers);
    double enu[3];
    gnss::GeodeticToEnu(numbers.constData(), numbers.constData() + 3, enu);
    for (int i = 0; i < 3; ++i) {
        QVERIFY2(std::abs(enu[i] - numbers[6 + i]) < 1e-7, qPrintable(QString::number(enu[i], 'g', 17)));
    }
}

void LinkTest::EastNorthUpOrders()
{
    const auto convert = [](double r0, double r1, double r2, double p0, double p1, double p2) {
        const double reference[3] = {r0, r1, r2};
        const double position[3] = {p0, p1, p2};
        double enu[3];
        gnss::GeodeticToEnu(reference, position, enu);
        return QVector<double>{enu[0], enu[1], enu[2]};
    };
    // Longitude first, heights zero: the track view's way.
    const QVector<double> east = convert(11.0, 48.0, 0, 11.001, 48.0, 0);
    QVERIFY(std::abs(east[0] - 74.6) < 0.1 && std::abs(east[1]) < 0.01);
    // Latitude first with heights: the statistics' way.
    const QVector<double> north = convert(48.0, 11.0, 5, 48.001, 11.0, 5);
    QVERIFY(std::abs(north[1] - 111.2) < 0.1 && std::abs(north[0]) < 0.01);
    // A number that can only be a longitude settles it, in either array.
    QCOMPARE(convert(116.0, 39.9, 0, 116.001, 39.9, 0), convert(39.9, 116.0, 0, 39.9, 116.001, 0));
    QCOMPARE(convert(39.9, 116.0, 7, 39.9, 116.001, 9), convert(116.0, 39.9, 7, 116.001, 39.9, 9));
    const QVector<double> across = convert(-45.0, 89.9, 0, -45.0, 90.1, 0);
    QVERIFY(std::abs(across[0] - 15769) < 5 && std::abs(across[1]) < 50);
    const QVector<double> same = convert(11.0, 48.0, 0, 11.0, 48.0, 0);
    QCOMPARE(same, (QVector<double>{0, 0, 0}));
    // Nulls and numbers that are none.
    double enu[3] = {1, 2, 3};
    gnss::GeodeticToEnu(nullptr, enu, nullptr);
    gnss::GeodeticToEnu(nullptr, enu, enu);
    QCOMPARE(enu[1], 0.0);
    QVERIFY(std::isnan(convert(NAN, NAN, NAN, 1, 2, 3)[0]));
    QVERIFY(std::isnan(convert(11.0, 48.0, 0, INFINITY, 48.0, 0)[0]));
    QCOMPARE(convert(11.0, 48.0, 0, 11.0, 48.0, 0), same);
}

QTEST_GUILESS_MAIN(LinkTest)
#include "LinkTest.moc"
