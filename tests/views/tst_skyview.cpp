// SPDX-License-Identifier: MIT
#include "PaintedViews.h"

#include "views/sky/SatellitesPosViewWin.h"
#include "views/sky/SignalRamp.h"
#include "views/sky/SkyGeometry.h"
#include "views/sky/SkyMap.h"

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
};

namespace {

// A view whose plot has a radius of 180 around the middle.
constexpr double kRadius = 180.0;
const QSize kSize(500, 410);
const QPoint kMiddle(250, 205);
const QColor kGps(96, 56, 17);
const QColor kGlonass(0, 128, 128);

} // namespace

void TestSkyView::Ramp()
{
    QCOMPARE(SignalRamp(0), QColor(255, 0, 0));
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
    const auto cell = [&map](std::size_t i) {
        const SkyMap::Cell& at = map.Cells().at(i);
        return QList<int>{at.elevation, at.azimuth, at.cn0, at.count};
    };
    map.Fold(0, 0, 40);
    map.Fold(9, 14, 31);
    QCOMPARE(cell(0), (QList<int>{5, 7, 35, 2})); // 71 / 2, cut
    map.Fold(5, 5, 0);
    QCOMPARE(cell(0), (QList<int>{5, 7, 23, 3})); // 70 / 3, cut: a silent satellite lowers the average
    map.Fold(10, 15, 20);
    QCOMPARE(cell(1), (QList<int>{15, 22, 20, 1}));
    map.Fold(89, 359, 20);
    QCOMPARE(cell(2), (QList<int>{85, 352, 20, 1}));
    map.Fold(90, 360, 20);
    map.Fold(200, 400, 20);
    QCOMPARE(cell(3), (QList<int>{0, 0, 20, 2}));
    for (int direction = 0; direction < 256 * 400; ++direction) {
        map.Fold(static_cast<std::uint8_t>(direction / 400), static_cast<std::uint16_t>(direction % 400), 255);
    }
    QCOMPARE(map.Cells().size(), std::size_t(25 * 10));
}

void TestSkyView::Geometry()
{
    using namespace SkyGeometry;
    QCOMPARE(Radius(401), 175.5F);
    QCOMPARE(Position(200, 123, kRadius), QPointF(0.0, 0.0));
    QCOMPARE(Position(0, 0, kRadius), QPointF(0.0, -180.0));
    QVERIFY((Position(45, 90, kRadius) - QPointF(90.0, 0.0)).manhattanLength() < 1e-9);
    QVERIFY((Position(45, 400, kRadius) - Position(45, 40, kRadius)).manhattanLength() < 1e-9);
    QCOMPARE(DotBox(QPointF(10.2, -20.4)), QRect(QPoint(-5, -35), QPoint(24, -6)));
    QStringList labels;
    for (const int i : {0, 1, 6, 11, 12, 18, 23}) {
        labels += AzimuthLabel(i);
    }
    QCOMPARE(labels, QStringList({"    N", "    15°", "     E", "    165°", "S", "W", "345°"}));

    // A cell covers its azimuths and its band, and the cell of no band the lowest five degrees.
    const QPainterPath path = CellPath({1, 35, 97, 40}, kRadius);
    for (const int azimuth : {91, 104}) {
        QVERIFY(path.contains(Position(31, azimuth, kRadius)) && path.contains(Position(39, azimuth, kRadius)));
        QVERIFY(!path.contains(Position(29, azimuth, kRadius)) && !path.contains(Position(41, azimuth, kRadius)));
    }
    QVERIFY(!path.contains(Position(35, 89, kRadius)) && !path.contains(Position(35, 106, kRadius)));
    const QPainterPath low = CellPath({1, 0, 97, 40}, kRadius);
    QVERIFY(low.contains(Position(4, 97, kRadius)) && !low.contains(Position(6, 97, kRadius)));
}

void TestSkyView::PaintsCells()
{
    SatellitesPosViewWin view(nullptr);
    view.resize(kSize);
    // The letters are unknown, so that no dots cover the cells; two bands of one azimuth lie side by side.
    Send(view, SkyBytes({{'?', 1, 12, 0, 97, 0, 30}, {'?', 2, 35, 0, 97, 0, 10}, {'?', 3, 12, 0, 97, 0, 31}}));
    const QImage picture = Picture(view);
    const auto at = [&](int elevation) {
        return QColor(picture.pixel(kMiddle + SkyGeometry::Position(elevation, 92, kRadius).toPoint()));
    };
    QCOMPARE(at(12), SignalRamp(30));
    QCOMPARE(at(35), SignalRamp(10));
    QCOMPARE(at(25), QColor(240, 240, 240));
    view.actions().at(0)->trigger();
    QCOMPARE(Count(Picture(view), view.rect(), SignalRamp(30)), 0);
}

void TestSkyView::PaintsSatellites()
{
    SatellitesPosViewWin view(nullptr);
    view.resize(kSize);
    QPalette palette = view.palette();
    palette.setColor(QPalette::Window, QColor(1, 2, 3));
    view.setPalette(palette);
    Send(view, SkyBytes({{'G', 1, 45, 0, 90, 1, 40},
                         {'G', 2, 45, 0, 180, 0, 40},
                         {'G', 3, 45, 0, 270, 0, 0},
                         {'I', 4, 0, 0, 0, 1, 30},
                         {'R', 5, 91, 0, 10, 1, 30}}));
    const QImage picture = Picture(view);
    // Beside the number, eleven pixels left of the dot's middle.
    const auto dot = [&](int dx, int dy) { return QColor(picture.pixel(kMiddle + QPoint(dx - 11, dy))); };
    QCOMPARE(dot(90, 0), kGps);
    QCOMPARE(dot(0, 90), QColor(Qt::gray));
    QCOMPARE(dot(-90, 0), QColor(1, 2, 3));
    QCOMPARE(dot(0, -180), QColor(243, 156, 18));
    QCOMPARE(dot(0, 0), kGlonass);

    const auto shown = [&view](const QColor& colour) {
        return Count(Picture(view), QRect(100, 0, 400, 410), colour) > 300;
    };
    Click(view, QPointF(12, 63));                                      // the row of the GPS
    QVERIFY(!shown(kGps) && shown(kGlonass) && shown(SignalRamp(40))); // its cells stay
    Click(view, QPointF(29.4, 80.4));
    Click(view, QPointF(29.6, 36)); // beside the row of GLONASS
    QVERIFY(shown(kGps) && shown(kGlonass));
    Click(view, QPointF(29.4, 36));
    QVERIFY(!shown(kGlonass));
    Send(view, SkyBytes({}));
    QVERIFY(!shown(kGps));
}

QTEST_MAIN(TestSkyView)
#include "tst_skyview.moc"
