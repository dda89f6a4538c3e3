#include "receiver/Epoch.h"
#include "receiver/Motion.h"
#include "receiver/Random.h"
#include "receiver/Utc.h"

#include <QtTest>

#include <cmath>

using vrx::AllOrbits;
using vrx::Geodetic;
using vrx::Millis;

namespace {

constexpr std::array<bool, vrx::kSystems> kAll{{true, true, true, true, true}};
const Millis kNoon = vrx::FromFields({2026, 6, 1, 12, 0, 0, 0});
const Geodetic kZurich{47.4, 8.5, 400.0};

double Distance(const vrx::Vector3& a, const vrx::Vector3& b)
{
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

} // namespace

class TestReceiverSky : public QObject {
    Q_OBJECT

private slots:
    void DatesAndTimes()
    {
        Millis utc = 0;
        QVERIFY(vrx::ParseUtc("2024-02-29T23:59:59.999Z", utc));
        QCOMPARE(utc, Millis{1709251199999});
        const vrx::UtcFields next = vrx::ToFields(utc + 1);
        QCOMPARE(next.month, 3);
        QCOMPARE(next.day, 1);
        QVERIFY(vrx::ParseUtc("1980-01-06", utc));
        QCOMPARE(utc, vrx::kGpsEpoch);
        for (const char* wrong : {"", "2026", "2026-02-30", "2026-01-01T24:00", "2026-01-01T10:00:60",
                                  "2026/01/01", "2026-01-01T10:00:00junk", "2026-01-01X10:00"}) {
            QVERIFY2(!vrx::ParseUtc(wrong, utc), wrong);
        }
        for (Millis day = 0; day < 60000; day += 13) {
            QCOMPARE(vrx::FromFields(vrx::ToFields(day * 86400000 + 12345678)), day * 86400000 + 12345678);
        }
    }

    void LookAnglesAndOffsets()
    {
        const Geodetic place{52.0, 13.0, 50.0};
        const auto straightUp = vrx::LookFrom(place, vrx::ToEcef({52.0, 13.0, 20000050.0}));
        QVERIFY(straightUp.elevation > 89.99);
        QVERIFY(std::abs(straightUp.range - 2e7) < 1.0);
        const auto east = vrx::LookFrom(place, vrx::ToEcef({52.0, 13.1, 50.0}));
        QVERIFY(std::abs(east.azimuth - 90.0) < 0.1);
        // Exact against the earth-fixed geometry within a few kilometres, also at the date line and far south.
        for (const Geodetic& from : {place, Geodetic{-77.8, 179.999, 1200.0}, Geodetic{0.0, -180.0, 0.0}}) {
            const Geodetic to = vrx::Moved(from, 3000.0, -4000.0, 0.0);
            QVERIFY(std::abs(Distance(vrx::ToEcef(from), vrx::ToEcef(to)) - 5000.0) < 10.0);
            QVERIFY(std::abs(to.longitude) <= 180.0);
            double back = 0.0;
            double north = 0.0;
            vrx::OffsetBetween(from, to, back, north);
            QVERIFY(std::abs(back - 3000.0) < 0.01 && std::abs(north + 4000.0) < 0.01);
        }
    }

    void OrbitsHaveTheirPeriods()
    {
        for (const vrx::Orbit& orbit : AllOrbits()) {
            const double hours = vrx::PeriodOf(orbit) / 3600.0;
            const double sidereal = 23.9345;
            if (orbit.kind != vrx::OrbitKind::Medium) {
                QVERIFY(std::abs(hours - sidereal) < 0.001);
            } else if (orbit.system == vrx::System::Gps) {
                QVERIFY(std::abs(hours - sidereal / 2) < 0.01);
            } else if (orbit.system == vrx::System::Glonass) {
                QVERIFY(std::abs(hours - sidereal * 8 / 17) < 0.01);
            } else if (orbit.system == vrx::System::Galileo) {
                QVERIFY(std::abs(hours - sidereal * 10 / 17) < 0.01);
            } else {
                QVERIFY(std::abs(hours - sidereal * 7 / 13) < 0.01);
            }
            // A geostationary satellite keeps its place; an inclined one comes back to it each day.
            const auto day = static_cast<Millis>(sidereal * 3600000.0);
            const auto now = vrx::PositionAt(orbit, kNoon);
            if (orbit.kind == vrx::OrbitKind::Geostationary) {
                QVERIFY(Distance(now, vrx::PositionAt(orbit, kNoon + day / 3)) < 200000.0);
                QVERIFY(std::abs(now.z) < 1.0);
            } else if (orbit.kind == vrx::OrbitKind::Inclined) {
                QVERIFY(Distance(now, vrx::PositionAt(orbit, kNoon + day)) < 20000.0);
                QVERIFY(Distance(now, vrx::PositionAt(orbit, kNoon + day / 4)) > 1e7);
            }
        }
        // BeiDou's satellite 3 stands over 110.5 degrees east.
        const auto seen = vrx::LookFrom({0.0, 110.5, 0.0}, vrx::PositionAt(AllOrbits()[57], kNoon));
        QCOMPARE(int(AllOrbits()[57].svid), 3);
        QVERIFY(seen.elevation > 89.0);
    }

    void SatellitesRiseAndSet()
    {
        const vrx::Sky sky(1);
        std::map<std::size_t, int> seen;
        int fewest = 1000;
        for (int step = 0; step < 144; ++step) {
            const auto views = sky.Above(kZurich, kNoon + step * 600000, kAll);
            int gps = 0;
            for (const vrx::SatelliteView& view : views) {
                ++seen[view.index];
                gps += view.orbit->system == vrx::System::Gps ? 1 : 0;
                QVERIFY(view.look.elevation > 0.0 && view.look.elevation <= 90.0);
                QVERIFY(view.look.azimuth >= 0.0 && view.look.azimuth < 360.0);
            }
            fewest = std::min(fewest, gps);
            QVERIFY2(gps <= 16, qPrintable(QString::number(gps)));
        }
        QVERIFY2(fewest >= 5, qPrintable(QString::number(fewest)));
        for (std::size_t i = 0; i < AllOrbits().size(); ++i) {
            if (AllOrbits()[i].kind == vrx::OrbitKind::Medium) {
                QVERIFY2(seen[i] > 10 && seen[i] < 120, qPrintable(QString::number(AllOrbits()[i].svid)));
            }
        }
        // None of the Japanese ones is ever high over Europe, one always is over Japan.
        for (int step = 0; step < 48; ++step) {
            double best = 0.0;
            for (const auto& view : sky.Above({35.7, 139.7, 40.0}, kNoon + step * 1800000, kAll)) {
                if (view.orbit->system == vrx::System::Qzss) {
                    best = std::max(best, view.look.elevation);
                }
            }
            QVERIFY(best > 40.0);
        }
    }

    void StrengthGrowsWithElevationAndFadesSlowly()
    {
        const vrx::Sky sky(1);
        double low = 0.0;
        double high = 0.0;
        int lows = 0;
        int highs = 0;
        double biggestStep = 0.0;
        std::map<std::size_t, double> before;
        for (int second = 0; second < 3600; ++second) {
            std::map<std::size_t, double> now;
            for (const auto& view : sky.Above(kZurich, kNoon + second * 1000, kAll)) {
                now[view.index] = view.cn0[0];
                if (before.count(view.index) == 1) {
                    biggestStep = std::max(biggestStep, std::abs(view.cn0[0] - before[view.index]));
                }
                if (view.look.elevation < 12.0) {
                    low += view.cn0[0];
                    ++lows;
                } else if (view.look.elevation > 60.0) {
                    high += view.cn0[0];
                    ++highs;
                }
            }
            before = now;
        }
        QVERIFY(lows > 100 && highs > 100);
        QVERIFY2(high / highs - low / lows > 8.0, qPrintable(QString("%1 %2").arg(high / highs).arg(low / lows)));
        QVERIFY(high / highs < 52.0 && low / lows > 25.0);
        QVERIFY2(biggestStep > 0.05 && biggestStep < 4.0, qPrintable(QString::number(biggestStep)));
    }

    void NoiseHasItsMoments()
    {
        vrx::Random random(9);
        double sum = 0.0;
        double squares = 0.0;
        double smoothSquares = 0.0;
        constexpr int count = 20000;
        for (int i = 0; i < count; ++i) {
            const double g = random.Gaussian();
            sum += g;
            squares += g * g;
            const double s = vrx::SmoothNoise(5, i * 7.3, 10.0);
            smoothSquares += s * s;
        }
        QVERIFY(std::abs(sum / count) < 0.03);
        QVERIFY(std::abs(squares / count - 1.0) < 0.05);
        QVERIFY(std::abs(smoothSquares / count - 1.0) < 0.1);
    }

    void DilutionOfAKnownGeometry()
    {
        std::vector<vrx::EpochSatellite> satellites(5);
        for (std::size_t i = 0; i < 5; ++i) {
            satellites[i].used = true;
            satellites[i].view.look.elevation = i == 0 ? 90.0 : 0.0;
            satellites[i].view.look.azimuth = 90.0 * static_cast<double>(i);
        }
        // One overhead and four on the horizon: east and north have 1/2 each, up 1 + 1/4.
        double pdop = 0.0;
        double hdop = 0.0;
        double vdop = 0.0;
        QVERIFY(vrx::ComputeDilution(satellites, pdop, hdop, vdop));
        QVERIFY(std::abs(hdop - 1.0) < 1e-9);
        QVERIFY(std::abs(vdop - std::sqrt(1.25)) < 1e-9);
        QVERIFY(std::abs(pdop - 1.5) < 1e-9);
        satellites[0].used = satellites[1].used = false;
        QVERIFY(!vrx::ComputeDilution(satellites, pdop, hdop, vdop));
        satellites[0].used = true;
        satellites[0].view.look.elevation = 0.0;
        QVERIFY(!vrx::ComputeDilution(satellites, pdop, hdop, vdop)); // all in one plane
    }

    void Tracks()
    {
        std::vector<vrx::TrackPoint> points;
        std::string error;
        QVERIFY(vrx::ParseTrack(
            "seconds,lat,lon,alt\n# a walk\n0,47,8,400\r\n10;47.001;8;410\n\n 20  47.001 8.001\n", points, error));
        QCOMPARE(points.size(), std::size_t{3});
        const auto motion = vrx::Motion::Along(points);
        const auto between = motion.At(5.0);
        QVERIFY(std::abs(between.place.latitude - 47.0005) < 1e-9);
        QCOMPARE(between.place.altitude, 405.0);
        QVERIFY(std::abs(between.speed - 11.12) < 0.02);
        QVERIFY(std::abs(between.heading) < 0.1);
        QVERIFY(std::abs(motion.At(15.0).heading - 90.0) < 0.1);
        QCOMPARE(motion.At(1000.0).place.longitude, 8.001);
        QCOMPARE(motion.At(1000.0).speed, 0.0);
        for (const char* wrong : {"", "# nothing\n", "0,47\n", "0,47,8,1,2\n", "0,91,8,0\n", "0,47,8,x\n",
                                  "1,47,8,0\n1,47,8,0\n", "0,nan,8,0\n"}) {
            error.clear();
            QVERIFY2(!vrx::ParseTrack(wrong, points, error) && !error.empty(), wrong);
        }
    }
};

QTEST_GUILESS_MAIN(TestReceiverSky)
#include "tst_receiver_sky.moc"
