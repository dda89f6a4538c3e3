// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/HostOptions.h"
#include "host/app/HostSettings.h"
#include "host/app/HostTranslators.h"
#include "host/app/OwnService.h"
#include "host/app/ReceiverLine.h"
#include "host/app/StationReceivers.h"
#include "host/app/StopSignals.h"

#include <QObject>

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
    ReceiverSettings AskedOfReceiver() const;
    void Connect();
    void SizeWindow();
    void Build();
    int RunLoop();
    void FirstPaint();
    void OpenLine();
    void RestartReceiver();
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
    std::unique_ptr<HostWindow> m_window;
    std::unique_ptr<PluginSession> m_plugin;
    std::unique_ptr<HeadlessRun> m_headless;
    ReceiverLine m_line;
    StationReceivers m_station;
    OwnService m_service;
    StopSignals m_stopSignals;
    HostTranslators m_translators;
    bool m_built = false;
    bool m_painted = false;
    bool m_timingPrinted = false;
    std::optional<int> m_leave; // with what to leave the event loop
};
