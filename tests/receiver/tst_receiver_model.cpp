#include "ReceiverDriver.h"

#include "receiver/Faults.h"
#include "receiver/Memory.h"

#include <cmath>
#include <map>
#include <set>

using gnss::FrameView;
using vrx::Millis;

namespace {

bool ChecksumHolds(const std::string& sentence)
{
    const std::size_t star = sentence.size() - 5;
    std::uint8_t sum = 0;
    for (std::size_t i = 1; i < star; ++i) {
        sum = static_cast<std::uint8_t>(sum ^ static_cast<std::uint8_t>(sentence[i]));
    }
    return sentence[0] == '$' && sentence[star] == '*' && sentence.compare(star + 3, 2, "\r\n") == 0 &&
           QByteArray::fromStdString(sentence).mid(static_cast<int>(star) + 1, 2) ==
               QByteArray::number(sum, 16).rightJustified(2, '0').toUpper();
}

std::string Joined(const std::vector<std::string>& messages)
{
    std::string all;
    for (const std::string& message : messages) {
        all += message;
    }
    return all;
}

struct Statistics {
    double mean = 0.0;
    double deviation = 0.0;
};

Statistics Of(const std::vector<double>& values)
{
    Statistics s;
    for (const double value : values) {
        s.mean += value / static_cast<double>(values.size());
    }
    for (const double value : values) {
        s.deviation += (value - s.mean) * (value - s.mean) / static_cast<double>(values.size() - 1);
    }
    s.deviation = std::sqrt(s.deviation);
    return s;
}

double Degrees(const std::string& value, const std::string& letter)
{
    const double raw = QByteArray::fromStdString(value).toDouble();
    const double whole = std::floor(raw / 100.0);
    const double degrees = whole + (raw - whole * 100.0) / 60.0;
    return letter == "S" || letter == "W" ? -degrees : degrees;
}

} // namespace

class TestReceiverModel : public QObject {
    Q_OBJECT

private slots:
    void EpochsAtEachRate_data()
    {
        QTest::addColumn<int>("rate");
        QTest::newRow("1 Hz") << 1;
        QTest::newRow("5 Hz") << 5;
        QTest::newRow("10 Hz") << 10;
    }

    void EpochsAtEachRate()
    {
        QFETCH(int, rate);
        auto options = ReceiverDriver::Options();
        options.rateHz = rate;
        options.memoryKept = true;
        ReceiverDriver driver(options);
        driver.Run(10000);
        driver.messages.clear();
        driver.Run(20000);
        for (const char* formatter : {"GGA", "GLL", "RMC", "VTG", "ZDA"}) {
            QCOMPARE(driver.CountSentences(formatter), 20 * rate);
        }
        const QStringList order{"GGA", "GLL", "GSA", "GSV", "RMC", "VTG", "ZDA", "STA"};
        int place = order.size() - 1;
        int expectedGsv = 1;
        for (const std::string& sentence : driver.messages) {
            QVERIFY2(ChecksumHolds(sentence), sentence.c_str());
            QVERIFY2(sentence.size() <= 82 + 2, sentence.c_str());
            const int next = order.indexOf(QString::fromStdString(sentence.substr(3, 3)));
            QVERIFY2(next >= 0 && (next == place || next == (place + 1) % order.size()), sentence.c_str());
            place = next;
            if (next == 3) {
                QCOMPARE(std::stoi(ReceiverDriver::Field(sentence, 2)), expectedGsv);
                const bool last = ReceiverDriver::Field(sentence, 1) == ReceiverDriver::Field(sentence, 2);
                expectedGsv = last ? 1 : expectedGsv + 1;
            }
            if (next == 0) {
                const int millis = std::stoi(ReceiverDriver::Field(sentence, 1).substr(7));
                QCOMPARE(millis % (1000 / rate), 0);
            }
        }
    }

    void SatellitesAgreeBetweenSentences()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        ReceiverDriver driver(options);
        driver.Run(60000);
        driver.messages.clear();
        driver.Run(1000);
        std::map<std::string, std::set<std::string>> shown; // by system id
        const std::map<std::string, std::string> systemOfTalker{
            {"GP", "1"}, {"GL", "2"}, {"GA", "3"}, {"GB", "4"}, {"GQ", "5"}};
        std::set<std::string> signalGroups;
        std::size_t used = 0;
        for (const std::string& s : driver.messages) {
            if (ReceiverDriver::IsSentence(s, "GSV")) {
                const int fields = static_cast<int>(std::count(s.begin(), s.end(), ','));
                for (int i = 4; i + 3 < fields; i += 4) {
                    shown[systemOfTalker.at(s.substr(1, 2))].insert(ReceiverDriver::Field(s, i));
                    QVERIFY(std::stoi(ReceiverDriver::Field(s, i + 1)) <= 90);
                    QVERIFY(std::stoi(ReceiverDriver::Field(s, i + 2)) < 360);
                }
                signalGroups.insert(s.substr(1, 2) + ReceiverDriver::Field(s, fields));
            }
        }
        for (const std::string& s : driver.messages) {
            if (ReceiverDriver::IsSentence(s, "GSA")) {
                QCOMPARE(ReceiverDriver::Field(s, 2), std::string("3"));
                for (int i = 3; i < 15; ++i) {
                    const std::string svid = ReceiverDriver::Field(s, i);
                    if (!svid.empty()) {
                        ++used;
                        QVERIFY2(shown[ReceiverDriver::Field(s, 18)].count(svid) == 1, svid.c_str());
                    }
                }
            }
        }
        for (const char* group : {"GP1", "GP8", "GL1", "GL3", "GA7", "GA1", "GB1", "GB5"}) {
            QVERIFY2(signalGroups.count(group) == 1, group);
        }
        QVERIFY(used >= 20);
        for (const std::string& s : driver.messages) {
            if (ReceiverDriver::IsSentence(s, "GGA")) {
                QCOMPARE(std::stoul(ReceiverDriver::Field(s, 7)), used);
            }
        }
    }

    void SeedsRepeat()
    {
        const auto play = [](std::uint64_t seed, Millis step) {
            auto options = ReceiverDriver::Options();
            options.seed = seed;
            options.reports = vrx::ReportPolicy::All;
            std::string error;
            options.faults.Add("garbage=50", error);
            options.faults.Add("bad-checksum=5", error);
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

    void PositionErrorHasTheMedianAskedFor()
    {
        auto options = ReceiverDriver::Options();
        options.errorMetres = 4.0;
        options.memoryKept = true;
        std::vector<double> errors;
        ReceiverDriver driver(options);
        for (int start = 0; start < 300; ++start) {
            driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStop));
            driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStart));
            driver.messages.clear();
            driver.Run(5000);
            for (const std::string& s : driver.messages) {
                if (ReceiverDriver::IsSentence(s, "RMC") && ReceiverDriver::Field(s, 2) == "A") {
                    vrx::Geodetic shown{Degrees(ReceiverDriver::Field(s, 3), ReceiverDriver::Field(s, 4)),
                                        Degrees(ReceiverDriver::Field(s, 5), ReceiverDriver::Field(s, 6)), 0.0};
                    double east = 0.0;
                    double north = 0.0;
                    vrx::OffsetBetween(options.place, shown, east, north);
                    errors.push_back(std::hypot(east, north));
                    break;
                }
            }
        }
        QCOMPARE(errors.size(), std::size_t{300});
        std::sort(errors.begin(), errors.end());
        // The median of 300 draws has a deviation of about 7 %.
        QVERIFY2(std::abs(errors[150] - 4.0) < 0.9, qPrintable(QString::number(errors[150])));
    }

    void HotStartsAreQuickerThanCold()
    {
        auto options = ReceiverDriver::Options();
        options.rateHz = 10;
        options.times.cold = {28.0, 3.0};
        options.times.hot = {1.2, 0.3};
        ReceiverDriver driver(options);
        QVERIFY(driver.SecondsToFix(60) > 15.0);
        const auto series = [&](const char* kind) {
            std::vector<double> seconds;
            for (int i = 0; i < 60; ++i) {
                driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStop));
                driver.Run(1000 + 37 * i);
                driver.SendBytes(ReceiverDriver::Bytes(kind));
                driver.Run(150);
                driver.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStart));
                seconds.push_back(driver.SecondsToFix(120));
            }
            return Of(seconds);
        };
        const Statistics cold = series(ReceiverDriver::kColdStart);
        const Statistics hot = series(ReceiverDriver::kHotStart);
        // Half a deviation of the mean of 60, and the mean wait of 0.05 s for the next epoch.
        QVERIFY2(std::abs(cold.mean - 28.05) < 1.2, qPrintable(QString::number(cold.mean)));
        QVERIFY2(std::abs(cold.deviation - 3.0) < 1.0, qPrintable(QString::number(cold.deviation)));
        QVERIFY2(std::abs(hot.mean - 1.25) < 0.15, qPrintable(QString::number(hot.mean)));
        QVERIFY2(std::abs(hot.deviation - 0.3) < 0.12, qPrintable(QString::number(hot.deviation)));
    }

    void HistoryMakesAHotStart()
    {
        ReceiverDriver driver;
        driver.Run(120000);
        const std::string block = driver.History();
        QVERIFY(block.size() > 500 && block.size() <= gnss::kMaxHistoryBlock);

        const auto fixAfter = [](const std::string& injected, bool utcToo) {
            auto options = ReceiverDriver::Options();
            options.idle = true;
            options.seed = 5;
            options.utcAtPowerOn += 600000;
            ReceiverDriver fresh(options);
            if (utcToo) {
                const vrx::UtcFields f = vrx::ToFields(fresh.receiver.UtcAt(0));
                std::string utc(12, '\0');
                gnss::WriteU16(reinterpret_cast<std::uint8_t*>(&utc[0]), static_cast<std::uint16_t>(f.year));
                utc[2] = static_cast<char>(f.month);
                utc[3] = static_cast<char>(f.day);
                utc[4] = static_cast<char>(f.hour);
                utc[5] = static_cast<char>(f.minute);
                utc[6] = static_cast<char>(f.second);
                utc[10] = 1;
                if (fresh.Command(ReceiverDriver::Frame(gnss::CmdUtcTime, utc)) != 0) {
                    return -2.0;
                }
            }
            if (!injected.empty() && fresh.Command(ReceiverDriver::Frame(gnss::CmdInjectHistory, injected)) != 0) {
                return -3.0;
            }
            fresh.SendBytes(ReceiverDriver::Bytes(ReceiverDriver::kStart));
            return fresh.SecondsToFix(60);
        };
        const double cold = fixAfter({}, true);
        const double hot = fixAfter(block, true);
        QVERIFY(cold > 15.0);
        QVERIFY2(hot > 0.0 && hot < 4.0, qPrintable(QString::number(hot)));
        QVERIFY(fixAfter(block, false) < cold / 2);

        // Whatever is wrong with the block, it is refused and nothing of it is kept.
        for (std::size_t i = 0; i < block.size(); i += 97) {
            std::string spoilt = block;
            spoilt[i] = static_cast<char>(spoilt[i] ^ 0x10);
            QCOMPARE(fixAfter(spoilt, true), -3.0);
            if (i > 0) {
                QCOMPARE(fixAfter(block.substr(0, i), true), -3.0);
            }
        }
    }

    void MovingAntennaTurnsAndTravels()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        options.errorMetres = 0.5;
        options.motion = vrx::Motion::Circle(options.place, 200.0, 15.0);
        ReceiverDriver driver(options);
        driver.Run(10000);
        double before = -1.0;
        double turned = 0.0;
        driver.messages.clear();
        driver.Run(30000);
        for (const std::string& s : driver.messages) {
            if (ReceiverDriver::IsSentence(s, "RMC")) {
                QVERIFY(std::abs(std::stod(ReceiverDriver::Field(s, 7)) - 29.16) < 1.0);
                const double course = QByteArray::fromStdString(ReceiverDriver::Field(s, 8)).toDouble();
                if (before >= 0.0) {
                    turned += std::fmod(course - before + 540.0, 360.0) - 180.0;
                }
                before = course;
            }
        }
        // 15 m/s on a circle of 200 m are 4.3 degrees a second.
        QVERIFY2(std::abs(turned - 29 * 4.297) < 8.0, qPrintable(QString::number(turned)));
    }

    void ReportsCarryTheirImages()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        options.reports = vrx::ReportPolicy::None;
        ReceiverDriver driver(options);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdReports, std::string("\1\1"))), 0);
        driver.Run(10000);
        driver.messages.clear();
        driver.Run(5000);
        const auto locs = driver.Frames(gnss::RptMessage + gnss::MsgTypeLoc);
        const auto meas = driver.Frames(gnss::RptMessage + gnss::MsgTypeMeas);
        QCOMPARE(locs.size(), std::size_t{5});
        QCOMPARE(meas.size(), std::size_t{5});
        FrameView view;
        gnss::MsgLoc loc;
        QVERIFY(ReceiverDriver::IsFrame(locs[0], view));
        QCOMPARE(view.payloadLength, sizeof loc);
        std::memcpy(&loc, view.payload, sizeof loc);
        QVERIFY(std::abs(loc.latitude - options.place.latitude) < 1e-3);
        QVERIFY(std::abs(loc.longitude - options.place.longitude) < 1e-3);
        const Millis utc = static_cast<Millis>(loc.timestamp) + vrx::kGpsEpoch - vrx::kLeapMillis;
        QCOMPARE(utc % 1000, Millis{0});
        QVERIFY(std::llabs(utc - driver.receiver.UtcAt(driver.now)) < 6000);
        gnss::MsgMeas measured;
        QVERIFY(ReceiverDriver::IsFrame(meas[0], view));
        QCOMPARE(view.payloadLength, sizeof measured);
        std::memcpy(&measured, view.payload, sizeof measured);
        QVERIFY(measured.entry[20].svid != 0);
        QVERIFY(measured.entry[0].psr > 1.9e7 && measured.entry[0].psr < 4.5e7);
        QVERIFY(std::abs(measured.entry[0].doppler) < 6000.0);
        // Nothing of a report that was not asked for.
        QVERIFY(driver.Frames(gnss::RptMessage + gnss::MsgTypePpsSts).empty());

        options.reports = vrx::ReportPolicy::All;
        ReceiverDriver talkative(options);
        talkative.Run(3000);
        for (const int type : {100, 101, 103, 104, 105, 106, 107, 108, 109, 110}) {
            QVERIFY2(!talkative.Frames(static_cast<std::uint16_t>(gnss::RptMessage + type)).empty(),
                     qPrintable(QString::number(type)));
        }
    }

    void AllSystemsOffMeansNoFixAndNoSatellites()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        ReceiverDriver driver(options);
        driver.Run(10000);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdConstellations, std::string(5, '\0'))), 0);
        driver.messages.clear();
        driver.Run(5000);
        QCOMPARE(driver.CountSentences("GSV") + driver.CountSentences("GSA"), 0);
        QCOMPARE(driver.CountSentences("GGA"), 5);
        QCOMPARE(driver.SecondsToFix(30), -1.0);
        QCOMPARE(driver.Command(ReceiverDriver::Frame(gnss::CmdConstellations, std::string("\1\0\0\0\0", 5))), 0);
        driver.Run(30000);
        driver.messages.clear();
        driver.Run(2000);
        for (const std::string& s : driver.messages) {
            QVERIFY2(!ReceiverDriver::IsSentence(s, "GSV") || s.substr(1, 2) == "GP", s.c_str());
        }
        QVERIFY(driver.CountSentences("GSV") > 0);
        QVERIFY(driver.SecondsToFix(10) > 0.0);
    }

    void OutputFaults()
    {
        const auto play = [](const char* fault, Millis millis, const char* second = nullptr) {
            auto options = ReceiverDriver::Options();
            options.memoryKept = true;
            std::string error;
            if (!options.faults.Add(fault, error) || (second != nullptr && !options.faults.Add(second, error))) {
                return std::vector<std::string>{error};
            }
            ReceiverDriver driver(options);
            driver.Run(millis);
            return driver.messages;
        };
        const auto bad = [](const std::vector<std::string>& messages) {
            return std::count_if(messages.begin(), messages.end(),
                                 [](const std::string& s) { return s.size() < 8 || !ChecksumHolds(s); });
        };
        const auto clean = play("ack-double", 60000);
        QCOMPARE(bad(clean), std::ptrdiff_t{0});
        QCOMPARE(play("silence", 60000).size(), std::size_t{0});
        const auto muted = play("silence=30", 60000);
        QVERIFY(muted.size() > clean.size() * 2 / 5 && muted.size() < clean.size() * 3 / 5);
        const auto spoilt = play("bad-checksum=25", 60000);
        QCOMPARE(spoilt.size(), clean.size());
        QVERIFY(std::abs(static_cast<double>(bad(spoilt)) / static_cast<double>(spoilt.size()) - 0.25) < 0.05);
        const auto cut = play("cut-frames=30", 60000);
        QVERIFY(std::abs(static_cast<double>(bad(cut)) / static_cast<double>(cut.size()) - 0.30) < 0.05);
        const std::size_t noise = Joined(play("garbage=1000", 60000)).size() - Joined(clean).size();
        QVERIFY2(noise > 59000 && noise < 61000, qPrintable(QString::number(noise)));
        const auto slow = play("slow-bytes=500", 600000);
        const std::size_t carried = Joined(slow).size();
        QVERIFY2(carried > 299000 && carried <= 300000, qPrintable(QString::number(carried)));
        // What the slow line dropped it dropped by whole sentences.
        const std::string text = Joined(slow);
        const QStringList lines = QString::fromStdString(text.substr(0, text.rfind('\n'))).split("\r\n");
        for (const QString& line : lines) {
            QVERIFY2(ChecksumHolds((line.trimmed() + "\r\n").toStdString()), qPrintable(line));
        }
        auto noFix = ReceiverDriver::Options();
        std::string error;
        QVERIFY(noFix.faults.Add("no-fix", error));
        noFix.memoryKept = true;
        QCOMPARE(ReceiverDriver(noFix).SecondsToFix(300), -1.0);
    }

    void SleepsUntilAZeroByteComes()
    {
        auto options = ReceiverDriver::Options();
        options.memoryKept = true;
        std::string error;
        QVERIFY(options.faults.Add("sleep=10,3", error));
        ReceiverDriver driver(options);
        driver.Run(9900);
        driver.messages.clear();
        driver.Run(200);
        QCOMPARE(driver.Frames(gnss::RptSleep).size(), std::size_t{1});
        driver.messages.clear();
        driver.Run(5000);
        QCOMPARE(driver.messages.size(), std::size_t{1});
        FrameView view;
        QVERIFY(ReceiverDriver::IsFrame(driver.messages[0], view));
        QCOMPARE(int(view.payload[0]), 1);
        driver.SendBytes("AT\r\n\x7e\x04");
        driver.messages.clear();
        driver.Run(5000);
        QVERIFY(driver.messages.empty());
        driver.SendBytes(std::string("\xFF\0", 2) + ReceiverDriver::Bytes(ReceiverDriver::kStart));
        QCOMPARE(driver.Frames(gnss::RptAck).size(), std::size_t{1});
        driver.Run(2000);
        QCOMPARE(driver.CountSentences("GGA"), 2);
    }

    void FaultTextsAreJudged()
    {
        for (const char* wrong :
             {"", "nothing", "silence=x", "ack-late", "ack-late=", "ack-late=-1", "ack-double=1", "garbage=0",
              "unplug=1,2,3", "cut-frames=101", "refuse=1,2", "ack-other=70000", "unplug=nan", "sleep=inf"}) {
            vrx::Faults faults;
            std::string error;
            QVERIFY2(!faults.Add(wrong, error) && !error.empty(), wrong);
        }
        vrx::Faults faults;
        std::string error;
        QVERIFY(faults.Add("unplug=1.5,2", error));
        QCOMPARE(faults.unplugAt, 1.5);
        QCOMPARE(faults.replugAfter, 2.0);
    }
};

QTEST_GUILESS_MAIN(TestReceiverModel)
#include "tst_receiver_model.moc"
