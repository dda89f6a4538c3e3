// SPDX-License-Identifier: MIT
#include "PaintedViews.h"

#include "base/ProcessState.h"
#include "base/TrackState.h"
#include "bridge/ClassGnss.h"
#include "views/track/PositioningViewWin.h"
#include "views/track/SetCenterPointWin.h"

#include <QAction>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <cmath>
#include <memory>

using namespace painted;

class TestTrackView : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ClassGnss::InitGnssUtils(); }
    void init();
    void cleanup() { m_view.reset(); }

    void DrawsEachPointWhereTheCodecPutsIt();
    void FollowsTheLastPoint();
    void MenuAndWheel();
    void TellsTheAge();
    void WithoutACodecEverythingLiesInTheMiddle();

private:
    QAction* Action(int index) { return m_view->actions().at(index); }
    void Wheel(int delta);
    void Drag(const QPoint& by);
    double ScaleByDragging();

    std::unique_ptr<PositioningViewWin> m_view;
};

namespace {

constexpr double kLatitude = 39.972;
constexpr double kLongitude = 116.34;
const QPoint kMiddle(300, 200);

} // namespace

void TestTrackView::init()
{
    Global::ResetForNewWindow();
    m_view = std::make_unique<PositioningViewWin>(nullptr);
    m_view->resize(600, 400);
}

void TestTrackView::Wheel(int delta)
{
    QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(m_view.get(), &event);
}

void TestTrackView::Drag(const QPoint& by)
{
    Mouse(*m_view, QEvent::MouseButtonPress, QPointF(200, 200));
    Mouse(*m_view, QEvent::MouseMove, QPointF(200, 200) + by);
    Mouse(*m_view, QEvent::MouseButtonRelease, QPointF(200, 200) + by);
}

double TestTrackView::ScaleByDragging()
{
    const double before = TrackState::centerLongitude;
    Drag(QPoint(-100, 0));
    return (TrackState::centerLongitude - before) / 100.0 / 1.141e-05 * 500.0;
}

void TestTrackView::DrawsEachPointWhereTheCodecPutsIt()
{
    const double reference[3] = {kLongitude, kLatitude, 0.0};
    Send(*m_view, PositionBytes(kLatitude, kLongitude));
    std::vector<QPoint> dots;
    for (const auto& [north, east] : {std::pair{4e-5, 9e-5}, {-8e-5, 1e-5}, {0.0, -2e-4}}) {
        const double position[3] = {kLongitude + east, kLatitude + north, 0.0};
        double enu[3] = {};
        ClassGnss::Lla2Enu(reference, position, enu);
        dots.push_back(kMiddle + QPoint(qRound(enu[0] * 10.0), -qRound(enu[1] * 10.0)));
        Send(*m_view, PositionBytes(position[1], position[0]));
    }
    const QImage picture = Picture(*m_view);
    QVERIFY(std::abs(dots[0].x() - kMiddle.x()) > 50 && dots[0].y() < kMiddle.y());
    // The first point has become the centre; the last one is red.
    for (const QPoint& dot : {kMiddle, dots[0], dots[1]}) {
        QCOMPARE(QColor(picture.pixel(dot)), QColor(Qt::green));
    }
    QCOMPARE(QColor(picture.pixel(dots[2])), QColor(Qt::red));
    QCOMPARE(Count(picture, picture.rect(), Qt::red), Count(picture, picture.rect(), Qt::green) / 3);

    // A dotted ring of 50 pixels around the middle, and nothing between it and the next.
    int onRing = 0;
    int between = 0;
    for (int degree = 10; degree < 80; ++degree) {
        const double turn = degree * 0.0174533;
        const auto black = [&](double radius) {
            return picture.pixel(kMiddle.x() - qRound(radius * std::cos(turn)),
                                 kMiddle.y() - qRound(radius * std::sin(turn))) == qRgb(0, 0, 0);
        };
        onRing += black(50.0) ? 1 : 0;
        between += black(75.0) ? 1 : 0;
    }
    QVERIFY(onRing > 10);
    QCOMPARE(between, 0);
}

void TestTrackView::FollowsTheLastPoint()
{
    Action(2)->trigger();
    QVERIFY(TrackState::useLastPoint && Action(2)->isChecked());
    for (int i = 0; i < 3; ++i) {
        Send(*m_view, PositionBytes(kLatitude + i * 1e-4, kLongitude - i * 1e-4));
        QCOMPARE(QColor(Picture(*m_view).pixel(kMiddle)), QColor(Qt::red));
    }
    // Another view shows the same choice, and dragging ends it.
    QVERIFY(PositioningViewWin(nullptr).actions().at(2)->isChecked());
    Drag(QPoint(0, 100));
    QVERIFY(!TrackState::useLastPoint && !Action(2)->isChecked());
    QCOMPARE(TrackState::centerLatitude, kLatitude + 2e-4 + 100.0 * 50.0 * 8.99e-06 / 10.0 / 50.0);

    // In the south the plot snaps back to the first point.
    Action(1)->trigger();
    QVERIFY(TrackState::pointList.empty());
    TrackState::centerLatitude = -1.0;
    Send(*m_view, PositionBytes(-45.0, 170.0));
    Picture(*m_view);
    Drag(QPoint(30, 30));
    QVERIFY(TrackState::centerLongitude != 170.0);
    QCOMPARE(QColor(Picture(*m_view).pixel(kMiddle)), QColor(Qt::red));
    QCOMPARE(TrackState::centerLongitude, 170.0);
}

void TestTrackView::MenuAndWheel()
{
    QStringList texts;
    for (const QAction* action : m_view->actions()) {
        texts << (action->isSeparator() ? QString("-") : action->text());
    }
    QCOMPARE(texts, QStringList({"Set Center Point Coordinates", "Remove All Points", "Set Last Point As Center",
                                 "-", "Zoom In", "Zoom Out"}));

    QCOMPARE(ScaleByDragging(), 50.0);
    Action(5)->trigger();
    QCOMPARE(ScaleByDragging(), 100.0);
    Action(4)->trigger();
    Wheel(120);
    QCOMPARE(ScaleByDragging(), 25.0);
    Wheel(0);
    QCOMPARE(ScaleByDragging(), 50.0);
    for (int i = 0; i < 40; ++i) {
        Wheel(120);
    }
    QCOMPARE(ScaleByDragging(), 0.05);
    for (int i = 0; i < 40; ++i) {
        Wheel(-120);
    }
    QCOMPARE(ScaleByDragging(), 250000.0);

    // The dialog doesn't keep the view from being closed.
    m_view->show();
    Action(0)->trigger();
    auto* dialog = m_view->findChild<SetCenterPointWin*>();
    QVERIFY(dialog != nullptr && dialog->isModal() && dialog->isVisible());
    m_view.reset();
}

void TestTrackView::TellsTheAge()
{
    QCOMPARE(AgeText(*m_view), QString("数据龄期: 0s"));
    auto* timer = m_view->findChild<QTimer*>();
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 1000);
    m_view->TimerTimeout();
    m_view->TimerTimeout();
    QCOMPARE(AgeText(*m_view), QString("数据龄期: 2s"));
    m_view->OnRecord(nullptr, 25);
    QCOMPARE(AgeText(*m_view), QString("数据龄期: 2s"));
    Send(*m_view, PositionBytes(kLatitude, kLongitude));
    QCOMPARE(AgeText(*m_view), QString("数据龄期: 0s"));
    QVERIFY(timer->isActive());
}

void TestTrackView::WithoutACodecEverythingLiesInTheMiddle()
{
    ClassGnss::UnloadCodec();
    for (int i = 0; i < 3; ++i) {
        Send(*m_view, PositionBytes(kLatitude + i, kLongitude));
    }
    const QImage picture = Picture(*m_view);
    ClassGnss::InitGnssUtils();
    QCOMPARE(QColor(picture.pixel(kMiddle)), QColor(Qt::red));
    QCOMPARE(Count(picture, picture.rect(), Qt::green), 0);
}

QTEST_MAIN(TestTrackView)
#include "tst_trackview.moc"
