// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "commands/CmdConfig.h"
#include "commands/ConfigViewWin.h"
#include "performance/KpiViewWin.h"
#include "views/CompassViewWin.h"
#include "views/DataViewWin.h"
#include "views/PackageViewWin.h"
#include "views/log/HexViewWin.h"
#include "views/log/NMEAViewWin.h"
#include "views/message/MessageViewWin.h"
#include "views/signal/Cn0ViewWin.h"
#include "views/sky/SatellitesPosViewWin.h"
#include "views/track/PositioningViewWin.h"

#include "host/support/ImageManager.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTreeWidget>

namespace {

/// Pixels: little more than a title bar. When the views ask for more than the screen has, tiling twelve of them
/// would make the whole window larger than the screen.
constexpr QSize smallestSubWindow(125, 60);

} // namespace

void GnssWindow::FillPanelActions()
{
    panelActions.insert(tr("NMEA视图"), &GnssWindow::ShowNMEAView);
    panelActions.insert(tr("十六进制视图"), &GnssWindow::ShowHexView);
    panelActions.insert(tr("定位轨迹视图"), &GnssWindow::ShowPositioningView);
    panelActions.insert(tr("信号强度视图"), &GnssWindow::ShowCn0View);
    panelActions.insert(tr("定位数据视图"), &GnssWindow::ShowDataView);
    panelActions.insert(tr("消息数据视图"), &GnssWindow::ShowMessageView);
    panelActions.insert(tr("航向方位视图"), &GnssWindow::ShowCompassView);
    panelActions.insert(tr("卫星分布视图"), &GnssWindow::ShowSatellitesPosView);
    panelActions.insert(tr("数据传输视图"), &GnssWindow::ShowPackageView);
    panelActions.insert(tr("命令配置视图"), &GnssWindow::ShowCmdConfigView);
    panelActions.insert(tr("自定义命令视图"), &GnssWindow::ShowConfigView);
    panelActions.insert(tr("性能测试视图"), &GnssWindow::ShowKpiView);
}

void GnssWindow::SlotCtrlPanelItemClicked(QTreeWidgetItem* item, int col)
{
    FillPanelActions();
    const OpenerFunction opener = panelActions.value(item->text(col), nullptr);
    if (opener != nullptr) {
        (this->*opener)(item);
    }
}

void GnssWindow::OpenDefaultViews()
{
    const QStringList labels = {tr("NMEA视图"), tr("命令配置视图"), tr("定位轨迹视图"), tr("信号强度视图")};
    FillPanelActions();
    for (const QString& label : labels) {
        // The labels lie in groups. The opener does not depend on the item: without a tree the views open too.
        QTreeWidgetItem* item = ctrlTree->findItems(label, Qt::MatchExactly | Qt::MatchRecursive).value(0);
        (this->*panelActions.value(label))(item);
    }
    SlotTileWindows();
}

/// Activates the view when it is open, else makes it. Returns true for a new one, whose further connections are
/// the caller's.
template <typename View>
bool GnssWindow::OpenView(View*& view, QMdiSubWindow*& subWindow, const char* iconName,
                          void (GnssWindow::*closeSlot)())
{
    const bool isNew = subWindow == nullptr;
    if (isNew) {
        view = new View(this);
        subWindow = new QMdiSubWindow;
        subWindow->setWidget(view);
        subWindow->setAttribute(Qt::WA_DeleteOnClose);
        subWindow->setWindowIcon(QIcon(
            ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + QLatin1String(iconName))));
        subWindow->setMinimumSize(smallestSubWindow);
        mdiArea->addSubWindow(subWindow);
        connect(view, &View::CloseSignal, this, closeSlot);
        view->showMaximized();
    } else {
        mdiArea->setActiveSubWindow(subWindow);
    }
    AddCloseAllAction();
    return isNew;
}

void GnssWindow::AddCloseAllAction()
{
    // Before the window is shown nothing is active, but the current sub-window is already the new one.
    QMdiSubWindow* subWindow = mdiArea->currentSubWindow();
    QMenu* menu = subWindow != nullptr ? subWindow->systemMenu() : nullptr;
    if (menu == nullptr) {
        return;
    }
    const QString text = tr("Close All");
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
        if (action->text() == text) {
            return;
        }
    }
    auto* closeAll = new QAction(text, this);
    connect(closeAll, &QAction::triggered, mdiArea, &QMdiArea::closeAllSubWindows);
    menu->addAction(closeAll);
}

void GnssWindow::SlotTileWindows()
{
    if (mdiArea->currentSubWindow() == nullptr) {
        tiled = false;
        return;
    }
    if (!tiled) {
        mdiArea->tileSubWindows();
    } else {
        mdiArea->cascadeSubWindows();
    }
    tiled = !tiled;
}

void GnssWindow::ShowNMEAView(QTreeWidgetItem*)
{
    OpenView(nmeaView, nmeaSubWindow, "NmeaView.png", &GnssWindow::SlotCloseNMEAViewWinAction);
}

void GnssWindow::ShowHexView(QTreeWidgetItem*)
{
    OpenView(hexView, hexSubWindow, "HexView.png", &GnssWindow::SlotCloseHexViewWinAction);
}

void GnssWindow::ShowPositioningView(QTreeWidgetItem*)
{
    OpenView(positioningView, positioningSubWindow, "Positioning.png",
             &GnssWindow::SlotClosePositioningViewWinAction);
}

void GnssWindow::ShowCn0View(QTreeWidgetItem*)
{
    OpenView(cn0View, cn0SubWindow, "Cn0 View.png", &GnssWindow::SlotCloseCn0ViewWinAction);
}

void GnssWindow::ShowDataView(QTreeWidgetItem*)
{
    OpenView(dataView, dataSubWindow, "Data.png", &GnssWindow::SlotCloseDataViewWinAction);
}

void GnssWindow::ShowMessageView(QTreeWidgetItem*)
{
    OpenView(messageView, messageSubWindow, "MessageView.png", &GnssWindow::SlotCloseMessageViewWinAction);
}

void GnssWindow::ShowCompassView(QTreeWidgetItem*)
{
    OpenView(compassView, compassSubWindow, "CompassView.png", &GnssWindow::SlotCloseCompassViewWinAction);
}

void GnssWindow::ShowSatellitesPosView(QTreeWidgetItem*)
{
    OpenView(satellitesPosView, satellitesPosSubWindow, "SatPosView.png",
             &GnssWindow::SlotCloseStarPosViewWinAction);
}

void GnssWindow::ShowPackageView(QTreeWidgetItem*)
{
    OpenView(packageView, packageSubWindow, "PackageView.png", &GnssWindow::SlotClosePackageViewWinAction);
}

void GnssWindow::ShowCmdConfigView(QTreeWidgetItem*)
{
    if (OpenView(cmdConfigView, cmdConfigSubWindow, "CmdcfgView.png",
                 &GnssWindow::SlotCloseCmdConfigViewWinAction)) {
        connect(cmdConfigView, &CmdConfig::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    }
}

void GnssWindow::ShowConfigView(QTreeWidgetItem*)
{
    if (OpenView(configView, configSubWindow, "CustomerView.png", &GnssWindow::SlotCloseConfigViewWinAction)) {
        connect(configView, &ConfigViewWin::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
        // The view has no such signal; the connection is asked for all the same and fails with Qt's warning.
        connect(configView, SIGNAL(ChangeStartFlagSignal()), this, SLOT(SlotChangeSwitchImage()));
    }
}

void GnssWindow::ShowKpiView(QTreeWidgetItem*)
{
    if (OpenView(kpiView, kpiSubWindow, "TestView.png", &GnssWindow::SlotCloseKpiViewWinAction)) {
        connect(kpiView, &KpiViewWin::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
        connect(kpiView, &KpiViewWin::SendWakeUpCmd, this, &GnssWindow::SlotSendWakeUp);
    }
}

void GnssWindow::SlotCloseNMEAViewWinAction()
{
    nmeaView = nullptr;
    nmeaSubWindow = nullptr;
}

void GnssWindow::SlotCloseHexViewWinAction()
{
    hexView = nullptr;
    hexSubWindow = nullptr;
}

void GnssWindow::SlotClosePositioningViewWinAction()
{
    positioningView = nullptr;
    positioningSubWindow = nullptr;
}

void GnssWindow::SlotCloseCn0ViewWinAction()
{
    cn0View = nullptr;
    cn0SubWindow = nullptr;
}

void GnssWindow::SlotCloseDataViewWinAction()
{
    dataView = nullptr;
    dataSubWindow = nullptr;
}

void GnssWindow::SlotCloseMessageViewWinAction()
{
    messageView = nullptr;
    messageSubWindow = nullptr;
}

void GnssWindow::SlotCloseCompassViewWinAction()
{
    compassView = nullptr;
    compassSubWindow = nullptr;
}

void GnssWindow::SlotCloseStarPosViewWinAction()
{
    satellitesPosView = nullptr;
    satellitesPosSubWindow = nullptr;
}

void GnssWindow::SlotClosePackageViewWinAction()
{
    packageView = nullptr;
    packageSubWindow = nullptr;
}

void GnssWindow::SlotCloseCmdConfigViewWinAction()
{
    cmdConfigView = nullptr;
    cmdConfigSubWindow = nullptr;
}

void GnssWindow::SlotCloseConfigViewWinAction()
{
    configView = nullptr;
    configSubWindow = nullptr;
}

void GnssWindow::SlotCloseKpiViewWinAction()
{
    kpiView = nullptr;
    kpiSubWindow = nullptr;
}

void GnssWindow::OnNmea(const void* record, int length)
{
    if (nmeaView != nullptr) {
        nmeaView->OnRecord(record, length);
    }
}

void GnssWindow::OnPackage(const void* record, int length)
{
    if (packageView != nullptr) {
        packageView->OnRecord(record, length);
    }
}

void GnssWindow::OnCn0(const void* record, int length)
{
    if (cn0View != nullptr) {
        cn0View->OnRecord(record, length);
    }
}

void GnssWindow::OnPosition(const void* record, int length)
{
    if (positioningView != nullptr) {
        positioningView->OnRecord(record, length);
    }
}

void GnssWindow::OnSatPos(const void* record, int length)
{
    if (satellitesPosView != nullptr) {
        satellitesPosView->OnRecord(record, length);
    }
}

void GnssWindow::OnCompass(const void* record, int length)
{
    if (compassView != nullptr) {
        compassView->OnRecord(record, length);
    }
}

void GnssWindow::OnData(const void* record, int length)
{
    if (dataView != nullptr) {
        dataView->OnRecord(record, length);
    }
}

void GnssWindow::OnMessage(const void* record, int length)
{
    if (messageView != nullptr) {
        messageView->OnRecord(record, length);
    }
}

void GnssWindow::OnKpiPosition(const void* record, int length)
{
    if (kpiView != nullptr) {
        kpiView->OnKpiFix(record, length);
    }
}

void GnssWindow::OnKpiSatellite(const void* record, int length)
{
    if (kpiView != nullptr) {
        kpiView->OnKpiCn0(record, length);
    }
}

void GnssWindow::OnHisInfo(const void* record, int length)
{
    hisInfoInject.OnHisInfo(record, length);
}
