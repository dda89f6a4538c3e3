// SPDX-License-Identifier: MIT
#include "ReceiverDriver.h"

#include <cmath>
#include <map>
#include <set>

using receiver::Millis;

namespace {

bool ChecksumHolds(const std::string& sentence)
{
    const std::size_t star = sentence.size() - 5;
    int sum = 0;
    for (std::size_t i = 1; i < star; ++i) {
        sum ^= static_cast<std::uint8_t>(sentence[i]);
    }
    return sentence[0] == '$' &&
           sentence.substr(star) == QString::asprintf("*%02X\r\n", unsigned(sum)).toStdString();
}

double Degrees(const std::string& sentence, int index)
{
    const double raw = Number(sentence, index);
    const double degrees = std::floor(raw / 100.0) + std::fmod(raw, 100.0) / 60.0;
    const std::string letter = Field(sentence, index + 1);
    return letter == "S" || letter == "W" ? -degrees : degrees;
}

bool Near(const std::vector<double>& values, double mean, double deviation, double tolerance)
{
    double sum = 0.0;
    double squares = 0.0;
    for (const double value : values) {
        sum += value;
        squares += value * value;
    }
    const double n = static_cast<double>(values.size());
    const double gotDeviation = std::sqrt((squares - sum * sum / n) / (n - 1.0));
    return std::abs(sum / n - mean) < tolerance && std::abs(gotDeviation - deviation) < tolerance;
}

} // namespace

class TestReceiverModel : public QObject {
    Q_OBJECT

private slots:
    void EpochsAtEachRate()
    {
        const QStringList order{"GGA", "GLL", "GSA", "GSV", "RMC", "VTG", "ZDA", "STA"};
        for (const int rate : {1, 5, 10}) {
            auto options = ReceiverDriver::Kept();
            options.rateHz = rate;
            ReceiverDriver driver(options);
            driver.Run(10000);
            driver.Listen(20000);
            QCOMPARE(driver.CountSentences("GGA"), 20 * rate);
            int place = order.size() - 1;
            int expectedGsv = 1;
            for (const std::string& sentence : driver.messages) {
                QVERIFY2(ChecksumHolds(sentence) && sentence.size() <= 82 + 2, sentence.c_str());
                const int next = order.indexOf(QString::fromStdString(sentence.substr(3, 3)));
                // Lists have several sentences; every other kind comes once an epoch.
                QVERIFY2(next >= 0 &&
                             (next == (place + 1) % order.size() || (next == place && (next == 2 || next == 3))),
                         sentence.c_str());
                place = next;
                if (next == 3) {
                    QCOMPARE(int(Number(sentence, 2)), expectedGsv);
                    expectedGsv = Field(sentence, 1) == Field(sentence, 2) ? 1 : expectedGsv + 1;
                }
                QVERIFY(next != 0 || std::stoi(Field(sentence, 1).substr(7)) % (1000 / rate) == 0);
            }
        }
    }

    void SatellitesAgreeBetweenSentences()
    {
        ReceiverDriver driver(ReceiverDriver::Kept());
        driver.Run(60000);
        driver.Listen(1000);
        const std::map<std::string, std::string> systemOfTalker{
            {"GP", "1"}, {"GL", "2"}, {"GA", "3"}, {"GB", "4"}, {"GQ", "5"}};
        std::map<std::string, std::set<std::string>> shown; // by system id
        std::map<std::string, std::set<std::string>> used;
        std::set<std::string> signalGroups;
        std::size_t claimed = 0;
        for (const std::string& s : driver.messages) {
            if (IsSentence(s, "GSV")) {
                const int fields = static_cast<int>(std::count(s.begin(), s.end(), ','));
                for (int i = 4; i + 3 < fields; i += 4) {
                    shown[systemOfTalker.at(s.substr(1, 2))].insert(Field(s, i));
                    QVERIFY(Number(s, i + 1) <= 90 && Number(s, i + 2) < 360);
                }
                signalGroups.insert(s.substr(1, 2) + Field(s, fields));
            } else if (IsSentence(s, "GGA")) {
                claimed = std::size_t(Number(s, 7));
            } else if (IsSentence(s, "GSA")) {
                QCOMPARE(Field(s, 2), std::string("3"));
                for (int i = 3; i < 15 && !Field(s, i).empty(); ++i) {
                    used[Field(s, 18)].insert(Field(s, i));
                }
            }
        }
        const std::set<std::string> groups{"GP1", "GP8", "GL1", "GL3", "GA7", "GA1", "GB1", "GB5"};
        QVERIFY(std::includes(signalGroups.begin(), signalGroups.end(), groups.begin(), groups.end()));
        std::size_t count = 0;
        for (const auto& [system, numbers] : used) {
            count += numbers.size();
            const std::set<std::string>& all = shown[system];
            QVERIFY2(std::includes(all.begin(), all.end(), numbers.begin(), numbers.end()), system.c_str());
        }
        QVERIFY(count >= 20);
        QCOMPARE(claimed, count);
    }

    void SeedsRepeat()
    {
        const auto play = [](std::uint64_t seed, Millis step) {
            auto options = ReceiverDriver::Options("garbage=50");
            options.faults.badChecksumPercent = 5;
            options.seed = seed;
            options.reports = receiver::ReportPolicy::All;
            ReceiverDriver driver(options);
            for (Millis t = 0; t < 60000; t += step) {
                driver.Run(step);
            }
            return Joined(driver.messages);
        };
        const std::string first = play(42, 7500);
        // Also not a matter of how often the caller looks.
        QVERIFY(first == play(42, 50));
        QVERIFY(first != play(43, 7500));
    }

    void StartsTakeTheirTimeAndHaveTheirError()
    {
        auto options = ReceiverDriver::Options();
        options.rateHz = 10;
        options.times.cold = {28.0, 3.0};
        options.times.hot = {1.2, 0.3};
        options.errorMetres = 4.0;
        ReceiverDriver driver(options);
        QVERIFY(driver.SecondsToFix(60) > 15.0);
        std::vector<double> errors;
        const auto series = [&](const std::string& kind) {
            std::vector<double> seconds;
            for (int i = 0; i < 100; ++i) {
                driver.SendBytes(kStop);
                driver.Run(1000 + 37 * i);
                driver.SendBytes(kind);
                driver.Run(150);
                driver.SendBytes(kStart);
                seconds.push_back(driver.SecondsToFix(120));
                const auto rmc = std::find_if(driver.messages.begin(), driver.messages.end(),
                                              [](const std::string& s) { return IsSentence(s, "RMC"); });
                if (rmc == driver.messages.end()) {
                    return std::vector<double>();
                }
                double east = 0.0;
                double north = 0.0;
                receiver::OffsetBetween(options.place, {Degrees(*rmc, 3), Degrees(*rmc, 5), 0.0}, east, north);
                errors.push_back(std::hypot(east, north));
            }
            return seconds;
        };
        // Within two deviations of the mean of 100, and the mean wait of 0.05 s for
        // the next epoch.
        QVERIFY(Near(series(kColdStart), 28.05, 3.0, 0.6));
        QVERIFY(Near(series(kHotStart), 1.25, 0.3, 0.08));
        // The median of 200 draws has a deviation of about 8 %.
        std::sort(errors.begin(), errors.end());
        QVERIFY2(std::abs(errors[100] - 4.0) < 0.9, qPrintable(QString::number(errors[100])));
    }

    void HistoryHasItsPublishedLayout()
    {
        receiver::Memory memory;
        memory.positionKnown = true;
        memory.position = {47.5, 8.25, 408.0};
        const receiver::Orbit& orbit = receiver::AllOrbits()[40];
        memory.ephemerisUntil[40] = 1773480500000;
        const auto joined = [](std::initializer_list<double> values) {
            return QByteArray(reinterpret_cast<const char*>(values.begin()), int(8 * values.size()));
        };
        // Magic, length 100, one entry, position known; 1773480413400.
        QByteArray expected = QByteArray::fromHex("5652584849533031 6400 0100 01 000000 d888abeb9c010000") +
                              joined({47.5, 8.25, 408.0});
        // System, number, valid until.
        expected += char(orbit.system);
        expected += char(orbit.svid);
        expected += QByteArray::fromHex("000000000000 20dbaceb9c010000") +
                    joined({orbit.radius, orbit.inclination, orbit.node, orbit.argument});
        const std::string block = receiver::PackHistory(memory, 1773480413400);
        QCOMPARE(QByteArray::fromStdString(block).left(96).toHex(' '), expected.toHex(' '));
        QCOMPARE(block.size(), std::size_t(100));
        receiver::Memory taken;
        QVERIFY(receiver::UnpackHistory(block, taken) && taken.ephemerisUntil == memory.ephemerisUntil);
        QVERIFY(taken.position.latitude == 47.5 && taken.position.longitude == 8.25 &&
                taken.position.altitude == 408.0 && !taken.almanacKnown);
    }

    // Whatever is wrong with a block, it is refused and nothing of it is kept.
    void HistoryIsTakenWholeOrNotAtAll()
    {
        receiver::Memory memory = ReceiverDriver(ReceiverDriver::Kept()).receiver.Engine().Known();
        const std::string block = receiver::PackHistory(memory, 1773480413400);
        QVERIFY(block.size() > 500 && block.size() <= protocol::kMaxHistoryBlock);
        receiver::Memory taken;
        for (std::size_t i = 0; i < block.size(); ++i) {
            std::string spoilt = block;
            spoilt[i] = static_cast<char>(spoilt[i] ^ 0x10);
            QVERIFY(!receiver::UnpackHistory(spoilt, taken) &&
                    !receiver::UnpackHistory(block.substr(0, i), taken));
        }
        QVERIFY(!taken.positionKnown && !taken.almanacKnown &&
                taken.ephemerisUntil == receiver::Memory().ephemerisUntil);
        QVERIFY(receiver::UnpackHistory(block, taken));
        QVERIFY(taken.positionKnown && taken.almanacKnown && taken.ephemerisUntil == memory.ephemerisUntil);
    }

    void ReportsCarryTheirImages()
    {
        auto options = ReceiverDriver::Kept();
        options.motion = receiver::Motion::Circle(options.place, 20.0, 15.0);
        options.reports = receiver::ReportPolicy::None;
        ReceiverDriver driver(options);
        QCOMPARE(driver.Command(protocol::CmdReports, "\1\1"), 0);
        driver.Run(10000);
        driver.Listen(5000);
        const auto locs = driver.Frames(protocol::RptMessage + protocol::MsgTypeLoc);
        const auto meas = driver.Frames(protocol::RptMessage + protocol::MsgTypeMeas);
        protocol::MsgLoc loc;
        protocol::MsgMeas measured;
        QVERIFY(locs.size() == 5 && locs[0].size() == protocol::kFrameOverhead + sizeof loc);
        QVERIFY(meas.size() == 5 && meas[0].size() == protocol::kFrameOverhead + sizeof measured);
        std::memcpy(&loc, &locs[0][12], sizeof loc);
        std::memcpy(&measured, &meas[0][12], sizeof measured);
        QVERIFY(std::abs(loc.latitude - options.place.latitude) < 1e-3 &&
                std::abs(loc.longitude - options.place.longitude) < 1e-3);
        const Millis utc = static_cast<Millis>(loc.timestamp) + receiver::kGpsEpoch - receiver::kLeapMillis;
        QVERIFY(utc % 1000 == 0 && std::llabs(utc - driver.receiver.UtcAt(driver.now)) < 6000);
        QVERIFY(measured.entry[20].svid != 0 && std::abs(measured.entry[0].doppler) < 6000.0 &&
                measured.entry[0].psr > 1.9e7 && measured.entry[0].psr < 4.5e7);
        QVERIFY(std::abs(std::hypot(loc.speede, loc.speedn) - 15.0) < 0.5);
        for (const std::string& s : driver.messages) {
            QVERIFY2(!IsSentence(s, "RMC") || std::abs(Number(s, 7) - 29.16) < 1.0,
                     s.c_str()); // knots
        }
        // Nothing of a report that was not asked for.
        QVERIFY(driver.Frames(protocol::RptMessage + protocol::MsgTypePpsSts).empty());

        options.reports = receiver::ReportPolicy::All;
        ReceiverDriver talkative(options);
        talkative.Run(3000);
        for (const int type : {100, 101, 103, 104, 105, 106, 107, 108, 109, 110}) {
            QVERIFY2(!talkative.Frames(protocol::RptMessage + type).empty(), qPrintable(QString::number(type)));
        }
    }

    void OutputFaults()
    {
        const auto play = [](const char* fault, Millis millis = 60000) {
            ReceiverDriver driver(ReceiverDriver::Kept(fault));
            driver.Run(millis);
            return driver.messages;
        };
        const auto bad = [](const std::vector<std::string>& messages) {
            const auto count = std::count_if(messages.begin(), messages.end(), [](const std::string& s) {
                return s.size() < 8 || !ChecksumHolds(s);
            });
            return static_cast<double>(count) / static_cast<double>(messages.size());
        };
        const auto clean = play("ack-double");
        QCOMPARE(bad(clean), 0.0);
        QCOMPARE(play("silence").size(), std::size_t{0});
        QVERIFY(std::abs(double(play("silence=30").size()) / double(clean.size()) - 0.5) < 0.1);
        QVERIFY(std::abs(bad(play("bad-checksum=25")) - 0.25) < 0.05);
        QVERIFY(std::abs(bad(play("cut-frames=30")) - 0.30) < 0.05);
        const std::size_t noise = Joined(play("garbage=1000")).size() - Joined(clean).size();
        QVERIFY2(noise > 59000 && noise < 61000, qPrintable(QString::number(noise)));
        const std::string slow = Joined(play("slow-bytes=500", 600000));
        QVERIFY2(slow.size() > 299000 && slow.size() <= 300000, qPrintable(QString::number(slow.size())));
        // What the slow line dropped it dropped by whole sentences.
        const QString whole = QString::fromStdString(slow.substr(0, slow.rfind('\n')));
        for (const QString& line : whole.split("\r\n")) {
            QVERIFY2(ChecksumHolds((line.trimmed() + "\r\n").toStdString()), qPrintable(line));
        }
        QCOMPARE(ReceiverDriver(ReceiverDriver::Kept("no-fix")).SecondsToFix(300), -1.0);
        // With all systems off it goes on without a satellite.
        ReceiverDriver off(ReceiverDriver::Kept());
        QCOMPARE(off.Command(protocol::CmdConstellations, std::string(5, '\0')), 0);
        off.Listen(5000);
        QVERIFY(off.CountSentences("GSV") + off.CountSentences("GSA") == 0 && off.CountSentences("GGA") == 5);
        QCOMPARE(off.SecondsToFix(30), -1.0);
        // BeiDou is the second byte of the setting and system 4 of GSA.
        QCOMPARE(off.Command(protocol::CmdConstellations, std::string("\0\1\0\0\0", 5)), 0);
        off.Run(30000);
        off.Listen(2000);
        QVERIFY(off.CountSentences("GSV") > 0 && off.CountSentences("GSA") > 0);
        for (const std::string& s : off.messages) {
            QVERIFY2(!IsSentence(s, "GSV") || s.substr(1, 2) == "GB", s.c_str());
            QVERIFY2(!IsSentence(s, "GSA") || Field(s, 18) == "4", s.c_str());
        }
    }

    void SleepsUntilAZeroByteComes()
    {
        ReceiverDriver driver(ReceiverDriver::Kept("sleep=10,3"));
        driver.Run(9900);
        driver.Listen(200);
        QCOMPARE(driver.Frames(protocol::RptSleep).size(), std::size_t{1});
        driver.Listen(5000);
        QCOMPARE(Joined(driver.messages), Frame(protocol::RptSleep, "\1"));
        driver.SendBytes("AT\r\n\x7e\x04");
        driver.Listen(5000);
        QVERIFY(driver.messages.empty());
        driver.SendBytes(std::string("\xFF\0", 2) + kStart);
        QCOMPARE(driver.Frames(protocol::RptAck).size(), std::size_t{1});
        driver.Run(2000);
        QCOMPARE(driver.CountSentences("GGA"), 2);
    }
};

QTEST_GUILESS_MAIN(TestReceiverModel)
#include "tst_model.moc"
