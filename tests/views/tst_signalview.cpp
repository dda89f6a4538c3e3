// SPDX-License-Identifier: MIT
#include "PaintedViews.h"

#include "views/Constellations.h"
#include "views/signal/Cn0ViewWin.h"
#include "views/signal/SignalBars.h"
#include "views/signal/SignalTable.h"

#include <QTest>

#include <cmath>

using namespace painted;

class TestSignalView : public QObject {
    Q_OBJECT

private slots:
    void CountsAndLists();
    void CutsTheCountToTheRecord();
    void Widths();
    void TextsInAColumn();
    void PaintsColumns();
};

namespace {

const QColor kGps(96, 56, 17);
const QColor kBds(203, 65, 84);

SignalTable Table(const QByteArray& bytes)
{
    SignalTable table;
    table.Fill(RecordCopy(bytes.constData(), bytes.size(), sizeof(protocol::Cn0Record), "Cn0ViewWin"));
    return table;
}

} // namespace

void TestSignalView::CountsAndLists()
{
    const SignalTable table = Table(Cn0Bytes({{'G', 5, 40, 1, 1575.42F},
                                              {'G', 7, 0, 1, 1575.42F},
                                              {'G', 5, 30, 0, 1176.45F},
                                              {'G', 5, 40, 0, 1227.6F},
                                              {'R', 1, 20, 1, 1602.0F},
                                              {'S', 120, 33, 1, 1575.42F},
                                              {'I', 3, 33, 1, 1176.45F},
                                              {'?', 3, 33, 1, 1176.45F},
                                              {'J', 3, 0, 0, 1575.42F}}));
    QCOMPARE(table.VisibleCount(), (SignalTable::Counts{9, 4, 1, 0, 1, 0}));
    QCOMPARE(table.TrackedCount(), (SignalTable::Counts{7, 3, 1, 0, 0, 0}));
    QCOMPARE(table.UsedCount(), (SignalTable::Counts{2, 1, 1, 0, 0, 0}));
    const SignalTable::Satellites& gps = table.SatellitesOf(ConstellationIndex('G'));
    QCOMPARE(gps.size(), std::size_t(1));
    std::vector<float> byStrength;
    for (const SignalTable::Signal& signal : gps[0]) {
        byStrength.push_back(float(signal.carrierFreq)); // packed: no reference to it
    }
    QCOMPARE(byStrength, std::vector<float>({1176.45F, 1575.42F, 1227.6F}));
    for (const char letter : {'S', 'I', 'J', 'C', 'E'}) {
        QVERIFY(table.SatellitesOf(ConstellationIndex(letter)).empty());
    }
}

void TestSignalView::CutsTheCountToTheRecord()
{
    QByteArray bytes = Cn0Bytes({{'G', 5, 40, 1, std::nanf("")}, {'C', 6, 40, 1, 1.0F}}, 255);
    QCOMPARE(Table(bytes).VisibleCount()[0], 2);
    bytes.chop(1);
    QCOMPARE(Table(bytes).VisibleCount(), (SignalTable::Counts{1, 1, 0, 0, 0, 0}));
    QCOMPARE(Table(QByteArray(1, '\xff')).VisibleCount()[0], 0);

    // An empty record is one too: the age begins anew.
    Cn0ViewWin view(nullptr);
    view.TimerTimeout();
    QCOMPARE(AgeText(view), QString("数据龄期: 1s"));
    Send(view, QByteArray(1, '\0'));
    QCOMPARE(AgeText(view), QString("数据龄期: 0s"));
}

void TestSignalView::Widths()
{
    using namespace SignalBars;
    const auto pair = [](struct Widths widths) { return std::pair(widths.barWidth, widths.barPitch); };
    QCOMPARE(pair(WidthsFor(20, 800)), std::pair(32, 35));
    QCOMPARE(pair(WidthsFor(11, 782)), std::pair(63, 66));
    QCOMPARE(pair(WidthsFor(1, 800)), std::pair(63, 66));
    QCOMPARE(pair(WidthsFor(25, 824)), std::pair(25, 28));
    QCOMPARE(pair(WidthsFor(255, 1)), std::pair(25, 28));
    QCOMPARE(PixelsPerDb(89 + 119), 0);
    QCOMPARE(PixelsPerDb(89 + 359), 2);
    QCOMPARE(FirstColumnX(2, 66, 800, 200, false), 200);
    QCOMPARE(FirstColumnX(20, 35, 800, 200, false), 97);
    QCOMPARE(FirstColumnX(60, 28, 800, 200, false), 3);
    QCOMPARE(FirstColumnX(60, 28, 800, 200, true), 200);
}

void TestSignalView::TextsInAColumn()
{
    using SignalBars::TextTops;
    // Too close to one another they are pushed apart, and out of the column they aren't drawn.
    QCOMPARE(TextTops({100, 102, 104}, 86, 14, 200), std::vector<int>({86, 102, 116}));
    QCOMPARE(TextTops({190, 192}, 176, 14, 200), std::vector<int>({176}));
    QVERIFY(TextTops({}, 0, 14, 200).empty());
}

void TestSignalView::PaintsColumns()
{
    Cn0ViewWin view(nullptr);
    view.resize(900, 449); // three pixels for one dB-Hz above a baseline of 360
    Send(view, Cn0Bytes({{'G', 5, 40, 1, 1575.42F}, {'C', 9, 20, 1, 1561.1F}, {'C', 9, 50, 1, 1176.45F}}));
    const QImage picture = Picture(view);
    const auto at = [&](int x, int y) { return QColor(picture.pixel(x, 360 - y)); };
    // BeiDou first, then GPS; each column 63 wide.
    int bds = 0;
    while (bds < 500 && at(bds, 1) != kBds) {
        ++bds;
    }
    const int gps = bds + 66;
    const QColor background = at(890, 350);
    QCOMPARE(at(gps, 1), kGps);
    QCOMPARE(at(gps + 62, 1), kGps);
    QCOMPARE(at(gps + 63, 1), background);
    QCOMPARE(at(gps, 120), kGps);
    QCOMPARE(at(gps, 121), background);
    // The stronger signal's segment stands on the weaker one's.
    QCOMPARE(at(bds, 60), kBds);
    QVERIFY(at(bds, 61) != kBds && at(bds, 61) != background);
    QCOMPARE(at(bds, 61), at(bds, 150));
    QCOMPARE(at(bds, 151), background);

    const auto shown = [&view](const QColor& colour) {
        return Count(Picture(view), QRect(0, 170, 900, 200), colour) > 2500;
    };
    Click(view, QPointF(20, 98)); // the row of the GPS
    Click(view, QPointF(31, 98)); // beside the picture
    QVERIFY(!shown(kGps) && shown(kBds));
    Click(view, QPointF(10, 88));
    Click(view, QPointF(29, 55)); // BeiDou
    QVERIFY(shown(kGps) && !shown(kBds));
    Send(view, Cn0Bytes({}));
    QVERIFY(!shown(kGps));
}

QTEST_MAIN(TestSignalView)
#include "tst_signalview.moc"
