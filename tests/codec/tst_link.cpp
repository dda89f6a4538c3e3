// SPDX-License-Identifier: MIT
#include "Collector.h"

#include "codec/Geodesy.h"

#include <QtTest>

#include <cmath>

namespace {

QByteArray Hex(const char* text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class LinkTest : public QObject {
    Q_OBJECT

private slots:
    void EncodesTheKnownFrames()
    {
        Link link;
        QCOMPARE(link.Encode(protocol::CmdStop, {}), Hex("7e 04 0d 00 02 00 00 00 00 00 00 00 7e"));
        QCOMPARE(link.Encode(protocol::CmdReadHistory, {}), Hex("7e 04 0d 00 02 01 00 00 01 00 00 00 7e"));
        QCOMPARE(link.Encode(protocol::CmdPps, Hex("01 14")), Hex("7e 04 0f 00 0a 00 00 00 00 00 02 00 01 14 7e"));
        QCOMPARE(link.Encode(protocol::CmdPassThrough, "anything"), QByteArray("anything"));
        // A payload of a wrong length is the receiver's to refuse.
        QCOMPARE(link.Encode(protocol::CmdConstellations, "x").size(), 14);
        const QByteArray largest(int(protocol::kMaxFramePayload), 'h');
        QCOMPARE(link.Encode(protocol::CmdInjectHistory, largest).size(), 15000);
        QCOMPARE(link.Encode(protocol::CmdConstellations, QByteArray(5, '\0'), 18).size(), 18);

        QVERIFY(link.Encode(protocol::CmdInjectHistory, largest + 'h', 20000).isEmpty());
        QVERIFY(link.Encode(protocol::CmdConstellations, QByteArray(5, '\0'), 17).isEmpty());
        QVERIFY(link.Encode(13, "x").isEmpty() && link.Encode(0, "x").isEmpty());
        QVERIFY(link.Encode(0x10003, QByteArray(5, '\0')).isEmpty()); // not id 3
        QVERIFY(link.Encode(protocol::CmdPassThrough, {}).isEmpty());
        QVERIFY(link.Encode(protocol::CmdPassThrough, "12345", 4).isEmpty());
        quint8 out[32];
        const quint8 payload[5] = {};
        QCOMPARE(link.codec.Encode(protocol::CmdStop, nullptr, 0, nullptr, 100), -1);
        QCOMPARE(link.codec.Encode(protocol::CmdConstellations, nullptr, 5, out, sizeof out), -1);
        QCOMPARE(link.codec.Encode(protocol::CmdPassThrough, payload, 0xFFFFFFFF, out, sizeof out), -1);
        QCOMPARE(link.codec.Encode(protocol::CmdConstellations, payload, 0xFFFFFFFF, out, 0xFFFFFFFF), -1);
    }

    void SentFramesAreTold()
    {
        Link link;
        const QByteArray stop = link.Encode(protocol::CmdStop, {});
        link.Encode(protocol::CmdPassThrough, stop + Frame(protocol::CmdPps, "ab"));
        link.Encode(protocol::CmdPassThrough, "AT+GNSSHEX=" + Frame(protocol::CmdReports, "ab").toHex() + "\r\n");
        link.Encode(protocol::CmdPassThrough, "AT+GNSSSTART=1,1,1,0\r\n");
        link.Encode(protocol::CmdPassThrough, "AT+GNSSHEX=7e04zz\r\n");
        link.Encode(4000, "x");
        QVERIFY(link.got.numbers.isEmpty());
        link.Say("\n");
        QCOMPARE(link.got.Images(protocol::CB_PACKAGE),
                 (QByteArrayList{Hex("0401 0200 0000"), Hex("0401 0200 0000"), Hex("0401 0a00 0200"),
                                 Hex("0401 0b00 0200"), Hex("0401 0100 0000")}));
        for (int i = 0; i < 100000; ++i) {
            link.Encode(protocol::CmdStop, {}, 13);
        }
        link.Say("\n");
        QCOMPARE(link.got.Count(protocol::CB_PACKAGE), 5 + int(codec::Codec::kMaxQueuedPackages));
    }

    void FrameInsideASentence()
    {
        const QByteArray sentence = Sentence("GPTXT,01,01,02,a~b");
        for (int cut = 0; cut <= sentence.size(); ++cut) {
            Link link;
            // The acknowledgement does not wait for the sentence.
            link.Say(sentence.left(cut) + Frame(protocol::RptAck, Hex("24 0a 7e 04")));
            QCOMPARE(link.got.Count(protocol::CB_ACK), 1);
            link.Say(sentence.mid(cut));
            // Behind the CR a sentence is complete whatever comes.
            const QByteArray expected = cut == sentence.size() - 1 ? sentence.chopped(1) : sentence;
            QCOMPARE(link.got.slots_, QByteArrayList{expected});
        }
    }

    void AtForm()
    {
        const QByteArray digits = Frame(protocol::RptAck, Hex("0200 0000")).toHex();
        const auto acks = [](const QByteArray& bytes) {
            Link link;
            link.Say(bytes);
            return link.got.Count(protocol::CB_ACK);
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

    void AcknowledgementsAndSleepNotices()
    {
        Link link;
        link.Say(Frame(protocol::RptAck, Hex("0300 0200")) + Frame(protocol::RptAck, Hex("0102 0700 ff")) +
                 Frame(protocol::RptAck, Hex("0300 02")) + Frame(protocol::RptAck, {}) + Frame(0x9999, "unknown"));
        QCOMPARE(link.got.Images(protocol::CB_ACK), (QByteArrayList{Hex("03000200"), Hex("01020700")}));
        QCOMPARE(link.got.Count(protocol::CB_PACKAGE), 5);
        QCOMPARE(link.got.Images(protocol::CB_PACKAGE).last(), Hex("0400 9999 0700"));

        const QByteArray going = Frame(protocol::RptSleep, QByteArray(1, '\0'));
        const QByteArray waiting = Frame(protocol::RptSleep, "\1");
        link.Say(going + waiting + Frame(protocol::RptSleep, {}));
        QCOMPARE(link.got.Count(protocol::CB_SLEEP_WAKEUP), 1);
        link.codec.SetSleepSwitch(0);
        link.Say(going + waiting);
        QCOMPARE(link.got.Count(protocol::CB_SLEEP_WAKEUP), 3);
        link.codec.SetSleepSwitch(1);
        link.Say(going);
        QCOMPARE(link.got.Count(protocol::CB_SLEEP_WAKEUP), 3);
    }

    void HistoryParts()
    {
        const auto part = [](int index, int parts, const QByteArray& bytes) {
            return Frame(protocol::RptHistory, bytes, index, parts);
        };
        Link link;
        link.Say(part(0, 1, "whole"));
        link.Say(part(0, 3, "a") + part(1, 3, "bb") + Frame(protocol::RptAck, Hex("02010000")) +
                 part(2, 3, "ccc"));
        link.Say(part(0, 2, "lost") + part(0, 2, "x") + part(1, 2, "y"));
        QCOMPARE(link.got.Images(protocol::CB_HIS_INFO), (QByteArrayList{"whole", "abbccc", "xy"}));
        // Parts out of order, missing, contradicting each other or too large give
        // nothing.
        link.Say(part(1, 2, "y") + part(0, 3, "a") + part(2, 3, "c") + part(0, 2, "a") + part(1, 3, "b") +
                 part(0, 0, "z") + part(0, 2, QByteArray(3701, 'h')) + part(1, 2, QByteArray(3700, 'h')));
        QCOMPARE(link.got.Count(protocol::CB_HIS_INFO), 3);
        link.Say(part(0, 2, QByteArray(3700, 'h')) + part(1, 2, QByteArray(3700, 'h')));
        QCOMPARE(link.got.Images(protocol::CB_HIS_INFO).last().size(), 7400);
    }

    void MessagesHaveTheirLength()
    {
        for (const protocol::MessageLayout& layout : protocol::kMessageLayouts) {
            const auto frame = [&layout](std::size_t length) {
                return Frame(int(protocol::RptMessage + layout.msgType), QByteArray(int(length), '\x11'));
            };
            Link link;
            link.Say(frame(layout.minPayload - 1) + frame(layout.fullPayload + 1) + frame(layout.minPayload) +
                     frame(layout.fullPayload));
            const QByteArrayList images = link.got.Images(protocol::CB_MESSAGE);
            QVERIFY(images.size() == 2 && Collector::As<quint32>(images[0]) == layout.msgType);
            QCOMPARE(images[0].mid(4),
                     QByteArray(int(layout.minPayload), '\x11').leftJustified(int(layout.fullPayload), '\0'));
            QCOMPARE(images[1].size(), 4 + int(layout.fullPayload));
        }
        Link link;
        link.Say(Frame(protocol::RptMessage + 8, "ignored") + Frame(protocol::RptMessage + 102, {}));
        QVERIFY(link.got.Count(protocol::CB_MESSAGE) == 0 && link.got.Count(protocol::CB_PACKAGE) == 2);
    }

    void CallsFromInsideRecords()
    {
        struct Caller : Collector {
            void OnSentence(const char* text, std::size_t length) override
            {
                Collector::OnSentence(text, length);
                if (reset) {
                    codec->Reset();
                    codec->SetSink(this);
                } else if (whole.size() == 1) {
                    Feed(*codec, Sentence("GPTXT,01,01,02,nested"));
                    quint8 out[13];
                    codec->Encode(protocol::CmdStop, nullptr, 0, out, sizeof out);
                }
            }
            codec::Codec* codec = nullptr;
            bool reset = false;
        };
        Caller caller;
        codec::Codec codec(&caller);
        caller.codec = &codec;
        Feed(codec, Sentence("GPTXT,01,01,02,first") + Sentence("GPTXT,01,01,02,second"));
        QCOMPARE(caller.whole.size(), 3);
        QVERIFY(caller.whole[1].contains("second") && caller.whole[2].contains("nested"));
        Feed(codec, "\n");
        QCOMPARE(caller.Count(protocol::CB_PACKAGE), 1);
        caller.reset = true;
        Feed(codec, Sentence("GPTXT,01,01,02,first") + "$GPTXT,01,01,02,half");
        QCOMPARE(codec.Counters().bytes, quint64(0));
        Feed(codec, "*00\r\n");
        QCOMPARE(int(codec.Counters().checksumErrors), 0);
    }

    void EastNorthUp()
    {
        // Reference, position, east, north, up; worked out over the reduced
        // latitude and two rotations, in 50-digit arithmetic.
        const double rows[][9] = {{39.9042, 116.4074, 43.5, 39.9051, 116.4060, 50.25, //
                                   -119.717676677632, 99.9312483026719, 6.74809314121024},
                                  {-45.8775672, -170.5001113, 14.2, -45.8775655, -170.5001117, 14.8, //
                                   -0.0310536629815873, 0.188953613953328, 0.599999997121352},
                                  {10.0, 179.9999, 0.5, 10.0001, -179.9999, 0.5, //
                                   21.9278678286432, 11.060784061454, -4.73422705639022e-5},
                                  {48.1, 11.5, 500, -33.9, 151.2, 58, //
                                   3427663.14696257, 667284.092585263, -11698855.409427},
                                  {89.9999, 45, 100, 89.9999, -135, 100, //
                                   0.0, 22.3391449783719, -3.89891631966286e-5},
                                  {47.0, 8.0, 400, 47.0, 8.0, 20400, 0.0, 0.0, 20000.0}};
        for (const auto& row : rows) {
            double enu[3];
            codec::GeodeticToEnu(row, row + 3, enu);
            QVERIFY2(std::hypot(enu[0] - row[6], enu[1] - row[7], enu[2] - row[8]) < 1e-7,
                     qPrintable(QString::number(row[0])));
        }

        using Vector = std::array<double, 3>;
        const auto convert = [](const Vector& reference, const Vector& position) {
            Vector enu;
            codec::GeodeticToEnu(reference.data(), position.data(), enu.data());
            return enu;
        };
        // Longitude first, heights zero: the track view's way. Latitude first with
        // heights: the statistics' way.
        const Vector east = convert({11.0, 48.0, 0}, {11.001, 48.0, 0});
        QVERIFY(std::abs(east[0] - 74.6) < 0.1 && std::abs(east[1]) < 0.01);
        const Vector north = convert({48.0, 11.0, 5}, {48.001, 11.0, 5});
        QVERIFY(std::abs(north[1] - 111.2) < 0.1 && std::abs(north[0]) < 0.01);
        // A number that can only be a longitude settles it, in either array.
        QVERIFY(convert({116.0, 39.9, 0}, {116.001, 39.9, 0}) == convert({39.9, 116.0, 0}, {39.9, 116.001, 0}));
        QVERIFY(convert({39.9, 116.0, 7}, {39.9, 116.001, 9}) == convert({116.0, 39.9, 7}, {116.001, 39.9, 9}));
        const Vector across = convert({-45.0, 89.9, 0}, {-45.0, 90.1, 0});
        QVERIFY(std::abs(across[0] - 15769) < 5 && std::abs(across[1]) < 50);
        // Nulls and numbers that are none.
        double enu[3] = {1, 2, 3};
        codec::GeodeticToEnu(nullptr, enu, nullptr);
        codec::GeodeticToEnu(nullptr, enu, enu);
        QCOMPARE(enu[1], 0.0);
        QVERIFY(std::isnan(convert({NAN, NAN, NAN}, {1, 2, 3})[0]));
        QVERIFY(std::isnan(convert({11.0, 48.0, 0}, {INFINITY, 48.0, 0})[0]));
        QVERIFY(convert({11.0, 48.0, 0}, {11.0, 48.0, 0}) == (Vector{0, 0, 0}));
    }
};

QTEST_GUILESS_MAIN(LinkTest)
#include "tst_link.moc"
