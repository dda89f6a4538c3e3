#include "ReceiverDriver.h"

#include "codec/CommandTable.h"

#include <random>

namespace {

std::string P(std::initializer_list<int> bytes)
{
    std::string payload;
    for (const int byte : bytes) {
        payload.push_back(static_cast<char>(byte));
    }
    return payload;
}

std::string PgnssPosition(double longitude, double latitude)
{
    std::string payload(21, '\0');
    std::memcpy(&payload[0], &longitude, 8);
    std::memcpy(&payload[8], &latitude, 8);
    payload[16] = 10;
    return payload;
}

vrx::ReceiverOptions Idle(const char* fault = nullptr, int product = 0)
{
    auto options = ReceiverDriver::Options();
    options.idle = true;
    options.product = product;
    std::string error;
    if (fault != nullptr && !options.faults.Add(fault, error)) {
        qFatal("%s", error.c_str());
    }
    return options;
}

std::string AtHex(const std::string& frame)
{
    return "AT+GNSSHEX=" + QByteArray::fromStdString(frame).toHex().toStdString() + "\r\n";
}

std::string AckLine(std::uint16_t id, std::uint16_t status)
{
    return "+GNSSHEX:" + QByteArray::fromStdString(vrx::MakeAck(id, status)).toHex().toStdString() + "\r\n";
}

} // namespace

class TestReceiverCommands : public QObject {
    Q_OBJECT

private slots:
    // Each form of each command at its accepted lengths, and just outside them.
    void LengthsOfEveryForm()
    {
        ReceiverDriver driver(Idle());
        for (const gnss::CommandForm& form : gnss::kCommandForms) {
            for (const int length : {form.minPayload - 1, int(form.minPayload), form.maxPayload + 1}) {
                if (length < 0 || length > static_cast<int>(gnss::kMaxFramePayload)) {
                    continue;
                }
                std::string payload(static_cast<std::size_t>(length), '\0');
                if (form.word1 != 0 && form.id == gnss::CmdConstellations && length >= 4) {
                    payload[0] = form.word1 == gnss::kNmeaMaskWord ? 3 : 1;
                    payload[2] = form.word1 == gnss::kNmeaMaskWord ? 2 : 1;
                }
                const int status = driver.Command(ReceiverDriver::Frame(form.id, payload, form.word1));
                const auto check = gnss::CheckCommand(form.id, form.word1, payload.size());
                const QByteArray what = QByteArray::number(form.id) + " with " + QByteArray::number(length);
                if (check == gnss::CommandCheck::BadLength) {
                    QVERIFY2(status == gnss::AckBadLength, what);
                } else if (form.id == gnss::CmdInjectHistory || form.id == gnss::CmdUtcTime ||
                           gnss::FindAssistForm(form.id) != nullptr) {
                    QVERIFY2(status == gnss::AckBadParameter, what); // zeros are no block, date or item
                } else {
                    QVERIFY2(status == gnss::AckAccepted, what);
                }
            }
        }
        for (const int id : {0, 13, 256, 259, 512, 523, 768, 781, 1027, 1029, 0x8001, 65535}) {
            QCOMPARE(driver.Command(ReceiverDriver::Frame(static_cast<std::uint16_t>(id), "\1")),
                     int(gnss::AckRefused));
        }
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdConstellations, P({1, 1, 1, 1, 1}), 7)),
                 int(gnss::AckRefused));
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdNmea, P({1}), gnss::kStartWord)),
                 int(gnss::AckRefused));
    }

    void Values()
    {
        struct Row {
            int id;
            int word1;
            std::string payload;
            int status;
        };
        const Row rows[] = {
            {1, 0, std::string(12, '\xFF'), 0},
            {3, 0, P({1, 0, 1, 0, 1}), 0},
            {3, 0, P({1, 0, 2, 0, 1}), 2},
            {3, 3, P({1, 0, 1, 0, 2}), 2},
            {3, 3, P({2, 0, 1, 0, 1}), 2},
            {3, 0x0104, P({3, 0, 2, 0, 0xFF, 0}), 0},
            {3, 0x0104, P({3, 0, 1, 0, 0xFF, 0}), 2},
            {4, 0, P({2}), 2},
            {5, 0, P({1, 1, 1, 1, 1, 1, 1, 2}), 2},
            {5, 0, P({0xAA}), 0},
            {6, 0, P({1, 2}), 0},
            {6, 0, P({2, 1}), 2},
            {7, 0, P({0, 0}), 0},
            {7, 0, P({1, 1}), 2},
            {8, 0, P({1, 1, 1}), 0},
            {8, 0, P({3, 1, 1}), 2},
            {9, 0, P({2}), 0},
            {9, 0, P({3}), 2},
            {10, 0, P({1, 255}), 0},
            {10, 0, P({2, 20}), 2},
            {11, 0, P({0, 2}), 2},
            {12, 0, P({3}), 2},
            {513, 0, P({0, 3, 0, 0, 0, 0, 83, 0, 0, 0, 1, 0, 0, 0}), 0},
            {513, 0, P({0, 4, 0, 0, 0, 0, 83, 0, 0, 0, 1, 0, 0, 0}), 2},
            {513, 0, P({0, 3, 0x80, 0x3A, 9, 0, 83, 0, 0, 0, 1, 0, 0, 0}), 2}, // 604800 s
            {514, 0, PgnssPosition(8.5, 47.4), 0},
            {514, 0, PgnssPosition(180.5, 47.4), 2},
            {514, 0, PgnssPosition(std::numeric_limits<double>::quiet_NaN(), 47.4), 2},
            {770, 0, P({0, 0, 0x80, 0, 0, 0, 0x80, 0, 1, 0, 0, 0, 9, 0, 1, 1, 0, 0, 0, 0}), 0},
            {770, 0, P({1, 0, 0x80, 0, 0, 0, 0, 0, 1, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 0}), 2},
            {770, 0, P({0, 0, 0, 0, 0, 0, 0, 0x80, 1, 0, 0, 0, 9, 0, 0, 0, 0, 0, 0, 0}), 2},
            {1028, 0, P({0xEA, 7, 2, 28, 23, 59, 59, 0, 0xE7, 3, 1, 0}), 0},
            {1028, 0, P({0xEA, 7, 2, 29, 23, 59, 59, 0, 0, 0, 1, 0}), 2},
            {1028, 0, P({0xEA, 7, 2, 28, 24, 0, 0, 0, 0, 0, 1, 0}), 2},
        };
        ReceiverDriver driver(Idle());
        int number = 0;
        for (const Row& row : rows) {
            const int status = driver.Command(ReceiverDriver::Frame(
                static_cast<std::uint16_t>(row.id), row.payload, static_cast<std::uint16_t>(row.word1)));
            QVERIFY2(status == row.status, qPrintable(QString("row %1: %2").arg(number).arg(status)));
            ++number;
        }
    }

    void SettingsAreKeptAndObeyed()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        ReceiverDriver driver(options);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(6, P({1, 2}))), 0);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(8, P({1, 0, 1}))), 0);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(10, P({1, 200}))), 0);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(12, P({1}))), 0);
        const vrx::Configuration& settings = driver.receiver.Settings();
        QVERIFY(settings.acquisitionLowPower && !settings.trackingLowPower && settings.pps);
        QCOMPARE(int(settings.ppsWidth), 200);
        QCOMPARE(int(settings.priority), 1);
        QCOMPARE(int(settings.antiJam[2]), 1);

        // GLL and ZDA only: the payload's order is not the form's.
        QCOMPARE(driver.Command(ReceiverDriver::Frame(5, P({0, 1, 0, 0, 0, 0, 1, 0}))), 0);
        // The change tells itself behind the acknowledgement.
        QCOMPARE(driver.Frames(gnss::RptMessage + gnss::MsgTypeNmeaMode).size(), std::size_t{1});
        QCOMPARE(driver.Command(ReceiverDriver::Frame(9, P({1}))), 0);
        driver.Run(2000);
        driver.messages.clear();
        driver.Run(4000);
        QCOMPARE(driver.messages.size(), std::size_t{2 * 20});
        QCOMPARE(driver.CountSentences("GLL"), 20);
        QCOMPARE(driver.CountSentences("ZDA"), 20);
        // The probe changes nothing, the mask gives all back.
        QCOMPARE(driver.Command(ReceiverDriver::Bytes("7e040e00050000000000010000 7e")), 0);
        QCOMPARE(int(settings.sentences), 2 | 64);
        QCOMPARE(driver.Command(ReceiverDriver::Bytes("7e0413000300040100000600030002 00ff007e")), 0);
        QCOMPARE(int(settings.sentences), 255);
        // BeiDou is the second byte of the setting and system 4 of GSA.
        QCOMPARE(driver.Command(ReceiverDriver::Frame(3, P({0, 1, 0, 0, 0}))), 0);
        driver.messages.clear();
        driver.Run(1000);
        QVERIFY(driver.CountSentences("GSA") > 0);
        for (const std::string& s : driver.messages) {
            QVERIFY(!ReceiverDriver::IsSentence(s, "GSA") || ReceiverDriver::Field(s, 18) == "4");
        }
    }

    void StartAndStop()
    {
        ReceiverDriver driver(Idle());
        driver.Run(5000);
        QCOMPARE(driver.CountSentences("GGA"), 0);
        QCOMPARE(driver.Command(ReceiverDriver::Bytes(ReceiverDriver::kStart)), 0);
        driver.Run(3000);
        QCOMPARE(driver.CountSentences("GGA"), 3);
        // A start while it runs is acknowledged and does not begin the search anew.
        const vrx::Millis begun = driver.receiver.Engine().StartedAt();
        QCOMPARE(driver.Command(ReceiverDriver::Bytes(ReceiverDriver::kStart)), 0);
        QCOMPARE(driver.receiver.Engine().StartedAt(), begun);
        QCOMPARE(driver.Command(ReceiverDriver::Bytes(ReceiverDriver::kStop)), 0);
        driver.messages.clear();
        driver.Run(5000);
        QVERIFY(driver.messages.empty());
        QCOMPARE(driver.Command(ReceiverDriver::Frame(2, std::string(4, '\0'))), 0);
    }

    void CommandsInPiecesAndNoise()
    {
        const std::string start = ReceiverDriver::Bytes(ReceiverDriver::kStart);
        const std::string stop = ReceiverDriver::Bytes(ReceiverDriver::kStop);
        ReceiverDriver driver(Idle());
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
            stream += i % 2 == 0 ? start : stop;
        }
        for (std::size_t at = 0; at < stream.size();) {
            const std::size_t count = 1 + random() % 30;
            driver.SendBytes(stream.substr(at, count));
            at += count;
        }
        QCOMPARE(driver.Frames(gnss::RptAck).size(), std::size_t{200});

        // A frame that never ends does not swallow the next one for good.
        driver.messages.clear();
        driver.SendBytes(std::string("\x7e\x04\x98\x3a\x03\x02\0\0\0\0\x8b\x3a", 12));
        driver.Run(600);
        driver.SendBytes(stop);
        QCOMPARE(driver.Frames(gnss::RptAck).size(), std::size_t{1});
    }

    void AtText()
    {
        ReceiverDriver driver(Idle(nullptr, gnss::kAtProduct));
        const auto answer = [&](const std::string& line) {
            driver.messages.clear();
            driver.SendBytes(line);
            std::string all;
            for (const std::string& message : driver.messages) {
                all += message;
            }
            return all;
        };
        QCOMPARE(answer("AT+GNSSSTART=1,1,1,0\r\n"), "OK\r\n" + AckLine(1, 0));
        QVERIFY(driver.receiver.Running());
        QCOMPARE(answer("AT+GNSSSTOP\r\n"), "OK\r\n" + AckLine(2, 0));
        QVERIFY(!driver.receiver.Running());
        QCOMPARE(answer(AtHex(ReceiverDriver::Frame(9, P({2})))), AckLine(9, 0));
        QCOMPARE(answer(AtHex(ReceiverDriver::Frame(9, P({7})))), AckLine(9, 2));
        QCOMPARE(driver.receiver.Settings().rateHz, 10);
        for (const char* wrong : {"AT+NONSENSE\r\n", "AT+GNSSSTART=1,1\r\n", "AT+GNSSHEX=7e0\r\n",
                                  "AT+GNSSHEX=xx\r\n", "AT+GNSSHEX=\r\n", "AT+GNSSHEX=7e047e\r\n"}) {
            QCOMPARE(answer(wrong), std::string("ERROR\r\n"));
        }
        QCOMPARE(answer("AT\r"), std::string("OK\r\n"));
        // Ready frames come unwrapped also on this product; what is answered is text. Sentences stay plain.
        const std::string history = answer(ReceiverDriver::Bytes("7e040d0002010000010000007e"));
        QVERIFY(history.compare(0, AckLine(258, 0).size(), AckLine(258, 0)) == 0);
        QVERIFY(history.find("+GNSSHEX:7e04", 10) != std::string::npos);
        answer("AT+GNSSSTART=1,1,1,0\r\n");
        driver.messages.clear();
        driver.Run(1000);
        QCOMPARE(driver.CountSentences("GGA"), 10);

        // The largest history goes in as one line.
        const std::string block(gnss::kMaxHistoryBlock, 'x');
        QCOMPARE(answer(AtHex(ReceiverDriver::Frame(257, block))), AckLine(257, 2));

        // Other products do not speak AT.
        ReceiverDriver plain(Idle());
        plain.messages.clear();
        plain.SendBytes("AT+GNSSSTART=1,1,1,0\r\n");
        QVERIFY(plain.messages.empty());
        QVERIFY(!plain.receiver.Running());
    }

    void AcknowledgementFaults()
    {
        const std::string start = ReceiverDriver::Bytes(ReceiverDriver::kStart);
        const auto acks = [&](const char* fault, vrx::Millis wait, int times = 1) {
            ReceiverDriver driver(Idle(fault));
            driver.messages.clear();
            for (int i = 0; i < times; ++i) {
                driver.SendBytes(start);
            }
            driver.Run(wait);
            std::vector<std::pair<int, int>> found;
            for (const std::string& frame : driver.Frames(gnss::RptAck)) {
                gnss::FrameView view;
                ReceiverDriver::IsFrame(frame, view);
                found.emplace_back(gnss::ReadU16(view.payload), gnss::ReadU16(view.payload + 2));
            }
            return std::make_pair(found, driver.receiver.Running());
        };
        using Acks = std::vector<std::pair<int, int>>;
        QCOMPARE(acks("ack-lost", 5000, 3).first, Acks());
        QVERIFY(acks("ack-lost", 0).second);
        QCOMPARE(acks("ack-lost=2", 0, 3).first, (Acks{{1, 0}}));
        QCOMPARE(acks("ack-late=1500", 1499).first, Acks());
        QCOMPARE(acks("ack-late=1500", 1500).first, (Acks{{1, 0}}));
        QCOMPARE(acks("ack-double", 0).first, (Acks{{1, 0}, {1, 0}}));
        QCOMPARE(acks("ack-other=516", 0).first, (Acks{{516, 0}}));
        QCOMPARE(acks("refuse", 0).first, (Acks{{1, 3}}));
        QVERIFY(!acks("refuse", 0).second);
        QCOMPARE(acks("refuse=7", 0).first, (Acks{{1, 7}}));
        QCOMPARE(acks("silence", 5000).first, Acks());
    }
};

QTEST_GUILESS_MAIN(TestReceiverCommands)
#include "tst_receiver_commands.moc"
