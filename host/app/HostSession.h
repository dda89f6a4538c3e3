// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/HostOptions.h"
#include "host/app/HostSettings.h"
#include "host/app/ReceiverProcess.h"
#include "host/app/ServiceProcess.h"
#include "host/app/StationReceivers.h"
#include "host/app/StopSignals.h"

#include <QObject>
#include <QTranslator>

#include <memory>
#include <optional>

class HeadlessRun;
class HostWindow;
class PluginSession;

/// One run of the host: window, plug-in and virtual receiver, from the first start to the end, over every change
/// of product or language.
class HostSession : public QObject {
    Q_OBJECT

public:
    explicit HostSession(const HostOptions& options);
    ~HostSession() override;

    /// Builds everything, runs the event loop and takes everything down again. Returns the exit status.
    int Run();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ApplySettings();
    void InstallTranslators();
    ReceiverSettings AskedOfReceiver() const;
    void StartReceiver();
    void Connect();
    void SizeWindow();
    void Build();
    int RunLoop();
    void FirstPaint();
    void OpenLine();
    void UsePort(const QString& port);
    void StopReceiver();
    void RestartReceiver();
    void StartService();
    void UseService(const QString& host);
    void ShowReceiverState();
    void ReceiverEnded(const QString& reason);
    void ChangeProduct(int product);
    void ChangeLanguage(int language);
    void Leave(int code);
    void TakeDown();

    HostOptions m_options;
    HostSettings m_settings;
    int m_product = 0;
    int m_language = 1;
    bool m_receiverWanted = true;
    QString m_port; // what was put into the list of ports
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<PluginSession> m_plugin;
    std::unique_ptr<HeadlessRun> m_headless;
    ReceiverProcess m_receiver;
    StationReceivers m_station;
    ServiceProcess m_service;
    bool m_serviceTried = false;
    StopSignals m_stopSignals;
    QTranslator m_hostTexts;
    QTranslator m_pluginTexts;
    QTranslator m_qtTexts;
    bool m_built = false;
    bool m_painted = false;
    bool m_lineOpened = false;
    bool m_timingPrinted = false;
    std::optional<int> m_leave; // with what to leave the event loop
};
