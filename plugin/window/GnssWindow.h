// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistOffline.h"
#include "assist/AssistOnline.h"
#include "assist/HisInfoInject.h"
#include "assist/SenceReplay.h"
#include "base/GnssAck.h"
#include "bridge/RecordTarget.h"
#include "production/FetchNmea.h"
#include "production/VersionLoad.h"

#include <QList>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QStringList>

class Cn0ViewWin;
class CmdConfig;
class CompassViewWin;
class ConfigViewWin;
class CustomBaudRateWin;
class CustomProgressBar;
class DataViewWin;
class HexViewWin;
class KpiViewWin;
class LeftDockWidget;
class MessageViewWin;
class MyButton;
class NMEAViewWin;
class PackageViewWin;
class PositioningViewWin;
class ProductTest;
class QAction;
class QMdiArea;
class QMdiSubWindow;
class QPushButton;
class QSerialPort;
class QTextEdit;
class QTimer;
class QToolBar;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;
class SatellitesPosViewWin;
class SerialSetting;

/// The workbench's main window and the owner of everything in it: the serial port and its 10 ms poll, the
/// dock, the tool bar, the views and the tool windows. It is the target of the codec's records.
class GnssWindow : public QMainWindow, private RecordTarget {
    Q_OBJECT

public:
    /// `number` is the host's and not used. With a parent the window lies inside it, and the parent owns it.
    GnssWindow(const QString& title, int number, QWidget* parent);
    ~GnssWindow() override;

Q_SIGNALS:
    /// The window is being destroyed; the codec is unloaded and the port closed by then.
    void closeGnssSignal();
    /// A frame for the port; joined by a direct connection, so the sender's buffer stays valid for the write.
    void SendMsg(uint8_t* outBuff, int outLen);
    /// Global::positioningStarted has changed.
    void ChangeStartFlagSignal();

public Q_SLOTS:
    // Serial link
    void SlotUpdatePortInfo();
    void SlotChangePort(QString portStr);
    void SlotSwitchPort();
    void SlotChangeBaudRate(QString baudRateStr);
    void SlotAddBaudRate();
    void SlotRecivePostMsg();
    void SlotSendPackets(uint8_t* buffer, int len);
    void SlotSendHexData(QByteArray bytes);
    void SlotSendWakeUp();
    void SlotProcSerialNoData();
    void SlotOnConnect(bool status);

    // Workspace
    void SlotCtrlPanelItemClicked(QTreeWidgetItem* item, int col);
    void SlotTileWindows();
    void SlotAddTimestamp();
    void SlotClearTextEdit();
    void SlotBottomBtnClicked();
    void SlotSaveBtnClicked();

    // Views
    void SlotCloseNMEAViewWinAction();
    void SlotCloseHexViewWinAction();
    void SlotClosePositioningViewWinAction();
    void SlotCloseCn0ViewWinAction();
    void SlotCloseDataViewWinAction();
    void SlotCloseMessageViewWinAction();
    void SlotCloseCompassViewWinAction();
    void SlotCloseStarPosViewWinAction();
    void SlotClosePackageViewWinAction();
    void SlotCloseCmdConfigViewWinAction();
    void SlotCloseConfigViewWinAction();
    void SlotCloseKpiViewWinAction();

    // Positioning
    void SlotSendStartStopCmd();
    void SlotStartClicked();
    void SlotStopBtnClicked();
    void SlotChangeSwitchImage();

    // Replay
    void SlotReplayAction();
    void SlotSendReplayData();
    void SlotChangeReplaySpeed(QString speedStr);
    void SlotPauseBtnClicked();
    void SlotReplayProgress(int progressValue);
    void SlotProgressBarPressed(bool pressed);

    // Tool windows
    void SlotShowSerialSetting();
    void SlotCloseSerialSetting();
    void ShowOnlineAsstWin();
    void SlotCloseOnline();
    void ShowOfflineAsstWin();
    void SlotCloseOffline();
    void ShowVersionLoadWin();
    void SlotCloseVersionLoad();
    void ShowHisInfoInjectWin();
    void SlotCloseHisInfoInject();
    void ShowProductTestWin();
    void SlotCloseProductTestView(QString title);
    void ShowSenceReplayWin();
    void ShowFetchNmeaWin();

private:
    using OpenerFunction = void (GnssWindow::*)(QTreeWidgetItem*);

    // RecordTarget
    void OnNmea(const void* record, int length) override;
    void OnPackage(const void* record, int length) override;
    void OnCn0(const void* record, int length) override;
    void OnPosition(const void* record, int length) override;
    void OnSatPos(const void* record, int length) override;
    void OnCompass(const void* record, int length) override;
    void OnData(const void* record, int length) override;
    void OnMessage(const void* record, int length) override;
    void OnAck(const void* record, int length) override;
    void OnSleepWakeup() override;
    void OnUartSend(const void* record, int length) override;
    void OnKpiPosition(const void* record, int length) override;
    void OnKpiSatellite(const void* record, int length) override;
    void OnFirstFix() override;
    void OnHisInfo(const void* record, int length) override;

    // Construction
    void BuildWorkspace(QWidget* hostParent);
    QWidget* BuildDockContent();
    QMdiArea* InstallMdiArea();
    void BuildToolBar();
    void BuildLinkButtons(QToolBar* bar);
    void BuildReplayButtons(QToolBar* bar);
    void BuildToolWindowButtons(QToolBar* bar);
    void BuildToolsMenu(QToolBar* bar);
    QPushButton* AddToolButton(QToolBar* bar, const QString& icon, const QString& toolTip, const QSize& iconSize);
    void ConnectToolWindows();
    void BuildTimers();
    void OpenDefaultViews();

    // Views
    void FillPanelActions();
    void ShowNMEAView(QTreeWidgetItem* item);
    void ShowHexView(QTreeWidgetItem* item);
    void ShowPositioningView(QTreeWidgetItem* item);
    void ShowCn0View(QTreeWidgetItem* item);
    void ShowDataView(QTreeWidgetItem* item);
    void ShowMessageView(QTreeWidgetItem* item);
    void ShowCompassView(QTreeWidgetItem* item);
    void ShowSatellitesPosView(QTreeWidgetItem* item);
    void ShowPackageView(QTreeWidgetItem* item);
    void ShowCmdConfigView(QTreeWidgetItem* item);
    void ShowConfigView(QTreeWidgetItem* item);
    void ShowKpiView(QTreeWidgetItem* item);
    template <typename View>
    bool OpenView(View*& view, QMdiSubWindow*& subWindow, const char* iconName, void (GnssWindow::*closeSlot)());
    void AddCloseAllAction();

    // Serial link
    void ScanPortNames();
    void ShowPortNames();
    void SetLinkPicture(bool open);
    void NewRawCapture();
    void WakeUpReceiver();

    // Positioning
    bool SendReadyFrame(const QByteArray& bytes);
    void ClearWorkingLogFiles();

    // Replay
    void EndReplay();
    int ReplayInterval() const;

    QMdiArea* mdiArea = nullptr;
    LeftDockWidget* dock = nullptr;
    QTreeWidget* ctrlTree = nullptr;
    QTextEdit* statusEdit = nullptr;
    QPushButton* m_timestampBtn = nullptr;
    QMap<QString, OpenerFunction> panelActions;

    NMEAViewWin* nmeaView = nullptr;
    HexViewWin* hexView = nullptr;
    PositioningViewWin* positioningView = nullptr;
    Cn0ViewWin* cn0View = nullptr;
    DataViewWin* dataView = nullptr;
    MessageViewWin* messageView = nullptr;
    CompassViewWin* compassView = nullptr;
    SatellitesPosViewWin* satellitesPosView = nullptr;
    PackageViewWin* packageView = nullptr;
    CmdConfig* cmdConfigView = nullptr;
    ConfigViewWin* configView = nullptr;
    KpiViewWin* kpiView = nullptr;

    QMdiSubWindow* nmeaSubWindow = nullptr;
    QMdiSubWindow* hexSubWindow = nullptr;
    QMdiSubWindow* positioningSubWindow = nullptr;
    QMdiSubWindow* cn0SubWindow = nullptr;
    QMdiSubWindow* dataSubWindow = nullptr;
    QMdiSubWindow* messageSubWindow = nullptr;
    QMdiSubWindow* compassSubWindow = nullptr;
    QMdiSubWindow* satellitesPosSubWindow = nullptr;
    QMdiSubWindow* packageSubWindow = nullptr;
    QMdiSubWindow* cmdConfigSubWindow = nullptr;
    QMdiSubWindow* configSubWindow = nullptr;
    QMdiSubWindow* kpiSubWindow = nullptr;

    GnssAck gnssAck;
    QStringList portNames;

    QSerialPort* serialPort = nullptr;
    QTimer* recvTimer = nullptr;
    QTimer* noDataTimer = nullptr;
    QString rawDataPath;
    QString saveDirectory;

    QTimer* replayTimer = nullptr;
    QList<QByteArray> replayChunks;
    int replayIndex = 0;
    bool progressPressed = false;

    MyButton* m_portBtn = nullptr;
    MyButton* m_baudBtn = nullptr;
    QPushButton* m_serialSettingBtn = nullptr;
    MyButton* m_replayBtn = nullptr;
    CustomProgressBar* progressBar = nullptr;
    QAction* m_progressAction = nullptr;
    QPushButton* m_pauseBtn = nullptr;
    QAction* m_pauseAction = nullptr;
    QPushButton* m_startStopBtn = nullptr;
    QPushButton* m_onlineBtn = nullptr;
    QPushButton* m_offlineBtn = nullptr;
    QPushButton* m_versionBtn = nullptr;
    QPushButton* m_hisInfoBtn = nullptr;
    QPushButton* m_senceReplayBtn = nullptr;
    QPushButton* m_productTestBtn = nullptr;

    AssistOffline assistOffline;
    AssistOnline assistOnline;
    VersionLoad versionLoad;
    HisInfoInject hisInfoInject;
    FetchNmea fetchNmea;
    SenceReplay senceReplay;

    SerialSetting* serialSetting = nullptr;
    QPointer<CustomBaudRateWin> customBaudWin;
    QString lastDirectory;
    int productTestCount = 1;
    QMap<QString, ProductTest*> productTests;
    bool tiled = false;
};
