#include "PaintedViews.h"

#include "codec/ClassGnss.h"
#include "views/Cn0ViewWin.h"
#include "views/CompassViewWin.h"
#include "views/PositioningViewWin.h"
#include "views/SatellitesPosViewWin.h"
#include "views/TrackState.h"

#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>

using namespace painted;

class TestPaintedViews : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { ClassGnss::InitGnssUtils(); }
    void init() { TrackState::Reset(); }

    void AnyRecordAtAnySize_data();
    void AnyRecordAtAnySize();
    void RecordsOnlyAskForAPaint();
    void OpenedAndClosedWhileRecordsCome();
};

namespace {

template <typename View> QByteArray RandomRecord(std::mt19937& random)
{
    QByteArray bytes(static_cast<int>(random() % 2100), '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random() % 4 == 0 ? 0xff : random());
    // Letters, so that something is drawn of it.
    for (int i = 1; i < bytes.size(); i += 8)
        bytes[i] = "GSREJCI?"[random() % 8];
    return bytes;
}

template <typename View> void Press(const QList<QByteArray>& records)
{
    View view(nullptr);
    std::mt19937 random(3);
    for (const QSize& size : {QSize(1, 1), QSize(40, 600), QSize(600, 40), QSize(100, 50), QSize(500, 400)}) {
        view.resize(size);
        for (const QByteArray& record : records) {
            Send(view, record);
            view.grab();
        }
        for (int i = 0; i < 25; ++i) {
            Send(view, RandomRecord<View>(random));
            view.grab();
        }
    }
}

template <typename View> void OpenAndClose(QMdiArea& area, const QByteArray& record)
{
    auto* view = new View(&area);
    QMdiSubWindow* window = area.addSubWindow(view);
    window->setAttribute(Qt::WA_DeleteOnClose);
    view->showMaximized();
    Send(*view, record);
    QCoreApplication::processEvents();
    Send(*view, record);
    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

class PaintCounter : public QObject {
public:
    int count = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

template <typename View> void CheckRepaints(const QByteArray& record)
{
    View view(nullptr);
    view.resize(300, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QCoreApplication::processEvents();
    PaintCounter paints;
    view.installEventFilter(&paints);
    for (int i = 0; i < 100; ++i)
        Send(view, record);
    QCOMPARE(paints.count, 0);
    QTRY_COMPARE(paints.count, 1);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 1);
}

QByteArray ManySignals()
{
    std::vector<gnss::Cn0Entry> entries;
    for (int i = 0; i < 255; ++i)
        entries.push_back(
            {"GSREJCI"[i % 7], static_cast<std::uint8_t>(i / 2), static_cast<std::uint8_t>(i), 1, 1.0F});
    return Cn0Bytes(entries);
}

QByteArray ManySatellites()
{
    std::vector<gnss::SatPosEntry> entries;
    for (int i = 0; i < 255; ++i)
        entries.push_back({"GSREJCI"[i % 7], static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i), 0,
                           static_cast<std::uint16_t>(i * 257), 1, static_cast<std::uint8_t>(i)});
    return SkyBytes(entries);
}

} // namespace

void TestPaintedViews::AnyRecordAtAnySize_data()
{
    QTest::addColumn<bool>("follow");
    QTest::addRow("first point") << false;
    QTest::addRow("last point") << true;
}

void TestPaintedViews::AnyRecordAtAnySize()
{
    QFETCH(bool, follow);
    TrackState::useLastPoint = follow;
    const double inf = std::numeric_limits<double>::infinity();
    Press<Cn0ViewWin>({ManySignals(), ManySignals().left(1), ManySignals().left(13), QByteArray(1, '\0')});
    Press<SatellitesPosViewWin>({ManySatellites(), ManySatellites().left(1), ManySatellites().left(13)});
    Press<PositioningViewWin>({PositionBytes(40.0, 116.0), PositionBytes(std::nan(""), 1.0),
                               PositionBytes(inf, -inf), PositionBytes(1e308, -1e308), PositionBytes(-90.0, 180.0),
                               PositionBytes(1.0, 2.0).left(15)});
    Press<CompassViewWin>({CompassBytes(1e38F, 8), CompassBytes(std::nanf(""), 255), CompassBytes(-1e-38F, 0)});
}

void TestPaintedViews::RecordsOnlyAskForAPaint()
{
    CheckRepaints<Cn0ViewWin>(ManySignals());
    CheckRepaints<SatellitesPosViewWin>(ManySatellites());
    CheckRepaints<PositioningViewWin>(PositionBytes(40.0, 116.0));
    CheckRepaints<CompassViewWin>(CompassBytes(10.0F, 1));
}

void TestPaintedViews::OpenedAndClosedWhileRecordsCome()
{
    QMdiArea area;
    area.resize(500, 400);
    area.show();
    for (int i = 0; i < 250; ++i) {
        OpenAndClose<Cn0ViewWin>(area, ManySignals());
        OpenAndClose<SatellitesPosViewWin>(area, ManySatellites());
        OpenAndClose<PositioningViewWin>(area, PositionBytes(40.0, 116.0));
        OpenAndClose<CompassViewWin>(area, CompassBytes(10.0F, 1));
    }
    QVERIFY(area.subWindowList().isEmpty());
    QVERIFY(TrackState::pointList.empty());
}

QTEST_MAIN(TestPaintedViews)
#include "TestPaintedViews.moc"
