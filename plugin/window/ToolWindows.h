// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistOffline.h"
#include "assist/AssistOnline.h"
#include "assist/HisInfoInject.h"
#include "assist/SenceReplay.h"
#include "production/FetchNmea.h"
#include "production/VersionLoad.h"

#include <QMap>
#include <QObject>
#include <QPointer>

#include <array>
#include <memory>

class CustomBaudRateWin;
class MainToolBar;
class ProductTest;
class QPushButton;
class QSerialPort;
class SerialSetting;

/// The windows beside the main one: the long-lived tool windows, which a button of the tool bar shows, and the
/// production windows, of which each click makes one.
class ToolWindows : public QObject {
    Q_OBJECT

public:
    enum Tool { SerialSettings, Online, Offline, Firmware, History, Scenes, Extraction, kTools };

    explicit ToolWindows(QSerialPort* port);
    ~ToolWindows() override;

    /// Joins the windows with the buttons of a tool bar.
    void Join(const MainToolBar& bar);

    /// Shows a tool window in front, and its button's picture of the shown state.
    void Show(Tool tool);
    /// The picture of the other state.
    void ShowClosed(Tool tool);

    void NewProductTest();
    void CloseProductTest(const QString& title);
    /// Deletes every production window.
    void DropProductTests();

    /// Asks for a baud rate; its answer goes to the tool bar.
    void AskBaudRate();

    HisInfoInject& HistoryWindow() { return m_hisInfoInject; }

signals:
    void SendMsg(uint8_t* buffer, int length);

private:
    QWidget& Window(Tool tool);
    void ShowHistoryState();

    AssistOffline m_assistOffline;
    AssistOnline m_assistOnline;
    VersionLoad m_versionLoad;
    HisInfoInject m_hisInfoInject;
    FetchNmea m_fetchNmea;
    SenceReplay m_senceReplay;
    std::unique_ptr<SerialSetting> m_serialSetting;
    QPointer<CustomBaudRateWin> m_customBaudWin;
    QMap<QString, ProductTest*> m_productTests;
    int m_productTestCount = 1;

    const MainToolBar* m_bar = nullptr;
    std::array<QPushButton*, kTools> m_buttons = {};
};
