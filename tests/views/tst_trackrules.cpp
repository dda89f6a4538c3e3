// SPDX-License-Identifier: MIT
#include "base/ProcessState.h"
#include "base/TrackState.h"
#include "views/track/AngleForm.h"
#include "views/track/SetCenterPointWin.h"
#include "views/track/TrackDots.h"
#include "views/track/TrackGeometry.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace TrackGeometry;

class TestTrackRules : public QObject {
    Q_OBJECT

private slots:
    void init() { Global::ResetForNewWindow(); }

    void ZoomLadder();
    void Texts();
    void Centre();
    void Dragging();
    void Angles();
    void CentreDialog();
    void CentreDialogKeepsTheSignOfNoDegrees();
    void DotsEqualOneEllipseEach();
};

void TestTrackRules::ZoomLadder()
{
    double scale = kFirstScale;
    for (const double next : {100.0, 250.0, 500.0, 1000.0, 2500.0, 5000.0, 10000.0, 25000.0, 50000.0, 100000.0}) {
        scale = ZoomedOut(scale);
        QCOMPARE(scale, next);
    }
    // The ladder is climbed down again over the same rungs, through all roundings.
    for (const double next : {50000.0, 25000.0, 10000.0, 5000.0, 2500.0, 1000.0, 500.0, 250.0, 100.0, 50.0, 25.0,
                              10.0, 5.0, 2.5, 1.0, 0.5, 0.25, 0.1, 0.05}) {
        scale = ZoomedIn(scale);
        QCOMPARE(scale, next);
    }
    QCOMPARE(ZoomedOut(10.0 - 1e-8), (10.0 - 1e-8) * 2.5);
    QCOMPARE(ZoomedOut(2.0), 2.0);
    QCOMPARE(ZoomedIn(2.0), 2.0);
    for (const double odd : {0.0, -1.0, std::numeric_limits<double>::infinity()}) {
        QCOMPARE(ZoomedOut(odd), odd);
    }
}

void TestTrackRules::Texts()
{
    QCOMPARE(RingLabel(100, 50.0), QString("5m"));
    QCOMPARE(RingLabel(900, 1.0), QString("90cm"));
    QCOMPARE(RingLabel(1000, 1.0), QString("1m"));
    QCOMPARE(RingLabel(100, 0.05), QString("0.5cm"));
    QCOMPARE(RingLabel(1900, 500.0), QString("950m"));
    QCOMPARE(RingLabel(2000, 500.0), QString("1km"));
    QCOMPARE(RingLabel(100, 123.456789), QString("12.3457m"));
    QCOMPARE(CentreText(39.972138, 116.340123), QString("39.97213800°N 116.34012300°E"));
    QCOMPARE(CentreText(-0.5, -0.000000001), QString("0.50000000°S 0.00000000°W"));
}

void TestTrackRules::Centre()
{
    const double nan = std::nan("");
    const std::vector<TrackState::GeoPoint> track = {{40.0, 116.0}, {41.0, 117.0}};
    QVERIFY(!NewCentre({}, true, 0.0));
    QCOMPARE(NewCentre(track, false, 0.0)->latitude, 40.0);
    QVERIFY(!NewCentre(track, false, 1e-06));
    QCOMPARE(NewCentre(track, true, 45.0)->longitude, 117.0);
    // South of the equator the centre counts as not set.
    QCOMPARE(NewCentre(track, false, -45.0)->latitude, 40.0);
    QCOMPARE(NewCentre({{nan, 1.0}, {2.0, 3.0}}, false, nan)->latitude, 2.0);
    QVERIFY(!NewCentre({{2.0, 3.0}, {1.0, nan}}, true, 45.0));

    QVERIFY(!Average({}));
    QVERIFY(!Average({{1.0, nan}}));
    QCOMPARE(Average(track)->latitude, 40.5);
    QCOMPARE(Average(track)->longitude, 116.5);
}

void TestTrackRules::Dragging()
{
    QCOMPARE(DotPosition(3.0, 2.0, 50.0), QPointF(30.0, -20.0));
    QCOMPARE(RoundedPixel(-2.5), -3);
    QCOMPARE(RoundedPixel(-2.4), -2);
    QCOMPARE(RoundedPixel(1e300), std::numeric_limits<int>::max());
    QCOMPARE(RoundedPixel(std::nan("")), 0);
    // 50 pixels to the right and 100 down at 50 cm for five pixels are 5 m west and 10 m north.
    const TrackState::GeoPoint shift = DragShift(10, 20, 60, 120, 50.0);
    QCOMPARE(shift.longitude, -5.0 * 1.141e-05);
    QCOMPARE(shift.latitude, 10.0 * 8.99e-06);
}

void TestTrackRules::Angles()
{
    for (const double angle : {39.972138, -116.340123, 0.0, -0.5, 180.0, -0.0, 59.0 / 60.0, 12.999999999}) {
        for (const AngleForm form : {AngleForm::Degrees, AngleForm::Minutes, AngleForm::Seconds}) {
            const AngleFields fields = SplitAngle(angle, form);
            QVERIFY(std::fabs(JoinAngle(fields, form) - angle) < 1e-12);
            QCOMPARE(fields.negative, std::signbit(angle));
            QVERIFY(form == AngleForm::Seconds || fields.seconds == 0.0);
        }
    }
}

void TestTrackRules::CentreDialog()
{
    TrackState::centerLatitude = -33.123456789012;
    TrackState::centerLongitude = 151.987654321098;
    SetCenterPointWin dialog(nullptr);
    QSignalSpy updated(&dialog, &SetCenterPointWin::updateCenterPoint);
    QCOMPARE(dialog.windowTitle(), QString("Set Center Point Coordinates"));
    auto* mode = dialog.findChild<QComboBox*>("showMode");
    auto* degrees = dialog.findChild<QDoubleSpinBox*>("latitudeDegrees");
    auto* minutes = dialog.findChild<QDoubleSpinBox*>("latitudeMinutes");
    auto* seconds = dialog.findChild<QDoubleSpinBox*>("latitudeSeconds");
    QCOMPARE(degrees->text(), QString("-33.12345679°"));
    QVERIFY(minutes->isHidden() && seconds->isHidden());
    mode->setCurrentIndex(1);
    QCOMPARE(degrees->text() + minutes->text(), QString("-33°7.407407′"));
    QVERIFY(!minutes->isHidden() && seconds->isHidden());
    mode->setCurrentIndex(2);
    QCOMPARE(degrees->text() + minutes->text() + seconds->text(), QString("-33°7′24.4444″"));
    QVERIFY(!seconds->isHidden());
    // No form has rounded anything away.
    dialog.SlotOkBtnClicked();
    QCOMPARE(updated.count(), 1);
    QCOMPARE(TrackState::centerLatitude, -33.123456789012);
    QCOMPARE(TrackState::centerLongitude, 151.987654321098);

    minutes->setValue(30.0);
    seconds->setValue(0.0);
    dialog.SlotCancelBtnClicked();
    QCOMPARE(TrackState::centerLatitude, -33.123456789012);
    dialog.SlotOkBtnClicked();
    QCOMPARE(TrackState::centerLatitude, -33.5);

    dialog.SlotAverageBtnClicked();
    QCOMPARE(degrees->value(), -33.0);
    TrackState::pointList = {{10.0, 20.0}, {20.0, 400.0}};
    dialog.SlotAverageBtnClicked();
    dialog.SlotOkBtnClicked();
    QCOMPARE(TrackState::centerLatitude, 15.0);
    QCOMPARE(TrackState::centerLongitude, 180.0);
}

void TestTrackRules::CentreDialogKeepsTheSignOfNoDegrees()
{
    TrackState::centerLatitude = -0.5;
    SetCenterPointWin dialog(nullptr);
    auto* mode = dialog.findChild<QComboBox*>("showMode");
    auto* degrees = dialog.findChild<QDoubleSpinBox*>("latitudeDegrees");
    auto* minutes = dialog.findChild<QDoubleSpinBox*>("latitudeMinutes");
    mode->setCurrentIndex(1);
    QCOMPARE(degrees->text(), QString("-0°"));
    minutes->setValue(15.0);
    mode->setCurrentIndex(0);
    QCOMPARE(degrees->value(), -0.25);

    mode->setCurrentIndex(2);
    auto* edit = degrees->findChild<QLineEdit*>();
    edit->selectAll();
    QTest::keyClicks(edit, "0");
    dialog.SlotOkBtnClicked();
    QCOMPARE(TrackState::centerLatitude, 0.25);
    edit->selectAll();
    QTest::keyClicks(edit, "-0");
    dialog.SlotOkBtnClicked();
    QCOMPARE(TrackState::centerLatitude, -0.25);
}

void TestTrackRules::DotsEqualOneEllipseEach()
{
    const QSize size(302, 202);
    std::mt19937 random(7);
    std::normal_distribution<double> far(0.0, 120.0);
    std::normal_distribution<double> near(0.0, 6.0);
    std::vector<QPointF> positions;
    for (int i = 0; i < 2000; ++i) {
        positions.emplace_back(far(random), far(random));
        positions.emplace_back(near(random), near(random));
    }
    for (const double odd : {std::nan(""), 1e300, -1e300, std::numeric_limits<double>::infinity(), 3e9}) {
        positions.emplace_back(odd, 0.0);
        positions.emplace_back(0.0, odd);
    }
    // On the edges, where a dot is cut.
    const QPoint middle(size.width() / 2, size.height() / 2);
    for (int i = -8; i <= 8; ++i) {
        positions.emplace_back(-middle.x() + i / 2.0, 10.0);
        positions.emplace_back(30.0, middle.y() + i / 2.0);
    }
    positions.emplace_back(1.2, -3.4);

    TrackDots dots;
    for (const qreal ratio : {1.0, 2.0}) {
        // What an earlier picture held leaves nothing.
        dots.Begin(size, ratio);
        for (int i = 0; i < 100; ++i) {
            dots.Add(i, i * 0.7);
        }
        dots.Begin(size, ratio);
        for (const QPointF& position : positions) {
            dots.Add(position.x(), position.y());
        }
        dots.AddLast(positions.back().x(), positions.back().y());

        QImage stamped((QSizeF(size) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        stamped.setDevicePixelRatio(ratio);
        stamped.fill(Qt::white);
        QImage drawn = stamped;
        QPainter stamping(&stamped);
        dots.Paint(stamping);
        stamping.end();
        QVERIFY(stamped != drawn);

        QPainter drawing(&drawn);
        drawing.translate(middle);
        const auto ellipse = [&](const QPointF& position, Qt::GlobalColor colour) {
            if (std::isnan(position.x()) || std::isnan(position.y())) {
                return;
            }
            drawing.setPen(colour);
            drawing.setBrush(colour);
            // Dots stand on whole device pixels.
            drawing.drawEllipse(QRectF(std::floor(position.x() * ratio + 0.5) / ratio - 3.0,
                                       std::floor(position.y() * ratio + 0.5) / ratio - 3.0, 5.0, 5.0));
        };
        for (const QPointF& position : positions) {
            ellipse(position, Qt::green);
        }
        ellipse(positions.back(), Qt::red);
        drawing.end();
        QVERIFY(stamped == drawn);
    }
}

QTEST_MAIN(TestTrackRules)
#include "tst_trackrules.moc"
