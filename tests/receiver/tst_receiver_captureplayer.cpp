#include "receiver/CapturePlayer.h"
#include "receiver/NmeaWriter.h"

#include <QDir>
#include <QtTest>

using vrx::CapturePlayer;
using vrx::Millis;

namespace {

std::string Sentence(std::string body)
{
    vrx::CloseSentence(body);
    return body;
}

std::string Rmc(const std::string& time)
{
    return Sentence("$GNRMC," + time + ",A,4723.0,N,00832.0,E,0.0,,140326,,,A,V");
}

/// Plays to the end in steps of 10 ms; says when each byte came.
std::string PlayAll(CapturePlayer& player, std::vector<Millis>& when, std::size_t room = 100000)
{
    std::string all;
    player.Play(0);
    for (Millis now = 0; !player.Finished() && now < 10000000; now += 10) {
        const std::string piece = player.Take(now, room);
        all += piece;
        when.resize(all.size(), now);
    }
    return all;
}

} // namespace

class TestReceiverCapturePlayer : public QObject {
    Q_OBJECT

private slots:
    void PaceFollowsTheTimes()
    {
        std::string bytes;
        std::vector<std::size_t> offsets;
        for (const char* time : {"235958.80", "235959.80", "000000.00", "000000.20", "000000.40", "000030.00"}) {
            offsets.push_back(bytes.size());
            bytes += Rmc(time) + Sentence(std::string("$GNGLL,,,,,") + time + ",V,N");
        }
        const auto marks = vrx::CapturePace(bytes);
        // Over midnight, at fractions, and one second for the gap.
        const std::vector<double> expected{0, 1000, 1200, 1400, 1600, 2600, 3600};
        QCOMPARE(marks.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            QVERIFY(std::abs(marks[i].at - expected[i]) < 0.01);
            QCOMPARE(marks[i].offset, i < offsets.size() ? offsets[i] : bytes.size());
        }
    }

    void EpochsWithoutTimesLastASecond()
    {
        const std::string blank = Rmc("") + Sentence("$GPGGA,,,,,,0,,,,,,,,");
        // Three without a time, then two with one; a sentence that lags and one with a wrong checksum count for
        // nothing.
        std::string wrong = Rmc("121212.00");
        wrong[wrong.size() - 3] ^= 1;
        const std::string bytes = blank + blank + blank + Rmc("101010.00") + wrong + Rmc("101011.00") +
                                  Sentence("$GPGLL,,,,,101010.00,V,N");
        const auto marks = vrx::CapturePace(bytes);
        QCOMPARE(marks.size(), std::size_t{6});
        QCOMPARE(marks.back().at, 5000.0);

        QCOMPARE(vrx::CapturePace(std::string(2500, '\x55')).back().at, 2500.0);
        QCOMPARE(vrx::CapturePace(std::string()).back().at, 0.0);
    }

    void EveryByteOnceAtItsTime()
    {
        std::string bytes;
        for (int second = 10; second < 20; ++second) {
            bytes += Rmc("1010" + std::to_string(second) + ".00");
            bytes += std::string("\x7e\x04\x00\xff\x0d", 5);
            bytes += Sentence("$GNTXT,01,01,02,padding");
        }
        std::vector<Millis> when;
        CapturePlayer player(bytes, 1.0, false);
        QVERIFY(PlayAll(player, when) == bytes);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const double ideal = 10000.0 * static_cast<double>(i) / static_cast<double>(bytes.size());
            // A byte waits for the end of its line, here up to three quarters of an epoch.
            QVERIFY2(static_cast<double>(when[i]) >= ideal - 20.0 &&
                         static_cast<double>(when[i]) <= ideal + 1000.0,
                     qPrintable(QString("%1: %2").arg(i).arg(when[i])));
        }
        std::vector<Millis> quick;
        CapturePlayer tenfold(bytes, 10.0, false);
        QVERIFY(PlayAll(tenfold, quick) == bytes);
        QVERIFY(quick.back() >= 990 && quick.back() <= 1020);
        std::vector<Millis> atOnce;
        CapturePlayer fastest(bytes, 0.0, false);
        QVERIFY(PlayAll(fastest, atOnce, 100) == bytes);
        QCOMPARE(fastest.NextEvent(5), vrx::CapturePlayer(bytes, 0.0, false).NextEvent(5));
    }

    void PausesAndRepeats()
    {
        const std::string bytes = Rmc("101010.00") + Rmc("101011.00");
        CapturePlayer player(bytes, 1.0, true);
        QVERIFY(player.Take(5000, 1000).empty()); // nobody has pressed play
        std::string all;
        player.Play(5000);
        for (Millis now = 5000; now < 5600; now += 10) {
            all += player.Take(now, 1000);
        }
        player.Pause(5600);
        const std::size_t before = all.size();
        QVERIFY(player.Take(60000, 1000).empty());
        player.Play(60000);
        for (Millis now = 60000; now < 68000; now += 10) {
            all += player.Take(now, 1000);
        }
        QVERIFY(before < bytes.size());
        QVERIFY(all.size() >= 4 * bytes.size() && all.size() <= 5 * bytes.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(all[i], bytes[i % bytes.size()]);
        }
    }

    void RecordedCaptures()
    {
        const QDir folder(GNSS_CAPTURES);
        const QStringList files = folder.entryList({"*.log"}, QDir::Files);
        if (files.isEmpty()) {
            QSKIP("no recorded captures here");
        }
        // Seconds that the recordings last by their own times, counted by hand from first to last epoch.
        const QMap<QString, double> seconds{{"ublox-zed-f9p-nmea.log", 29}, {"quectelLC79D.log", 30},
                                            {"skytraq-PX1172RH_DS.log", 9}, {"quectel-l76k-dual.log", 130},
                                            {"st-teseo-liv4f.log", 12},     {"ericsson-gru04-02-70sec.log", 71}};
        for (const QString& name : files) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const std::string bytes = file.readAll().toStdString();
            std::vector<Millis> when;
            CapturePlayer player(bytes, 5.0, false);
            QVERIFY2(PlayAll(player, when) == bytes, qPrintable(name));
            QVERIFY2(std::abs(static_cast<double>(when.back()) - player.DurationMillis() / 5.0) < 30.0,
                     qPrintable(name));
            if (seconds.contains(name)) {
                QVERIFY2(std::abs(player.DurationMillis() / 1000.0 - seconds[name]) <= 2.0,
                         qPrintable(name + QString(" %1").arg(player.DurationMillis())));
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestReceiverCapturePlayer)
#include "tst_receiver_captureplayer.moc"
