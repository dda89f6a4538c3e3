#include "PaintedViews.h"

#include "views/SatellitesPosViewWin.h"
#include "views/SignalRamp.h"
#include "views/SkyGeometry.h"
#include "views/SkyMap.h"

#include <QAction>
#include <QTest>

using namespace painted;

class TestSkyView : public QObject {
    Q_OBJECT

private slots:
    void Ramp();
    void FoldsIntoCells();
    void Geometry();
    void PaintsCells();
    void PaintsSatellites();
    void HidesAConstellation();
};

namespace {

// A view whose plot has a radius of 180 around the middle.
constexpr int kWidth = 500;
constexpr int kHeight = 410;
const QPoint kMiddle(250, 205);
const QColor kGps(96, 56, 17);

} // namespace

void TestSkyView::Ramp()
{
    QCOMPARE(SignalRamp(0), QColor(255, 0, 0));
    QCOMPARE(SignalRamp(12), QColor(255, 122, 0));
    QCOMPARE(SignalRamp(24), QColor(255, 244, 0));
    QCOMPARE(SignalRamp(25), QColor(255, 255, 0));
    QCOMPARE(SignalRamp(26), QColor(244, 255, 0));
    QCOMPARE(SignalRamp(49), QColor(10, 255, 0));
    QCOMPARE(SignalRamp(50), QColor(0, 255, 0));
    QCOMPARE(SignalRamp(255), QColor(0, 255, 0));
    QVERIFY(!SignalRamp(-1).isValid());
}

void TestSkyView::FoldsIntoCells()
{
    SkyMap map;
    map.Fold(0, 0, 40);
    map.Fold(9, 14, 31);
    QCOMPARE(map.Cells().size(), std::size_t(1));
    QCOMPARE(int(map.Cells()[0].elevation), 5);
    QCOMPARE(int(map.Cells()[0].azimuth), 7);
    QCOMPARE(int(map.Cells()[0].cn0), 35); // 71 / 2, cut
    map.Fold(5, 5, 0);
    QCOMPARE(int(map.Cells()[0].cn0), 23); // 70 / 3, cut: a silent satellite lowers the average
    QCOMPARE(map.Cells()[0].count, 3);

    map.Fold(10, 15, 20);
    QCOMPARE(int(map.Cells()[1].elevation), 15);
    QCOMPARE(int(map.Cells()[1].azimuth), 22);
    map.Fold(89, 359, 20);
    QCOMPARE(int(map.Cells()[2].elevation), 85);
    QCOMPARE(int(map.Cells()[2].azimuth), 352);
    map.Fold(90, 360, 20);
    QCOMPARE(int(map.Cells()[3].elevation), 0);
    QCOMPARE(int(map.Cells()[3].azimuth), 0);
    map.Fold(200, 400, 20);
    QCOMPARE(map.Cells()[3].count, 2);

    for (int elevation = 0; elevation < 256; ++elevation) {
        for (int azimuth = 0; azimuth < 1000; azimuth += 3)
            map.Fold(static_cast<std::uint8_t>(elevation), static_cast<std::uint16_t>(azimuth), 255);
    }
    QCOMPARE(map.Cells().size(), std::size_t(25 * 10));
}

void TestSkyView::Geometry()
{
    using namespace SkyGeometry;
    QCOMPARE(Radius(kHeight), 180.0F);
    QCOMPARE(Radius(401), 175.5F);
    QCOMPARE(Position(90, 123, 180.0), QPointF(0.0, 0.0));
    QCOMPARE(Position(200, 123, 180.0), QPointF(0.0, 0.0));
    QCOMPARE(Position(0, 0, 180.0), QPointF(0.0, -180.0));
    QVERIFY((Position(45, 90, 180.0) - QPointF(90.0, 0.0)).manhattanLength() < 1e-9);
    QVERIFY((Position(45, 400, 180.0) - Position(45, 40, 180.0)).manhattanLength() < 1e-9);
    QCOMPARE(DotBox(QPointF(10.2, -20.4)), QRect(QPoint(-5, -35), QPoint(24, -6)));

    QCOMPARE(AzimuthLabel(0), QString("    N"));
    QCOMPARE(AzimuthLabel(1), QString("    15°"));
    QCOMPARE(AzimuthLabel(6), QString("     E"));
    QCOMPARE(AzimuthLabel(11), QString("    165°"));
    QCOMPARE(AzimuthLabel(12), QString("S"));
    QCOMPARE(AzimuthLabel(18), QString("W"));
    QCOMPARE(AzimuthLabel(23), QString("345°"));

    // A cell covers its azimuths and its band, and the cell of no band the lowest five degrees.
    const QPainterPath path = CellPath({1, 35, 97, 40}, 180.0);
    for (const int azimuth : {91, 97, 104}) {
        QVERIFY(path.contains(Position(31, azimuth, 180.0)));
        QVERIFY(path.contains(Position(39, azimuth, 180.0)));
        QVERIFY(!path.contains(Position(29, azimuth, 180.0)));
        QVERIFY(!path.contains(Position(41, azimuth, 180.0)));
    }
    QVERIFY(!path.contains(Position(35, 89, 180.0)));
    QVERIFY(!path.contains(Position(35, 106, 180.0)));
    const QPainterPath low = CellPath({1, 0, 97, 40}, 180.0);
    QVERIFY(low.contains(Position(4, 97, 180.0)) && !low.contains(Position(6, 97, 180.0)));
}

void TestSkyView::PaintsCells()
{
    SatellitesPosViewWin view(nullptr);
    view.resize(kWidth, kHeight);
    // The letters are unknown, so that no dots cover the cells; two bands of one azimuth lie side by side.
    Send(view, SkyBytes({{'?', 1, 12, 0, 97, 0, 30}, {'?', 2, 35, 0, 97, 0, 10}, {'?', 3, 12, 0, 97, 0, 31}}));
    const QImage picture = Picture(view);
    const auto at = [&](int elevation, int azimuth) {
        return QColor(picture.pixel(kMiddle + SkyGeometry::Position(elevation, azimuth, 180.0).toPoint()));
    };
    QCOMPARE(at(12, 92), SignalRamp(30));
    QCOMPARE(at(35, 92), SignalRamp(10));
    QCOMPARE(at(25, 92), QColor(240, 240, 240));
    QCOMPARE(QColor(picture.pixel(490, 300)), QColor(240, 240, 240));

    view.actions().at(0)->trigger();
    QCOMPARE(Count(Picture(view), view.rect(), SignalRamp(30)), 0);
}

void TestSkyView::PaintsSatellites()
{
    SatellitesPosViewWin view(nullptr);
    view.resize(kWidth, kHeight);
    QPalette palette = view.palette();
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    view.setPalette(palette);
    Send(view, SkyBytes({{'G', 1, 45, 0, 90, 1, 40},
                         {'G', 2, 45, 0, 180, 0, 40},
                         {'G', 3, 45, 0, 270, 0, 0},
                         {'I', 4, 0, 0, 0, 1, 30},
                         {'C', 5, 91, 0, 10, 1, 30}}));
    const QImage picture = Picture(view);
    // Beside the number, ten pixels left of the dot's middle.
    const auto dot = [&](int dx, int dy) { return QColor(picture.pixel(kMiddle + QPoint(dx - 11, dy))); };
    QCOMPARE(dot(90, 0), kGps);
    QCOMPARE(dot(0, 90), QColor(Qt::gray));
    QCOMPARE(dot(-90, 0), QColor(1, 2, 3));
    QCOMPARE(dot(0, -180), QColor(243, 156, 18));
    QCOMPARE(dot(0, 0), QColor(203, 65, 84));
    // The next record replaces the dots.
    Send(view, SkyBytes({}));
    QCOMPARE(Count(Picture(view), QRect(100, 0, 400, 410), kGps), 0);
}

void TestSkyView::HidesAConstellation()
{
    SatellitesPosViewWin view(nullptr);
    view.resize(kWidth, kHeight);
    Send(view, SkyBytes({{'G', 1, 45, 0, 90, 1, 40}, {'R', 2, 45, 0, 180, 1, 40}}));
    const QRect plot(100, 0, 400, 410);
    const QColor glonass(0, 128, 128);
    Click(view, QPointF(12, 63)); // the row of the GPS
    QCOMPARE(Count(Picture(view), plot, kGps), 0);
    QVERIFY(Count(Picture(view), plot, glonass) > 300);
    // Its cells stay.
    QVERIFY(Count(Picture(view), plot, SignalRamp(40)) > 300);
    Click(view, QPointF(29.4, 80.4));
    QVERIFY(Count(Picture(view), plot, kGps) > 300);
    Click(view, QPointF(29.6, 36));
    QVERIFY(Count(Picture(view), plot, glonass) > 300);
    Click(view, QPointF(29.4, 36));
    QCOMPARE(Count(Picture(view), plot, glonass), 0);
}

QTEST_MAIN(TestSkyView)
#include "TestSkyView.moc"
