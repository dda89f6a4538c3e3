// SPDX-License-Identifier: MIT
#include "window/MainToolBar.h"

#include "base/ProcessState.h"
#include "protocol/LinkFrame.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MyButton.h"
#include "window/ToolPictures.h"
#include "window/WindowText.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr int buttonHeight = 25;
constexpr QSize buttonSize(40, buttonHeight);

} // namespace

MainToolBar::MainToolBar(int product, const QStringList& portNames, QWidget* window) : QToolBar(window)
{
    setIconSize(QSize(18, 18));
    BuildLinkButtons(portNames);
    addSeparator();
    BuildReplayButtons();
    addSeparator();
    tileBtn = AddButton("TileBtn.png", WindowText::tr("平铺"), kToolIconSize);
    saveBtn = AddButton("SaveBtn.png", WindowText::tr("保存数据路径"), QSize(16, 17));
    startStopBtn = AddButton("stopStatus.png", WindowText::tr("启动定位"), kToolIconSize);
    BuildToolWindowButtons(product);
    BuildToolsMenu();
}

QPushButton* MainToolBar::AddButton(const char* picture, const QString& toolTip, const QSize& iconSize)
{
    auto* button = new QPushButton(ToolPicture(picture), QString(), this);
    button->setFixedSize(buttonSize);
    button->setIconSize(iconSize);
    button->setToolTip(toolTip);
    addWidget(button);
    return button;
}

void MainToolBar::BuildLinkButtons(const QStringList& portNames)
{
    portBtn = new MyButton(ToolPicture("uart_unlink.png"), 60, this);
    portBtn->QWidget::setToolTip(WindowText::tr("选择串口号"));
    portBtn->SetToolTip(WindowText::tr("打开串口"));
    ShowPortNames(portNames);
    addWidget(portBtn);

    const QString defaultRate = QString::number(Global::currentBaudRate);
    baudBtn = new MyButton(defaultRate, 75, this);
    baudBtn->QWidget::setToolTip(WindowText::tr("选择波特率"));
    baudBtn->SetToolTip(WindowText::tr("设置自定义波特率"));
    baudBtn->SetMenuEntries({QStringLiteral("4800"), QStringLiteral("9600"), QStringLiteral("19200"),
                             QStringLiteral("38400"), QStringLiteral("57600"), QStringLiteral("115200"),
                             QStringLiteral("1000000")});
    baudBtn->SelectEntry(defaultRate);
    addWidget(baudBtn);

    serialSettingBtn = AddButton("serialSettingC.png", WindowText::tr("串口设置"), kToolIconSize);
}

void MainToolBar::BuildReplayButtons()
{
    replayBtn = new MyButton(ToolPicture("StartReplay.png"), 45, this);
    replayBtn->QWidget::setToolTip(WindowText::tr("选择回放速度"));
    replayBtn->SetToolTip(WindowText::tr("回放"));
    const QString fastest = WindowText::tr("最大速度");
    const QStringList speeds = {
        QStringLiteral("0.25"), QStringLiteral("0.5"), QStringLiteral("1"),  QStringLiteral("2"),
        QStringLiteral("4"),    QStringLiteral("8"),   QStringLiteral("16"), fastest};
    replayBtn->SetMenuEntries(speeds);
    const QString present = QString::number(static_cast<double>(Global::replaySpeed), 'g', 6);
    replayBtn->SelectEntry(speeds.contains(present) ? present : fastest);
    addWidget(replayBtn);

    progressBar = new CustomProgressBar(this);
    progressBar->setFixedWidth(105);
    m_progressAction = addWidget(progressBar);
    m_progressAction->setVisible(false);

    pauseBtn = new QPushButton(ToolPicture("PauseReplay.png"), QString(), this);
    pauseBtn->setFixedSize(buttonSize);
    pauseBtn->setIconSize(kToolIconSize);
    pauseBtn->setToolTip(WindowText::tr("暂停/继续"));
    m_pauseAction = addWidget(pauseBtn);
    m_pauseAction->setVisible(false);
}

void MainToolBar::BuildToolWindowButtons(int product)
{
    const bool reduced = product == protocol::kReducedProduct;
    if (!reduced) {
        onlineBtn = AddButton("online_unlink.png", WindowText::tr("在线辅助定位"), QSize(20, 20));
        offlineBtn = AddButton("offline_unlink.png", WindowText::tr("离线辅助定位"), QSize(20, 20));
        versionBtn = AddButton("versionUnload.png", WindowText::tr("固件加载"), QSize(20, 17));
    }
    hisInfoBtn = AddButton("hisNotOpen.png", WindowText::tr("历史信息"), QSize(20, 17));
    if (reduced || product == protocol::kAtProduct) {
        senceReplayBtn = AddButton("senceReplay.png", WindowText::tr("场景库回放"), kToolIconSize);
    }
    if (!reduced) {
        productTestBtn = AddButton("ProductTestOff.png", WindowText::tr("产品测试"), QSize(20, 17));
        addSeparator();
    }
}

void MainToolBar::BuildToolsMenu()
{
    auto* tools = new QToolButton(this);
    tools->setPopupMode(QToolButton::InstantPopup);
    tools->setFixedSize(40, 23);
    tools->setIcon(ToolPicture("tools.png"));
    tools->setToolTip(WindowText::tr("常用工具"));
    tools->setStyleSheet(QStringLiteral("QToolButton{background-color:rgb(225,225,225); color: white; border: 1px "
                                        "groove rgb(173,173,173);}QToolButton::menu-indicator{image:none;}"));
    auto* menu = new QMenu(tools);
    fetchNmea = menu->addAction(ToolPicture("fetchNmea.png"), WindowText::tr("提取NMEA"));
    menu->addSeparator();
    tools->setMenu(menu);
    addWidget(tools);
}

void MainToolBar::ShowPortNames(const QStringList& names)
{
    portBtn->SetMenuEntries(names, Global::busyPortNames);
    // Only a name that is in the list is selected: selecting another one would add it.
    if (names.contains(Global::currentPortName)) {
        portBtn->SelectEntry(Global::currentPortName);
    }
}

void MainToolBar::ShowLink(bool open)
{
    portBtn->SetIcon(ToolPicture(open ? "uart_link.png" : "uart_unlink.png"));
    // The tool tip states what just happened, not what a click will do.
    portBtn->SetToolTip(open ? WindowText::tr("打开串口") : WindowText::tr("关闭串口"));
}

void MainToolBar::ShowReplay(bool running)
{
    // A handle that the user holds is let go: once hidden the bar would never hear of its release, and the next
    // replay would not move it.
    progressBar->setEnabled(running);
    replayBtn->SetIcon(ToolPicture(running ? "StopReplay.png" : "StartReplay.png"));
    if (!running) {
        pauseBtn->setIcon(ToolPicture("PauseReplay.png"));
        progressBar->setValue(0);
    }
    m_progressAction->setVisible(running);
    m_pauseAction->setVisible(running);
}

void MainToolBar::ShowReplayPaused(bool paused)
{
    pauseBtn->setIcon(ToolPicture(paused ? "resume.png" : "PauseReplay.png"));
}

void MainToolBar::ShowPositioning(bool started)
{
    startStopBtn->setToolTip(started ? WindowText::tr("停止定位") : WindowText::tr("启动定位"));
    startStopBtn->setIcon(ToolPicture(started ? "startStatus.png" : "stopStatus.png"));
}
