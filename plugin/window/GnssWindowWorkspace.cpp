// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "line/PortList.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/LeftDockWidget.h"
#include "widgets/MyButton.h"
#include "widgets/SerialSetting.h"
#include "window/ControlTree.h"

#include "host/support/CProductVersion.h"
#include "host/support/ImageManager.h"
#include "host/support/VerCommon.h"
#include "protocol/LinkFrame.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMenu>
#include <QPushButton>
#include <QStyleFactory>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int buttonHeight = 25;
constexpr QSize buttonSize(40, buttonHeight);
constexpr QSize defaultIconSize(18, 17);

QIcon Picture(const QString& name)
{
    return QIcon(ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + name));
}

QPushButton* LogButton(const QString& picture, const QString& toolTip)
{
    auto* button = new QPushButton(Picture(picture), QString());
    button->setIconSize(defaultIconSize);
    button->setToolTip(toolTip);
    return button;
}

} // namespace

QMdiArea* GnssWindow::InstallMdiArea()
{
    auto* area = new QMdiArea;
    area->setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(area);
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    return area;
}

void GnssWindow::BuildWorkspace(QWidget* hostParent)
{
    mdiArea = InstallMdiArea();

    dock = new LeftDockWidget(QStringLiteral("Control Panel"), this);
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    dock->setAllowedAreas(Qt::LeftDockWidgetArea);
    dock->setWidget(BuildDockContent());

    ctrlTree->expandAll();
    addDockWidget(Qt::LeftDockWidgetArea, dock);

    connect(ctrlTree, &QTreeWidget::itemClicked, this, &GnssWindow::SlotCtrlPanelItemClicked);
    if (hostParent != nullptr) {
        // The host need not declare the signal, so the connection is made by name.
        connect(hostParent, SIGNAL(NotifyPluginConnectSignal(bool)), this, SLOT(SlotOnConnect(bool)));
    }
}

QWidget* GnssWindow::BuildDockContent()
{
    auto* content = new QWidget(this);

    statusEdit = new QTextEdit(content);
    statusEdit->setReadOnly(true);
    statusEdit->setUndoRedoEnabled(false);
    SetStatusEdit(statusEdit);

    ctrlTree = new QTreeWidget(content);
    ctrlTree->setHeaderHidden(true);
    if (QStyle* style = QStyleFactory::create(QStringLiteral("windows"))) {
        style->setParent(ctrlTree);
        ctrlTree->setStyle(style);
    }
    ctrlTree->setContextMenuPolicy(Qt::CustomContextMenu);
    const QString configDirectory = VerCommon::GetCfgPath(QString::number(VerCommon::GetCurrentVersion()));
    LoadControlTree(ctrlTree, TreeFilePath(configDirectory, Global::language));

    auto* label = new QLabel(tr("系统状态："), content);
    label->setFont(QFont(QStringLiteral("Times New Roman"), 12));
    label->setStyleSheet(QStringLiteral("color:black;"));
    label->setFixedSize(100, 30);

    m_timestampBtn = LogButton(QStringLiteral("clock.png"), tr("时间戳"));
    m_timestampBtn->setCheckable(true);
    m_timestampBtn->setChecked(Global::showTimestamp);
    connect(m_timestampBtn, &QPushButton::clicked, this, &GnssWindow::SlotAddTimestamp);
    QPushButton* clearBtn = LogButton(QStringLiteral("delete.png"), tr("清空"));
    connect(clearBtn, &QPushButton::clicked, this, &GnssWindow::SlotClearTextEdit);
    QPushButton* bottomBtn = LogButton(QStringLiteral("bottom.png"), tr("滚动到底部"));
    connect(bottomBtn, &QPushButton::clicked, this, &GnssWindow::SlotBottomBtnClicked);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_timestampBtn);
    buttons->addWidget(clearBtn);
    buttons->addWidget(bottomBtn);
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(ctrlTree, 3);
    layout->addWidget(label);
    layout->addWidget(statusEdit, 2);
    layout->addLayout(buttons);
    return content;
}

void GnssWindow::SlotAddTimestamp()
{
    Global::showTimestamp = !Global::showTimestamp;
    m_timestampBtn->setChecked(Global::showTimestamp);
}

void GnssWindow::SlotClearTextEdit()
{
    ClearStatus();
}

void GnssWindow::SlotBottomBtnClicked()
{
    ScrollStatusToEnd();
}

void GnssWindow::BuildToolBar()
{
    ScanPortNames();
    auto* bar = new QToolBar(this);
    bar->setIconSize(QSize(18, 18));
    BuildLinkButtons(bar);
    bar->addSeparator();
    BuildReplayButtons(bar);
    bar->addSeparator();

    QPushButton* tileBtn = AddToolButton(bar, QStringLiteral("TileBtn.png"), tr("平铺"), defaultIconSize);
    connect(tileBtn, &QPushButton::clicked, this, &GnssWindow::SlotTileWindows);
    QPushButton* saveBtn = AddToolButton(bar, QStringLiteral("SaveBtn.png"), tr("保存数据路径"), QSize(16, 17));
    connect(saveBtn, &QPushButton::clicked, this, &GnssWindow::SlotSaveBtnClicked);
    m_startStopBtn = AddToolButton(bar, QStringLiteral("stopStatus.png"), tr("启动定位"), defaultIconSize);
    connect(m_startStopBtn, &QPushButton::clicked, this, &GnssWindow::SlotSendStartStopCmd);

    BuildToolWindowButtons(bar);
    BuildToolsMenu(bar);
    addToolBar(bar);
}

QPushButton* GnssWindow::AddToolButton(QToolBar* bar, const QString& icon, const QString& toolTip,
                                       const QSize& iconSize)
{
    auto* button = new QPushButton(Picture(icon), QString(), bar);
    button->setFixedSize(buttonSize);
    button->setIconSize(iconSize);
    button->setToolTip(toolTip);
    bar->addWidget(button);
    return button;
}

void GnssWindow::BuildLinkButtons(QToolBar* bar)
{
    m_portBtn = new MyButton(Picture(QStringLiteral("uart_unlink.png")), 60, bar);
    m_portBtn->QWidget::setToolTip(tr("选择串口号"));
    m_portBtn->SetToolTip(tr("打开串口"));
    ShowPortNames();
    connect(m_portBtn, &MyButton::BtnClicked, this, &GnssWindow::SlotUpdatePortInfo);
    connect(m_portBtn, &MyButton::triggered, this, &GnssWindow::SlotChangePort);
    connect(m_portBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotSwitchPort);
    bar->addWidget(m_portBtn);

    const QString defaultRate = QString::number(Global::currentBaudRate);
    m_baudBtn = new MyButton(defaultRate, 75, bar);
    m_baudBtn->QWidget::setToolTip(tr("选择波特率"));
    m_baudBtn->SetToolTip(tr("设置自定义波特率"));
    m_baudBtn->SetMenuEntries({QStringLiteral("4800"), QStringLiteral("9600"), QStringLiteral("19200"),
                               QStringLiteral("38400"), QStringLiteral("57600"), QStringLiteral("115200"),
                               QStringLiteral("1000000")});
    m_baudBtn->SelectEntry(defaultRate);
    connect(m_baudBtn, &MyButton::triggered, this, &GnssWindow::SlotChangeBaudRate);
    connect(m_baudBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotAddBaudRate);
    bar->addWidget(m_baudBtn);

    m_serialSettingBtn = AddToolButton(bar, QStringLiteral("serialSettingC.png"), tr("串口设置"), defaultIconSize);
    connect(m_serialSettingBtn, &QPushButton::clicked, this, &GnssWindow::SlotShowSerialSetting);
    serialSetting = new SerialSetting(serialPort);
}

void GnssWindow::BuildReplayButtons(QToolBar* bar)
{
    m_replayBtn = new MyButton(Picture(QStringLiteral("StartReplay.png")), 45, bar);
    m_replayBtn->QWidget::setToolTip(tr("选择回放速度"));
    m_replayBtn->SetToolTip(tr("回放"));
    const QString fastest = tr("最大速度");
    const QStringList speeds = {
        QStringLiteral("0.25"), QStringLiteral("0.5"), QStringLiteral("1"),  QStringLiteral("2"),
        QStringLiteral("4"),    QStringLiteral("8"),   QStringLiteral("16"), fastest};
    m_replayBtn->SetMenuEntries(speeds);
    const QString present = QString::number(static_cast<double>(Global::replaySpeed), 'g', 6);
    m_replayBtn->SelectEntry(speeds.contains(present) ? present : fastest);
    connect(m_replayBtn, &MyButton::ChildBtnClicked, this, &GnssWindow::SlotReplayAction);
    connect(m_replayBtn, &MyButton::triggered, this, &GnssWindow::SlotChangeReplaySpeed);
    bar->addWidget(m_replayBtn);

    progressBar = new CustomProgressBar(bar);
    progressBar->setFixedWidth(105);
    connect(progressBar, &CustomProgressBar::ProgressValueChanged, this, &GnssWindow::SlotReplayProgress);
    connect(progressBar, &CustomProgressBar::ProgressBarPressed, this, &GnssWindow::SlotProgressBarPressed);
    m_progressAction = bar->addWidget(progressBar);
    m_progressAction->setVisible(false);

    m_pauseBtn = new QPushButton(Picture(QStringLiteral("PauseReplay.png")), QString(), bar);
    m_pauseBtn->setFixedSize(buttonSize);
    m_pauseBtn->setIconSize(defaultIconSize);
    m_pauseBtn->setToolTip(tr("暂停/继续"));
    connect(m_pauseBtn, &QPushButton::clicked, this, &GnssWindow::SlotPauseBtnClicked);
    m_pauseAction = bar->addWidget(m_pauseBtn);
    m_pauseAction->setVisible(false);
}

void GnssWindow::BuildToolWindowButtons(QToolBar* bar)
{
    const int product = CProductVersion::GetVersion();
    const bool reduced = product == protocol::kReducedProduct;
    if (!reduced) {
        m_onlineBtn = AddToolButton(bar, QStringLiteral("online_unlink.png"), tr("在线辅助定位"), QSize(20, 20));
        connect(m_onlineBtn, &QPushButton::clicked, this, &GnssWindow::ShowOnlineAsstWin);
        m_offlineBtn = AddToolButton(bar, QStringLiteral("offline_unlink.png"), tr("离线辅助定位"), QSize(20, 20));
        connect(m_offlineBtn, &QPushButton::clicked, this, &GnssWindow::ShowOfflineAsstWin);
        m_versionBtn = AddToolButton(bar, QStringLiteral("versionUnload.png"), tr("固件加载"), QSize(20, 17));
        connect(m_versionBtn, &QPushButton::clicked, this, &GnssWindow::ShowVersionLoadWin);
    }
    m_hisInfoBtn = AddToolButton(bar, QStringLiteral("hisNotOpen.png"), tr("历史信息"), QSize(20, 17));
    connect(m_hisInfoBtn, &QPushButton::clicked, this, &GnssWindow::ShowHisInfoInjectWin);
    if (reduced || product == protocol::kAtProduct) {
        m_senceReplayBtn =
            AddToolButton(bar, QStringLiteral("senceReplay.png"), tr("场景库回放"), defaultIconSize);
        connect(m_senceReplayBtn, &QPushButton::clicked, this, &GnssWindow::ShowSenceReplayWin);
    }
    if (!reduced) {
        m_productTestBtn = AddToolButton(bar, QStringLiteral("ProductTestOff.png"), tr("产品测试"), QSize(20, 17));
        connect(m_productTestBtn, &QPushButton::clicked, this, &GnssWindow::ShowProductTestWin);
        bar->addSeparator();
    }
}

void GnssWindow::BuildToolsMenu(QToolBar* bar)
{
    auto* tools = new QToolButton(bar);
    tools->setPopupMode(QToolButton::InstantPopup);
    tools->setFixedSize(40, 23);
    tools->setIcon(Picture(QStringLiteral("tools.png")));
    tools->setToolTip(tr("常用工具"));
    tools->setStyleSheet(QStringLiteral("QToolButton{background-color:rgb(225,225,225); color: white; border: 1px "
                                        "groove rgb(173,173,173);}QToolButton::menu-indicator{image:none;}"));
    auto* menu = new QMenu(tools);
    menu->addAction(Picture(QStringLiteral("fetchNmea.png")), tr("提取NMEA"), this, &GnssWindow::ShowFetchNmeaWin);
    menu->addSeparator();
    tools->setMenu(menu);
    bar->addWidget(tools);
}
