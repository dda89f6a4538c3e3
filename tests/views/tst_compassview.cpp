// SPDX-License-Identifier: MIT
#include "PaintedViews.h"

#include "views/CompassViewWin.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace painted;

class TestCompassView : public QObject {
    Q_OBJECT

private slots:
    void TurnsTheNeedle();
    void PointsNowhereWithoutANumber();
};

namespace {

/// A view of three pixels for one unit of the dial.
constexpr int kFactor = 3;

QColor At(const QImage& picture, double x, double y)
{
    return QColor(
        picture.pixel(qRound(picture.width() / 2.0 + x * kFactor), qRound(picture.height() / 2.0 + y * kFactor)));
}

} // namespace

void TestCompassView::TurnsTheNeedle()
{
    CompassViewWin view(nullptr);
    view.resize(800, 600);
    for (const auto& [heading, turn] :
         {std::pair{0.0F, 0.0}, {90.0F, 90.0}, {360.0F, 0.0}, {-90.0F, 270.0}, {3600045.0F, 45.0}}) {
        Send(view, CompassBytes(heading, 0));
        const QImage picture = Picture(view);
        // The four parts, at a place in the middle of each, turned with the needle.
        const double angle = turn * 0.017453292519943295;
        const auto part = [&](double x, double y) {
            return At(picture, x * std::cos(angle) - y * std::sin(angle),
                      x * std::sin(angle) + y * std::cos(angle));
        };
        QCOMPARE(part(-2, -40), QColor(Qt::darkRed));
        QCOMPARE(part(2, -40), QColor(Qt::red));
        QCOMPARE(part(-2, 40), QColor(Qt::lightGray));
        QCOMPARE(part(2, 40), QColor(Qt::white));
        QCOMPARE(At(picture, -19.5, -6.5), QColor(Qt::gray));
        QCOMPARE(At(picture, 19.0, 7.0), QColor(Qt::gray));
    }
}

void TestCompassView::PointsNowhereWithoutANumber()
{
    CompassViewWin view(nullptr);
    view.resize(600, 600);
    const auto red = [&view] { return Count(Picture(view), view.rect(), Qt::red); };
    for (const float heading : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        Send(view, CompassBytes(heading, 99));
        QCOMPARE(red(), 0);
    }
    Send(view, CompassBytes(0.0F, 1).left(4)); // without its fix mode it isn't taken
    QCOMPARE(red(), 0);
    Send(view, CompassBytes(0.0F, 1));
    QVERIFY(red() > 500);
}

QTEST_MAIN(TestCompassView)
#include "tst_compassview.moc"
