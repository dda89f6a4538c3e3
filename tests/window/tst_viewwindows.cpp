// SPDX-License-Identifier: MIT
#include "assist/AssistOffline.h"
#include "assist/AssistOnline.h"
#include "assist/HisInfoInject.h"
#include "commands/CmdConfig.h"
#include "commands/ConfigViewWin.h"
#include "performance/KpiViewWin.h"
#include "production/VersionLoad.h"
#include "views/BasicViewWin.h"
#include "views/CompassViewWin.h"
#include "views/DataViewWin.h"
#include "views/PackageViewWin.h"
#include "views/log/HexViewWin.h"
#include "views/log/NMEAViewWin.h"
#include "views/message/MessageViewWin.h"
#include "views/signal/Cn0ViewWin.h"
#include "views/sky/SatellitesPosViewWin.h"
#include "views/track/PositioningViewWin.h"

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
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
        QVERIFY(window->isMaximized() && window->sizeHint().height() > 100);
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

/// A tool window is hidden by a close and shown again.
template <typename Window> void CheckToolWindow()
{
    Window window;
    int closes = 0;
    QObject::connect(&window, &Window::CloseSignal, [&closes] { ++closes; });
    for (int round = 1; round <= 2; ++round) {
        window.show();
        window.close();
        QCOMPARE(closes, round);
    }
}

} // namespace

void TestViewWindows::TellOfTheirCloseOnly()
{
    CheckView<NMEAViewWin>("NMEA");
    CheckView<HexViewWin>("十六进制");
    CheckView<PositioningViewWin>("定位轨迹");
    CheckView<Cn0ViewWin>("信号强度");
    CheckView<DataViewWin>("定位数据");
    CheckView<BasicViewWin>("Basic View");
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
    CheckToolWindow<AssistOnline>();
    CheckToolWindow<AssistOffline>();
    CheckToolWindow<HisInfoInject>();
    CheckToolWindow<VersionLoad>();
}

QTEST_MAIN(TestViewWindows)
#include "tst_viewwindows.moc"
