#include "PaintedViews.h"

#include "views/CompassViewWin.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace painted;

class TestCompassView : public QObject {
    Q_OBJECT

private slots:
    void TurnsTheNeedle_data();
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

void TestCompassView::TurnsTheNeedle_data()
{
    QTest::addColumn<float>("heading");
    QTest::addColumn<double>("turn");
    QTest::addRow("north") << 0.0F << 0.0;
    QTest::addRow("east") << 90.0F << 90.0;
    QTest::addRow("full circle") << 360.0F << 0.0;
    QTest::addRow("negative") << -90.0F << 270.0;
    QTest::addRow("many turns") << 3600045.0F << 45.0;
}

void TestCompassView::TurnsTheNeedle()
{
    QFETCH(float, heading);
    QFETCH(double, turn);
    CompassViewWin view(nullptr);
    view.resize(800, 600);
    Send(view, CompassBytes(heading, 0));
    const QImage picture = Picture(view);
    // The four parts, at a place in the middle of each, turned with the needle.
    const auto part = [&](double x, double y) {
        const double angle = turn * 0.017453292519943295;
        return At(picture, x * std::cos(angle) - y * std::sin(angle), x * std::sin(angle) + y * std::cos(angle));
    };
    QCOMPARE(part(-2, -40), QColor(Qt::darkRed));
    QCOMPARE(part(2, -40), QColor(Qt::red));
    QCOMPARE(part(-2, 40), QColor(Qt::lightGray));
    QCOMPARE(part(2, 40), QColor(Qt::white));
    QCOMPARE(At(picture, -19.5, -6.5), QColor(Qt::gray));
    QCOMPARE(At(picture, 19.0, 7.0), QColor(Qt::gray));
}

void TestCompassView::PointsNowhereWithoutANumber()
{
    CompassViewWin view(nullptr);
    view.resize(600, 600);
    for (const float heading : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        Send(view, CompassBytes(heading, 99));
        const QImage picture = Picture(view);
        QCOMPARE(Count(picture, picture.rect(), Qt::red), 0);
        QCOMPARE(At(picture, -19.5, -6.5), QColor(Qt::gray));
    }
    // A record without its fix mode isn't taken.
    view.OnRecord(CompassBytes(0.0F, 1).constData(), 4);
    QCOMPARE(Count(Picture(view), view.rect(), Qt::red), 0);
    Send(view, CompassBytes(0.0F, 1));
    QVERIFY(Count(Picture(view), view.rect(), Qt::red) > 500);
}

QTEST_MAIN(TestCompassView)
#include "TestCompassView.moc"
