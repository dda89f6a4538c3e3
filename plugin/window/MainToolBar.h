// SPDX-License-Identifier: MIT
#pragma once

#include <QToolBar>

class CustomProgressBar;
class MyButton;
class QPushButton;

/// The main window's tool bar: its buttons by the product, and their pictures. It knows no one whom its buttons
/// concern.
class MainToolBar : public QToolBar {
public:
    /// `product` as the host numbers it; `portNames` go into the port button's menu.
    MainToolBar(int product, const QStringList& portNames, QWidget* window);

    void ShowPortNames(const QStringList& names);
    void ShowLink(bool open);
    void ShowReplay(bool running);
    void ShowReplayPaused(bool paused);
    void ShowPositioning(bool started);

    MyButton* portBtn = nullptr;
    MyButton* baudBtn = nullptr;
    QPushButton* serialSettingBtn = nullptr;
    MyButton* replayBtn = nullptr;
    CustomProgressBar* progressBar = nullptr;
    QPushButton* pauseBtn = nullptr;
    QPushButton* tileBtn = nullptr;
    QPushButton* saveBtn = nullptr;
    QPushButton* startStopBtn = nullptr;
    // Null where the product has none.
    QPushButton* onlineBtn = nullptr;
    QPushButton* offlineBtn = nullptr;
    QPushButton* versionBtn = nullptr;
    QPushButton* hisInfoBtn = nullptr;
    QPushButton* senceReplayBtn = nullptr;
    QPushButton* productTestBtn = nullptr;
    QAction* fetchNmea = nullptr;

private:
    void BuildLinkButtons(const QStringList& portNames);
    void BuildReplayButtons();
    void BuildToolWindowButtons(int product);
    void BuildToolsMenu();
    QPushButton* AddButton(const char* picture, const QString& toolTip, const QSize& iconSize);

    QAction* m_progressAction = nullptr;
    QAction* m_pauseAction = nullptr;
};
