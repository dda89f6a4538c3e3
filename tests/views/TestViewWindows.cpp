#include "assist/AssistOffline.h"
#include "assist/AssistOnline.h"
#include "assist/HisInfoInject.h"
#include "codec/Records.h"
#include "config/CmdConfig.h"
#include "config/ConfigViewWin.h"
#include "production/KpiViewWin.h"
#include "production/ProductTest.h"
#include "production/VersionLoad.h"
#include "views/Cn0ViewWin.h"
#include "views/CompassViewWin.h"
#include "views/DataViewWin.h"
#include "views/HexViewWin.h"
#include "views/MessageViewWin.h"
#include "views/NMEAViewWin.h"
#include "views/PackageViewWin.h"
#include "views/PositioningViewWin.h"
#include "views/SatellitesPosViewWin.h"

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class TestViewWindows : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QDir::setCurrent(m_folder.path()); }
    void cleanupTestCase() { QDir::setCurrent(m_before); }

    void TellOfTheirCloseOnly();
    void ToolWindowsTellOfTheirClose();
    void DropRecordsThatLie();

private:
    QString m_before = QDir::currentPath();
    QTemporaryDir m_folder;
};

namespace {

template <typename View> void CheckView(const QString& title)
{
    int closes = 0;
    {
        QMdiArea area;
        auto* view = new View(&area);
        QObject::connect(view, &View::CloseSignal, [&closes] { ++closes; });
        QMdiSubWindow* window = area.addSubWindow(view);
        window->setAttribute(Qt::WA_DeleteOnClose);
        area.show();
        view->showMaximized();
        QVERIFY(window->isMaximized());
        QCOMPARE(view->windowTitle(), title);
        window->close();
        QCOMPARE(closes, 1);
    }
    {
        // A window that is deleted with its parent doesn't call into what is left of that.
        QMdiArea area;
        auto* view = new View(&area);
        QObject::connect(view, &View::CloseSignal, [&closes] { ++closes; });
        area.addSubWindow(view);
    }
    QCOMPARE(closes, 1);
}

template <typename Window, typename Closed> void CheckToolWindow(Closed closed)
{
    Window window;
    QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
    int closes = 0;
    QObject::connect(&window, closed, [&closes] { ++closes; });
    for (int round = 1; round <= 2; ++round) {
        window.show();
        window.close();
        QCOMPARE(closes, round);
    }
}

template <typename View> void CheckRecords(std::size_t largest)
{
    View view(nullptr);
    // Counts of 255 in buffers that hold nothing of the kind; nothing may be read beyond them.
    for (const std::size_t size : {std::size_t(1), std::size_t(2), std::size_t(5), largest}) {
        const QByteArray bytes(static_cast<int>(size), '\xff');
        view.OnRecord(nullptr, bytes.size());
        view.OnRecord(bytes.constData(), 0);
        view.OnRecord(bytes.constData(), -1);
        view.OnRecord(bytes.constData(), bytes.size());
    }
    const QByteArray bytes(static_cast<int>(largest), '\xff');
    view.OnRecord(bytes.constData(), 100000000);
}

} // namespace

void TestViewWindows::TellOfTheirCloseOnly()
{
    CheckView<NMEAViewWin>("NMEA");
    CheckView<HexViewWin>("十六进制");
    CheckView<PositioningViewWin>("定位轨迹");
    CheckView<Cn0ViewWin>("信号强度");
    CheckView<DataViewWin>("定位数据");
    CheckView<MessageViewWin>("消息数据");
    CheckView<CompassViewWin>("航向方位");
    CheckView<SatellitesPosViewWin>("卫星分布");
    CheckView<PackageViewWin>("数据传输");
    CheckView<CmdConfig>("命令配置");
    CheckView<ConfigViewWin>("自定义命令");
    CheckView<KpiViewWin>("性能测试");
}

void TestViewWindows::ToolWindowsTellOfTheirClose()
{
    CheckToolWindow<AssistOnline>(&AssistOnline::CloseSignal);
    CheckToolWindow<AssistOffline>(&AssistOffline::CloseSignal);
    CheckToolWindow<HisInfoInject>(&HisInfoInject::CloseSignal);
    CheckToolWindow<VersionLoad>(&VersionLoad::CloseSignal);

    ProductTest test;
    test.setWindowTitle("产测视图3");
    QSignalSpy closed(&test, &ProductTest::CloseSignal);
    test.show();
    test.close();
    QCOMPARE(closed.count(), 1);
    QCOMPARE(closed[0][0].toString(), QString("产测视图3"));
}

void TestViewWindows::DropRecordsThatLie()
{
    CheckRecords<NMEAViewWin>(sizeof(gnss::NmeaText));
    CheckRecords<PositioningViewWin>(sizeof(gnss::PositionRecord));
    CheckRecords<Cn0ViewWin>(sizeof(gnss::Cn0Record));
    CheckRecords<DataViewWin>(sizeof(gnss::FixRecord));
    CheckRecords<MessageViewWin>(gnss::kMessageHeaderSize + sizeof(gnss::MsgMeas));
    CheckRecords<CompassViewWin>(sizeof(gnss::CompassRecord));
    CheckRecords<SatellitesPosViewWin>(sizeof(gnss::SatPosRecord));
    CheckRecords<PackageViewWin>(sizeof(gnss::PackageRecord));
}

QTEST_MAIN(TestViewWindows)
#include "TestViewWindows.moc"
