// SPDX-License-Identifier: MIT
#include "receiver/CapturePlayer.h"
#include "receiver/NmeaWriter.h"

#include <QFile>
#include <QtTest>

using receiver::CapturePlayer;
using receiver::Millis;

namespace {

std::string Sentence(std::string body)
{
    receiver::CloseSentence(body);
    return body;
}

std::string Rmc(const std::string& time)
{
    return Sentence("$GNRMC," + time + ",A,4723.0,N,00832.0,E,0.0,,140326,,,A,V");
}

/// Plays from `begin` to `end`, or to the capture's end, in steps of 10 ms.
std::string Played(CapturePlayer& player, Millis begin, Millis end)
{
    std::string all;
    player.Play(begin);
    for (Millis now = begin; !player.Finished() && now < end; now += 10) {
        all += player.Take(now, 1000);
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
        offsets.push_back(bytes.size());
        const auto marks = receiver::CapturePace(bytes);
        // Over midnight, at fractions, and one second for the gap.
        const std::vector<double> expected{0, 1000, 1200, 1400, 1600, 2600, 3600};
        QCOMPARE(marks.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            QVERIFY(std::abs(marks[i].at - expected[i]) < 0.01 && marks[i].offset == offsets[i]);
        }

        // Three without a time, then two with one; a sentence that lags and one
        // with a wrong checksum count for nothing.
        const std::string blank = Rmc("") + Sentence("$GPGGA,,,,,,0,,,,,,,,");
        std::string wrong = Rmc("121212.00");
        wrong[wrong.size() - 3] ^= 1;
        const auto blanks = receiver::CapturePace(blank + blank + blank + Rmc("101010.00") + wrong +
                                                  Rmc("101011.00") + Sentence("$GPGLL,,,,,101010.00,V,N"));
        QVERIFY(blanks.size() == 6 && blanks.back().at == 5000.0);
        QCOMPARE(receiver::CapturePace(std::string(2500, '\x55')).back().at, 2500.0);
        QCOMPARE(receiver::CapturePace(std::string()).back().at, 0.0);
    }

    void PausesAndRepeats()
    {
        const std::string bytes = Rmc("101010.00") + Rmc("101011.00");
        CapturePlayer player(bytes, 1.0, true);
        QVERIFY(player.Take(5000, 1000).empty()); // nobody has pressed play
        std::string all = Played(player, 5000, 5600);
        // A byte waits for the end of its line, and no longer.
        QVERIFY(all.size() < bytes.size());
        player.Pause(5600);
        QVERIFY(player.Take(60000, 1000).empty());
        all += Played(player, 60000, 68000);
        QVERIFY(all.size() >= 4 * bytes.size() && all.size() <= 5 * bytes.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(all[i], bytes[i % bytes.size()]);
        }
        CapturePlayer tenfold(bytes, 10.0, false);
        QVERIFY(Played(tenfold, 0, 180).size() < bytes.size() && tenfold.Take(210, 1000).size() > 0);
    }

    void RecordedCaptures()
    {
        // Seconds that the recordings last by their own times, counted by hand from
        // first to last epoch.
        for (const auto& [name, seconds] :
             {std::pair("ublox-zed-f9p-nmea", 29), std::pair("quectelLC79D", 30), std::pair("st-teseo-liv4f", 12),
              std::pair("quectel-l76k-dual", 130), std::pair("ericsson-gru04-02-70sec", 71)}) {
            QFile file(QStringLiteral(GNSS_CAPTURES "/%1.log").arg(name));
            if (!file.open(QIODevice::ReadOnly)) {
                QSKIP("no recorded captures here");
            }
            const double lasts = receiver::CapturePace(file.readAll().toStdString()).back().at / 1000.0;
            QVERIFY2(std::abs(lasts - seconds) <= 2.0, name);
        }
    }
};

QTEST_GUILESS_MAIN(TestReceiverCapturePlayer)
#include "tst_captureplayer.moc"
