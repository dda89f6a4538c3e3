// SPDX-License-Identifier: MIT
#include "ReceiverDriver.h"

#include "protocol/CommandTable.h"

#include <random>

namespace {

std::string AtHex(const std::string& frame)
{
    return "AT+GNSSHEX=" + QByteArray::fromStdString(frame).toHex().toStdString() + "\r\n";
}

std::string AckLine(std::uint16_t id, std::uint16_t status)
{
    return "+GNSSHEX:" + QByteArray::fromStdString(receiver::MakeAck(id, status)).toHex().toStdString() + "\r\n";
}

} // namespace

class TestReceiverCommands : public QObject {
    Q_OBJECT

private slots:
    // Each form of each command at its accepted lengths, and just outside them.
    void LengthsOfEveryForm()
    {
        ReceiverDriver driver(ReceiverDriver::Idle());
        for (const protocol::CommandForm& form : protocol::kCommandForms) {
            for (const int length : {form.minPayload - 1, int(form.minPayload), form.maxPayload + 1}) {
                if (length < 0 || length > static_cast<int>(protocol::kMaxFramePayload)) {
                    continue;
                }
                const bool fits = std::any_of(std::begin(protocol::kCommandForms),
                                              std::end(protocol::kCommandForms), [&](const auto& other) {
                                                  return other.id == form.id && other.word1 == form.word1 &&
                                                         length >= other.minPayload && length <= other.maxPayload;
                                              });
                // Zeros are accepted, or no good values.
                const int status = driver.Command(form.id, std::string(std::size_t(length), '\0'), form.word1);
                QVERIFY2(fits ? status == 0 || status == 2 : status == 1,
                         qPrintable(QString("%1 with %2: %3").arg(form.id).arg(length).arg(status)));
            }
        }
        for (const int id : {0, 13, 256, 259, 512, 523, 768, 781, 1027, 1029, 0x8001, 65535}) {
            QCOMPARE(driver.Command(id, "\1"), 3);
        }
        QCOMPARE(driver.Command(257, std::string(7401, 'x')), 1);
        QCOMPARE(driver.Command(3, Hex("0101010101"), 7), 3);
        QCOMPARE(driver.Command(5, "\1", protocol::kStartWord), 3);
    }

    void Values()
    {
        struct Row {
            int id;
            int word1;
            const char* accepted; ///< payloads
            const char* refused;
        };
        const Row rows[] = {
            {1, 0, "ffffffffffffffffffffffff", ""},
            {2, 0, "00000000", ""},
            {3, 0, "0100010001", "0100020001"},
            {3, 3, "0100010001", "0100010002 0200010001"},
            {3, 0x104, "03000200ff00", "03000100ff00"},
            {4, 0, "01", "02"},
            {5, 0, "aa 0101010101010100", "0101010101010102"},
            {6, 0, "0102", "0201"},
            {7, 0, "0000", "0101"},
            {8, 0, "010101", "030101"},
            {9, 0, "02", "03"},
            {10, 0, "01ff", "0214"},
            {11, 0, "0001", "0002"},
            {12, 0, "02", "03"},
            {513, 0,
             "0003000000005300000001000000", // then week 1024, and second 604800
             "0004000000005300000001000000 0003803a09005300000001000000"},
            {514, 0,
             "00000000000021403333333333b347400a00000000", // then 180.5 degrees,
                                                           // and none
             "00000000009066403333333333b347400a00000000 "
             "000000000000f87f3333333333b347400a00000000"},
            {770, 0,
             "0000800000008000010000000900010100000000", // then beyond the pole and
                                                         // the date line
             "0100800000000000010000000900000000000000 "
             "0000000000000080010000000900000000000000"},
            {1028, 0, "ea07021c173b3b00e7030100", "ea07021d173b3b0000000100 ea07021c1800000000000100"},
        };
        ReceiverDriver driver(ReceiverDriver::Idle());
        for (const Row& row : rows) {
            for (const int status : {0, 2}) {
                for (const QString& hex : QString(status == 0 ? row.accepted : row.refused).split(' ')) {
                    QVERIFY2(hex.isEmpty() || driver.Command(row.id, Hex(hex.toLatin1()), row.word1) == status,
                             qPrintable(QString("%1: %2").arg(row.id).arg(hex)));
                }
            }
        }
    }

    void SettingsAreKeptAndObeyed()
    {
        ReceiverDriver driver(ReceiverDriver::Kept());
        for (const auto& [id, payload] : {std::pair(6, "0102"), std::pair(8, "010001"), std::pair(10, "01c8"),
                                          std::pair(12, "01"), std::pair(5, "0001000000000100")}) {
            QCOMPARE(driver.Command(id, Hex(payload)), 0);
        }
        // The change tells itself behind the acknowledgement.
        QCOMPARE(driver.Frames(protocol::RptMessage + protocol::MsgTypeNmeaMode).size(), std::size_t{1});
        const receiver::Configuration& settings = driver.receiver.Settings();
        QVERIFY(settings.acquisitionLowPower && !settings.trackingLowPower && settings.pps);
        QVERIFY(settings.ppsWidth == 200 && settings.priority == 1 && settings.antiJam[2] == 1);
        // GLL and ZDA only: the payload's order is not the form's.
        driver.Listen(4000);
        QVERIFY(driver.CountSentences("GLL") == 4 && driver.CountSentences("ZDA") == 4);
        QCOMPARE(driver.messages.size(), std::size_t{8});
        // The probe changes nothing, the mask gives all back.
        QCOMPARE(driver.Command(Hex("7e040e00050000000000010000 7e")), 0);
        QCOMPARE(int(settings.sentences), 2 | 64);
        QCOMPARE(driver.Command(Hex("7e0413000300040100000600030002 00ff007e")), 0);
        QCOMPARE(int(settings.sentences), 255);
        // A start while it runs is acknowledged and does not begin the search anew.
        const receiver::Millis begun = driver.receiver.Engine().StartedAt();
        QVERIFY(driver.Command(kStart) == 0 && driver.receiver.Engine().StartedAt() == begun);
        QVERIFY(driver.Command(kStop) == 0 && driver.Answer("", 5000).empty());
    }

    void CommandsInPiecesAndNoise()
    {
        ReceiverDriver driver(ReceiverDriver::Idle());
        driver.messages.clear();
        std::mt19937 random(3);
        std::string stream;
        for (int i = 0; i < 200; ++i) {
            for (unsigned n = random() % 40; n > 0; --n) {
                const char noise = static_cast<char>(random());
                stream.push_back(noise == 0x7E ? 'A' : noise);
            }
            // A flag alone, and a header whose lengths disagree, are noise too.
            stream += i % 3 == 0 ? std::string("\x7e")
                                 : std::string("\x7e\x04\x19\x00\x01\x00\x03\x00\x00\x00\x09\x00", 12);
            stream += i % 2 == 0 ? kStart : kStop;
        }
        for (std::size_t at = 0; at < stream.size();) {
            const std::size_t count = 1 + random() % 30;
            driver.SendBytes(stream.substr(at, count));
            at += count;
        }
        QCOMPARE(driver.Frames(protocol::RptAck).size(), std::size_t{200});

        // A frame that never ends does not swallow the next one for good.
        driver.Answer(std::string("\x7e\x04\x98\x3a\x03\x02\0\0\0\0\x8b\x3a", 12), 600);
        QCOMPARE(driver.Command(kStop), 0);
    }

    void AtText()
    {
        auto options = ReceiverDriver::Idle();
        options.product = protocol::kAtProduct;
        ReceiverDriver driver(options);
        QCOMPARE(driver.Answer("AT+GNSSSTART=1,1,1,0\r\n"), "OK\r\n" + AckLine(1, 0));
        QCOMPARE(driver.Answer("AT+GNSSSTOP\r\n"), "OK\r\n" + AckLine(2, 0));
        QVERIFY(!driver.receiver.Running());
        QCOMPARE(driver.Answer(AtHex(Frame(9, "\2"))), AckLine(9, 0));
        QCOMPARE(driver.Answer(AtHex(Frame(9, "\7"))), AckLine(9, 2));
        for (const char* wrong : {"AT+NONSENSE\r\n", "AT+GNSSSTART=1,1\r\n", "AT+GNSSHEX=7e0\r\n",
                                  "AT+GNSSHEX=xx\r\n", "AT+GNSSHEX=\r\n", "AT+GNSSHEX=7e047e\r\n"}) {
            QCOMPARE(driver.Answer(wrong), std::string("ERROR\r\n"));
        }
        QCOMPARE(driver.Answer("AT\r"), std::string("OK\r\n"));
        // Ready frames come unwrapped also on this product; what is answered is
        // text. Sentences stay plain.
        QVERIFY(driver.Answer(Hex("7e040d0002010000010000007e")).find(AckLine(258, 0) + "+GNSSHEX:7e04") == 0);
        driver.Answer("AT+GNSSSTART=1,1,1,0\r\n", 1000);
        QCOMPARE(driver.CountSentences("GGA"), 10);
        // The largest history goes in as one line.
        QCOMPARE(driver.Answer(AtHex(Frame(257, std::string(protocol::kMaxHistoryBlock, 'x')))), AckLine(257, 2));
        // Other products do not speak AT.
        QCOMPARE(ReceiverDriver(ReceiverDriver::Idle()).Answer("AT+GNSSSTART=1,1,1,0\r\n", 1000), std::string());
    }
};

QTEST_GUILESS_MAIN(TestReceiverCommands)
#include "tst_commands.moc"
