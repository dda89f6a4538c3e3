// SPDX-License-Identifier: MIT
#pragma once

#include "line/ReplayPlayer.h"
#include "line/SerialLink.h"
#include "window/ControlPanel.h"
#include "window/PositioningControl.h"
#include "window/RecordRouter.h"
#include "window/ToolWindows.h"
#include "window/ViewHost.h"

#include <QMainWindow>

#include <memory>

class MainToolBar;
class QTreeWidgetItem;

/// The workbench's main window: it makes the line, the views, the tool windows and the tool bar, and joins them.
/// Its slots are what hosts know of it; each hands on to the part that it concerns.
class GnssWindow : public QMainWindow {
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
    void SlotChangePort(const QString& portStr) { m_link.ChangePort(portStr); }
    void SlotSwitchPort() { m_link.Switch(); }
    void SlotChangeBaudRate(const QString& baudRateStr);
    void SlotAddBaudRate() { m_tools.AskBaudRate(); }
    void SlotRecivePostMsg() { m_link.Poll(); }
    void SlotSendPackets(uint8_t* buffer, int len);
    void SlotSendHexData(QByteArray bytes);
    void SlotSendWakeUp() { m_link.WakeUp(); }
    void SlotProcSerialNoData() { m_positioning.ProbeSilence(); }
    void SlotOnConnect(bool status);

    // Workspace
    void SlotCtrlPanelItemClicked(QTreeWidgetItem* item, int col);
    void SlotTileWindows() { m_views.Tile(); }
    void SlotAddTimestamp() { m_panel->ToggleTimestamp(); }
    void SlotClearTextEdit();
    void SlotBottomBtnClicked();
    void SlotSaveBtnClicked();

    // Views: a view that closes is forgotten by itself; these are for others who wish a record's way to end.
    void SlotCloseNMEAViewWinAction() { m_views.Forget("NMEAViewWin"); }
    void SlotCloseHexViewWinAction() { m_views.Forget("HexViewWin"); }
    void SlotClosePositioningViewWinAction() { m_views.Forget("PositioningViewWin"); }
    void SlotCloseCn0ViewWinAction() { m_views.Forget("Cn0ViewWin"); }
    void SlotCloseDataViewWinAction() { m_views.Forget("DataViewWin"); }
    void SlotCloseMessageViewWinAction() { m_views.Forget("MessageViewWin"); }
    void SlotCloseCompassViewWinAction() { m_views.Forget("CompassViewWin"); }
    void SlotCloseStarPosViewWinAction() { m_views.Forget("SatellitesPosViewWin"); }
    void SlotClosePackageViewWinAction() { m_views.Forget("PackageViewWin"); }
    void SlotCloseCmdConfigViewWinAction() { m_views.Forget("CmdConfig"); }
    void SlotCloseConfigViewWinAction() { m_views.Forget("ConfigViewWin"); }
    void SlotCloseKpiViewWinAction() { m_views.Forget("KpiViewWin"); }

    // Positioning
    void SlotSendStartStopCmd() { m_positioning.StartOrStop(); }
    void SlotStartClicked() { m_positioning.Start(); }
    void SlotStopBtnClicked() { m_positioning.Stop(); }
    void SlotChangeSwitchImage();

    // Replay
    void SlotReplayAction();
    void SlotSendReplayData() { m_replay.Tick(); }
    void SlotChangeReplaySpeed(const QString& speedStr);
    void SlotPauseBtnClicked() { m_replay.TogglePause(); }
    void SlotReplayProgress(int progressValue) { m_replay.Seek(progressValue); }
    void SlotProgressBarPressed(bool pressed) { m_replay.HoldProgress(pressed); }

    // Tool windows
    void SlotShowSerialSetting() { m_tools.Show(ToolWindows::SerialSettings); }
    void SlotCloseSerialSetting() { m_tools.ShowClosed(ToolWindows::SerialSettings); }
    void ShowOnlineAsstWin() { m_tools.Show(ToolWindows::Online); }
    void SlotCloseOnline() { m_tools.ShowClosed(ToolWindows::Online); }
    void ShowOfflineAsstWin() { m_tools.Show(ToolWindows::Offline); }
    void SlotCloseOffline() { m_tools.ShowClosed(ToolWindows::Offline); }
    void ShowVersionLoadWin() { m_tools.Show(ToolWindows::Firmware); }
    void SlotCloseVersionLoad() { m_tools.ShowClosed(ToolWindows::Firmware); }
    void ShowHisInfoInjectWin() { m_tools.Show(ToolWindows::History); }
    void SlotCloseHisInfoInject() { m_tools.ShowClosed(ToolWindows::History); }
    void ShowProductTestWin() { m_tools.NewProductTest(); }
    void SlotCloseProductTestView(const QString& title) { m_tools.CloseProductTest(title); }
    void ShowSenceReplayWin() { m_tools.Show(ToolWindows::Scenes); }
    void ShowFetchNmeaWin() { m_tools.Show(ToolWindows::Extraction); }

private:
    void JoinParts();
    void JoinLine();
    void JoinToolBar();

    SerialLink m_link;
    ReplayPlayer m_replay;
    ToolWindows m_tools;
    ViewHost m_views;
    PositioningControl m_positioning;
    RecordRouter m_router;
    ControlPanel* m_panel = nullptr;
    MainToolBar* m_bar = nullptr;
    QString m_lastDirectory; ///< where the next choice of a capture begins
};
