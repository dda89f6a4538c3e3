// SPDX-License-Identifier: MIT
#include "receiver/Epoch.h"
#include "receiver/Motion.h"
#include "receiver/Random.h"
#include "receiver/Utc.h"

#include <QtTest>

#include <cmath>

using receiver::AllOrbits;
using receiver::Geodetic;
using receiver::Millis;

namespace {

constexpr std::array<bool, receiver::kSystems> kAll{{true, true, true, true, true}};
const Millis kNoon = receiver::FromFields({2026, 6, 1, 12, 0, 0, 0});

double Distance(const receiver::Vector3& a, const receiver::Vector3& b)
{
    return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z);
}

bool Near(double got, double expected, double tolerance)
{
    return std::abs(got - expected) < tolerance;
}

} // namespace

class TestReceiverSky : public QObject {
    Q_OBJECT

private slots:
    void DatesAndTimes()
    {
        Millis utc = 0;
        QVERIFY(receiver::ParseUtc("2024-02-29T23:59:59.999Z", utc) && utc == 1709251199999);
        QVERIFY(receiver::ToFields(utc + 1).month == 3 && receiver::ToFields(utc + 1).day == 1);
        QVERIFY(receiver::ParseUtc("1980-01-06", utc) && utc == receiver::kGpsEpoch);
        for (const char* wrong : {"", "2026", "2026-02-30", "2026-01-01T24:00", "2026-01-01T10:00:60",
                                  "2026/01/01", "2026-01-01T10:00:00junk", "2026-01-01X10:00"}) {
            QVERIFY2(!receiver::ParseUtc(wrong, utc), wrong);
        }
        for (Millis day = 0; day < 60000; day += 13) {
            QCOMPARE(receiver::FromFields(receiver::ToFields(day * 86400000 + 12345678)),
                     day * 86400000 + 12345678);
        }
    }

    void LookAnglesAndOffsets()
    {
        const Geodetic place{52.0, 13.0, 50.0};
        const auto straightUp = receiver::LookFrom(place, receiver::ToEcef({52.0, 13.0, 20000050.0}));
        QVERIFY(straightUp.elevation > 89.99 && Near(straightUp.range, 2e7, 1.0));
        QVERIFY(Near(receiver::LookFrom(place, receiver::ToEcef({52.0, 13.1, 50.0})).azimuth, 90.0, 0.1));
        // Exact against the earth-fixed geometry within a few kilometres, also at
        // the date line and far south.
        for (const Geodetic& from : {place, Geodetic{-77.8, 179.999, 1200.0}, Geodetic{0.0, -180.0, 0.0}}) {
            const Geodetic to = receiver::Moved(from, 3000.0, -4000.0, 0.0);
            QVERIFY(Near(Distance(receiver::ToEcef(from), receiver::ToEcef(to)), 5000.0, 10.0));
            double east = 0.0;
            double north = 0.0;
            receiver::OffsetBetween(from, to, east, north);
            QVERIFY(Near(east, 3000.0, 0.01) && Near(north, -4000.0, 0.01) && std::abs(to.longitude) <= 180.0);
        }
    }

    void SatellitesRiseAndSet()
    {
        const receiver::Sky sky(1);
        std::map<std::size_t, int> seen;
        double strength[2] = {}; // sums of low and of high satellites
        int counts[2] = {};
        for (int step = 0; step < 144; ++step) {
            int gps = 0;
            const Millis now = kNoon + Millis{step} * 600000;
            for (const auto& view : sky.Above({47.4, 8.5, 400.0}, now, kAll)) {
                ++seen[view.index];
                gps += view.orbit->system == receiver::System::Gps ? 1 : 0;
                QVERIFY(view.look.elevation > 0.0 && view.look.elevation <= 90.0);
                QVERIFY(view.look.azimuth >= 0.0 && view.look.azimuth < 360.0);
                const bool high = view.look.elevation > 60.0;
                strength[high] += high || view.look.elevation < 12.0 ? view.cn0[0] : 0.0;
                counts[high] += high || view.look.elevation < 12.0 ? 1 : 0;
            }
            QVERIFY2(gps >= 5 && gps <= 16, qPrintable(QString::number(gps)));
            // BeiDou's satellite 3 stands over 110.5 degrees east.
            QVERIFY(receiver::LookFrom({0.0, 110.0, 0.0}, receiver::PositionAt(AllOrbits()[57], now)).elevation >
                    89.0);
        }
        constexpr int days[receiver::kSystems] = {1, 7, 8, 10,
                                                  1}; // after which the medium ones repeat their tracks
        for (std::size_t i = 0; i < AllOrbits().size(); ++i) {
            const receiver::Orbit& orbit = AllOrbits()[i];
            const bool medium = orbit.kind == receiver::OrbitKind::Medium;
            const auto later = kNoon + static_cast<Millis>(86164090.5 * (medium ? days[int(orbit.system)] : 1));
            QVERIFY2((!medium || (seen[i] > 10 && seen[i] < 120)) &&
                         Distance(receiver::PositionAt(orbit, kNoon), receiver::PositionAt(orbit, later)) <
                             300000.0,
                     qPrintable(QString::number(orbit.svid)));
        }
        const double low = strength[0] / counts[0];
        const double high = strength[1] / counts[1];
        QVERIFY2(high - low > 8.0 && high < 52.0 && low > 25.0, qPrintable(QString("%1 %2").arg(high).arg(low)));
    }

    void NoiseHasItsDeviation()
    {
        double squares = 0.0;
        for (int i = 0; i < 20000; ++i) {
            squares += std::pow(receiver::SmoothNoise(5, i * 7.3, 10.0), 2);
        }
        QVERIFY(Near(squares / 20000, 1.0, 0.1));
    }

    void DilutionOfAKnownGeometry()
    {
        std::vector<receiver::EpochSatellite> satellites(5);
        for (std::size_t i = 0; i < 5; ++i) {
            satellites[i].used = true;
            satellites[i].view.look.elevation = i == 0 ? 90.0 : 0.0;
            satellites[i].view.look.azimuth = 90.0 * static_cast<double>(i);
        }
        // One overhead and four on the horizon: east and north have 1/2 each, up 1
        // + 1/4.
        double dop[3] = {};
        QVERIFY(receiver::ComputeDilution(satellites, dop[0], dop[1], dop[2]));
        QVERIFY(Near(dop[0], 1.5, 1e-9) && Near(dop[1], 1.0, 1e-9) && Near(dop[2], std::sqrt(1.25), 1e-9));
        satellites[0].view.look.elevation = 0.0;
        QVERIFY(!receiver::ComputeDilution(satellites, dop[0], dop[1],
                                           dop[2])); // all in one plane
        satellites[0].used = satellites[1].used = false;
        QVERIFY(!receiver::ComputeDilution(satellites, dop[0], dop[1], dop[2]));
    }

    void Tracks()
    {
        std::vector<receiver::TrackPoint> points;
        std::string error;
        QVERIFY(receiver::ParseTrack("seconds,lat,lon,alt\n# a walk\n0,47,8,400\r\n10;47.001;8;410\n\n 20  "
                                     "47.001 8.001\n",
                                     points, error));
        const auto motion = receiver::Motion::Along(points);
        const auto between = motion.At(5.0);
        QVERIFY(Near(between.place.latitude, 47.0005, 1e-9) && between.place.altitude == 405.0);
        QVERIFY(Near(between.speed, 11.12, 0.02) && std::abs(between.heading) < 0.1);
        QVERIFY(Near(motion.At(15.0).heading, 90.0, 0.1));
        QVERIFY(motion.At(1000.0).place.longitude == 8.001 && motion.At(1000.0).speed == 0.0);
        for (const char* wrong : {"", "# nothing\n", "0,47\n", "0,47,8,1,2\n", "0,91,8,0\n", "0,47,8,x\n",
                                  "1,47,8,0\n1,47,8,0\n", "0,nan,8,0\n"}) {
            error.clear();
            QVERIFY2(!receiver::ParseTrack(wrong, points, error) && !error.empty(), wrong);
        }
        // 15 m/s on a circle of 200 m are 4.3 degrees a second.
        const auto circle = receiver::Motion::Circle({47.4, 8.5, 400.0}, 200.0, 15.0);
        const double turned = circle.At(8.0).heading - circle.At(7.0).heading;
        QVERIFY(Near(std::fmod(turned + 360.0, 360.0), 4.297, 0.01) && circle.At(7.0).speed == 15.0);
        QVERIFY(Near(Distance(receiver::ToEcef(circle.At(8.0).place), receiver::ToEcef(circle.At(7.0).place)),
                     15.0, 0.1));
    }
};

QTEST_GUILESS_MAIN(TestReceiverSky)
#include "tst_sky.moc"
