// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "bridge/CallbackRouting.h"
#include "bridge/ClassGnss.h"
#include "host/support/CProductVersion.h"
#include "line/ReplaySplit.h"
#include "views/log/NMEAViewWin.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MyButton.h"
#include "window/MainToolBar.h"

#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QPointer>
#include <QSettings>
#include <QTimer>
#include <QTreeWidget>

GnssWindow::GnssWindow(const QString& title, int number, QWidget* parent)
    : QMainWindow(parent), m_link(this), m_replay(this), m_tools(m_link.Port()), m_views(this, WorkbenchViews()),
      m_positioning(m_link, this), m_router(m_views, m_link, m_positioning, m_tools.HistoryWindow())
{
    Q_UNUSED(number)
    if (parent != nullptr) {
        // A main window stays a window of its own when a layout adds it to the parent that it already has.
        setWindowFlags(Qt::Widget);
    }
    setContextMenuPolicy(Qt::NoContextMenu);
    Global::ResetForNewWindow();
    setWindowTitle(title);

    const QSettings settings(QStringLiteral("./Source-Datas/bin/config/language.ini"), QSettings::IniFormat);
    Global::language = settings.value(QStringLiteral("LanguageSetting/Language")).toInt();

    m_link.ScanPorts();
    Global::currentPortName = m_link.PortNames().value(0);

    m_panel = new ControlPanel(this);
    if (parent != nullptr) {
        // The host need not declare the signal, so the connection is made by name.
        connect(parent, SIGNAL(NotifyPluginConnectSignal(bool)), this, SLOT(SlotOnConnect(bool)));
    }
    m_link.ScanPorts(); // again, as the tool bar shows the names of that moment
    m_bar = new MainToolBar(CProductVersion::GetVersion(), m_link.PortNames(), this);
    addToolBar(m_bar);

    ClassGnss::InitGnssUtils();
    if (const int version = ClassGnss::GetLibVersion(); ClassGnss::CodecLoaded()) {
        qDebug() << "GnssUtils.dll version is:" << version;
    }
    PublishRecordTarget(&m_router);
    m_views.InstallArea();
    JoinParts();

    RegisterCallbacks();
    m_views.OpenAll(kDefaultViewLabels);
    m_views.Tile();
    ClassGnss::SetChipType(static_cast<quint32>(CProductVersion::GetVersion()));

    m_lastDirectory = QCoreApplication::applicationDirPath();
}

GnssWindow::~GnssWindow()
{
    // The views die with the base class, after this part of the object: nothing may tick or call back by then.
    m_link.StopTicking();
    m_replay.StopTicking();
    ClassGnss::UnloadCodec();
    if (PublishedRecordTarget() == &m_router) {
        PublishRecordTarget(nullptr);
    }
    m_link.ClosePort();
    Global::positioningStarted = false;
    SetStatusEdit(nullptr);
    emit closeGnssSignal();
    m_tools.DropProductTests();
}

void GnssWindow::JoinParts()
{
    connect(this, &GnssWindow::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&m_tools, &ToolWindows::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&m_views, &ViewHost::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(&m_views, &ViewHost::SendWakeUpCmd, this, &GnssWindow::SlotSendWakeUp);
    connect(this, &GnssWindow::ChangeStartFlagSignal, this, &GnssWindow::SlotChangeSwitchImage);
    connect(&m_positioning, &PositioningControl::SendMsg, this, &GnssWindow::SendMsg, Qt::DirectConnection);
    connect(&m_positioning, &PositioningControl::Changed, this, &GnssWindow::ChangeStartFlagSignal);
    connect(&m_positioning, &PositioningControl::LogsCleared, this, [this] {
        if (auto* view = m_views.Find<NMEAViewWin>()) {
            view->ResetHistory();
        }
    });
    connect(m_panel->Tree(), &QTreeWidget::itemClicked, this, &GnssWindow::SlotCtrlPanelItemClicked);
    connect(m_panel->TimestampButton(), &QPushButton::clicked, this, &GnssWindow::SlotAddTimestamp);
    connect(m_panel->ClearButton(), &QPushButton::clicked, this, &GnssWindow::SlotClearTextEdit);
    connect(m_panel->BottomButton(), &QPushButton::clicked, this, &GnssWindow::SlotBottomBtnClicked);
    JoinLine();
    JoinToolBar();
}

void GnssWindow::JoinLine()
{
    connect(m_link.SilenceTimer(), &QTimer::timeout, this, &GnssWindow::SlotProcSerialNoData);
    connect(&m_link, &SerialLink::BytesReceived, &m_views, &ViewHost::BytesReceived);
    connect(&m_link, &SerialLink::Opened, this, [this] {
        m_bar->ShowLink(true);
        AppendStatus(tr("打开串口 ") + Global::currentPortName);
    });
    connect(&m_link, &SerialLink::Closed, this, [this] {
        m_bar->ShowLink(false);
        AppendStatus(tr("关闭串口 ") + Global::currentPortName);
    });
    connect(&m_link, &SerialLink::Switched, this,
            [] { AppendStatus(tr("串口切换至 ") + Global::currentPortName); });
    connect(&m_link, &SerialLink::NoPortChosen, this,
            [this] { ShowWarningBox(this, QStringLiteral("GNSS"), tr("当前无可用串口，请检查串口连接状态")); });
    connect(&m_link, &SerialLink::OpenFailed, this, [this] {
        ShowWarningBox(this, QStringLiteral("GNSS"),
                       Global::currentPortName + QLatin1String(" open failed, please check com is busy or exist"));
    });
    connect(&m_replay, &ReplayPlayer::Started, this, [this] { m_bar->ShowReplay(true); });
    connect(&m_replay, &ReplayPlayer::Ended, this, [this] { m_bar->ShowReplay(false); });
    connect(&m_replay, &ReplayPlayer::PauseChanged, this,
            [this](bool paused) { m_bar->ShowReplayPaused(paused); });
    connect(&m_replay, &ReplayPlayer::Progressed, this,
            [this](int percent) { m_bar->progressBar->setValue(percent); });
}

void GnssWindow::JoinToolBar()
{
    connect(m_bar->portBtn, &MyButton::BtnClicked, this, &GnssWindow::SlotUpdatePortInfo);
    connect(m_bar->portBtn, &MyButton::triggered, this, &GnssWindow::SlotChangePort);
    connect(m_bar->portBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotSwitchPort);
    connect(m_bar->baudBtn, &MyButton::triggered, this, &GnssWindow::SlotChangeBaudRate);
    connect(m_bar->baudBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotAddBaudRate);
    connect(m_bar->replayBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotReplayAction);
    connect(m_bar->replayBtn, &MyButton::triggered, this, &GnssWindow::SlotChangeReplaySpeed);
    connect(m_bar->progressBar, &CustomProgressBar::ProgressValueChanged, this, &GnssWindow::SlotReplayProgress);
    connect(m_bar->progressBar, &CustomProgressBar::ProgressBarPressed, this, &GnssWindow::SlotProgressBarPressed);
    connect(m_bar->pauseBtn, &QPushButton::clicked, this, &GnssWindow::SlotPauseBtnClicked);
    connect(m_bar->tileBtn, &QPushButton::clicked, this, &GnssWindow::SlotTileWindows);
    connect(m_bar->saveBtn, &QPushButton::clicked, this, &GnssWindow::SlotSaveBtnClicked);
    connect(m_bar->startStopBtn, &QPushButton::clicked, this, &GnssWindow::SlotSendStartStopCmd);
    m_tools.Join(*m_bar);
}

void GnssWindow::SlotUpdatePortInfo()
{
    m_link.ScanPorts();
    m_bar->ShowPortNames(m_link.PortNames());
}

void GnssWindow::SlotChangeBaudRate(const QString& baudRateStr)
{
    m_link.ChangeBaudRate(baudRateStr.toUInt());
    m_bar->baudBtn->SetText(baudRateStr);
}

void GnssWindow::SlotSendPackets(uint8_t* buffer, int len)
{
    if (!m_link.Send(reinterpret_cast<const char*>(buffer), len)) {
        ShowWarningBox(this, QStringLiteral("GNSS"), QStringLiteral("Please open port before send packet!"));
    }
}

void GnssWindow::SlotSendHexData(QByteArray bytes)
{
    SlotSendPackets(reinterpret_cast<uint8_t*>(bytes.data()), bytes.size());
}

void GnssWindow::SlotOnConnect(bool status)
{
    Global::pluginConnected = status;
}

void GnssWindow::SlotCtrlPanelItemClicked(QTreeWidgetItem* item, int col)
{
    m_views.Open(item->text(col));
}

void GnssWindow::SlotClearTextEdit()
{
    ClearStatus();
}

void GnssWindow::SlotBottomBtnClicked()
{
    ScrollStatusToEnd();
}

void GnssWindow::SlotSaveBtnClicked()
{
    const QPointer<GnssWindow> guard(this);
    const QString chosen = AskFolder(this, QStringLiteral("Selecting a path for saving serial port data."));
    if (!guard.isNull()) {
        // A cancelled choice goes back to the default directory.
        m_link.SetSaveDirectory(chosen);
    }
}

void GnssWindow::SlotChangeSwitchImage()
{
    m_bar->ShowPositioning(Global::positioningStarted);
}

void GnssWindow::SlotReplayAction()
{
    if (Global::replayRunning) {
        m_replay.End();
        return;
    }
    const QPointer<GnssWindow> guard(this);
    const QString path = AskFileToOpen(this, QStringLiteral("Select File"), m_lastDirectory,
                                       QStringLiteral("Text file(*.txt *.log *.bin);;ALL files(*.*)"));
    if (guard.isNull() || path.isEmpty()) {
        return;
    }
    m_lastDirectory = QFileInfo(path).path();
    const ReplayPlayer::Opening opening = m_replay.Play(path);
    if (opening == ReplayPlayer::Opening::CannotOpen) {
        ShowWarningBox(this, QStringLiteral("GNSS"), QStringLiteral("Open file failed!"));
    } else if (opening == ReplayPlayer::Opening::NoCapture) {
        ShowWarningBox(this, QStringLiteral("GNSS"),
                       QStringLiteral("The playback file is incorrect.\nPlease select the correct file!"));
    }
}

void GnssWindow::SlotChangeReplaySpeed(const QString& speedStr)
{
    m_replay.SetSpeed(ReplaySpeedValue(speedStr, tr("最大速度")));
}
