// SPDX-License-Identifier: MIT
#include "host/app/HostSession.h"

#include "host/app/AssistConfig.h"
#include "host/app/Components.h"
#include "host/app/HeadlessRun.h"
#include "host/app/HostWindow.h"
#include "host/app/PluginSession.h"
#include "host/app/ProcessFacts.h"
#include "host/app/SerialPortsVariable.h"
#include "host/support/HostSupportConfig.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kRebuild = 1000; // a way out of the event loop that no exit status uses
constexpr int kReadyMilliseconds = 5000;
constexpr int kPaintMilliseconds = 1000;
constexpr int kUnwindMilliseconds = 3000;
constexpr QSize kUsualSize(1280, 800);
constexpr QSize kHeadlessSize(1600, 1000);

QString BesideProgram(const QString& name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

#ifdef Q_OS_WIN
const QString kPluginFile = QStringLiteral("Gnss.dll");
const QString kReceiverFile = QStringLiteral("gnss-receiver.exe");
const QString kServiceFile = QStringLiteral("assist-service.exe");
#else
const QString kPluginFile = QStringLiteral("libGnss.so");
const QString kReceiverFile = QStringLiteral("gnss-receiver");
const QString kServiceFile = QStringLiteral("assist-service");
#endif

} // namespace

HostSession::HostSession(const HostOptions& options)
    : m_options(options), m_settings(BesideProgram(QStringLiteral("host.ini")))
{
    m_product = options.product.value_or(m_settings.Product());
    m_language = options.language.value_or(m_settings.Language(QLocale::system()));
    m_receiverWanted = !options.noReceiver && options.port.isEmpty();
    if (m_options.plugin.isEmpty()) {
        m_options.plugin = BesideProgram(kPluginFile);
    } else {
        m_options.plugin = QFileInfo(m_options.plugin).absoluteFilePath();
    }
    if (m_options.receiver.isEmpty()) {
        m_options.receiver = BesideProgram(kReceiverFile);
    }
    connect(&m_receiver, &ReceiverProcess::Ended, this, &HostSession::ReceiverEnded);
    if (m_options.service.isEmpty()) {
        m_options.service = BesideProgram(kServiceFile);
    }
    connect(&m_service, &ServiceProcess::Ready, this, &HostSession::UseService);
}

HostSession::~HostSession()
{
    TakeDown();
}

int HostSession::Run()
{
    ApplySettings();
    // The process takes its time to come up, so it goes before the windows.
    if (m_receiverWanted) {
        StartReceiver();
    }

    m_window = std::make_unique<HostWindow>();
    m_window->installEventFilter(this);
    SizeWindow();
    if (m_options.headlessSeconds > 0) {
        m_headless = std::make_unique<HeadlessRun>(m_options.headlessSeconds, m_options.output, m_window.get());
        m_headless->SetReceiverState([this] { return m_receiver.StateText(); });
    }
    Connect();

    int code = kRebuild;
    while (code == kRebuild) {
        Build();
        code = RunLoop();
        if (!m_headless && !m_options.size.isValid()) {
            m_settings.SetWindow(m_window->saveGeometry(), m_window->saveState());
        }
        TakeDown();
        if (code == kRebuild) {
            ApplySettings();
            if (m_receiverWanted) {
                StartReceiver();
            }
        }
    }
    m_headless.reset();
    m_window.reset();
    return code;
}

void HostSession::SizeWindow()
{
    const bool headless = m_options.headlessSeconds > 0;
    m_window->resize(headless ? kHeadlessSize : kUsualSize);
    if (!headless) {
        m_window->restoreGeometry(m_settings.Geometry());
        m_window->restoreState(m_settings.WindowState());
    }
    if (m_options.size.isValid()) {
        m_window->resize(m_options.size);
    }
}

void HostSession::Connect()
{
    connect(&m_stopSignals, &StopSignals::Stopped, this, [this] { Leave(m_headless ? 1 : 0); });
    if (m_headless) {
        connect(m_headless.get(), &HeadlessRun::Finished, this, &HostSession::Leave);
    }
    connect(m_window.get(), &HostWindow::Closing, this, [this] { Leave(0); });
    connect(m_window.get(), &HostWindow::ProductChosen, this, &HostSession::ChangeProduct);
    connect(m_window.get(), &HostWindow::LanguageChosen, this, &HostSession::ChangeLanguage);
    connect(m_window.get(), &HostWindow::ReceiverSwitched, this, [this](bool on) {
        m_receiverWanted = on;
        if (on) {
            RestartReceiver();
        } else {
            StopReceiver();
        }
    });
    connect(m_window.get(), &HostWindow::CaptureChosen, this, [this](const QString& file) {
        m_options.capture = file;
        m_receiverWanted = true;
        RestartReceiver();
    });
    connect(m_window.get(), &HostWindow::SpeedChosen, this, [this](const QString& speed) {
        m_options.speed = speed;
        m_window->ShowCapture(m_options.capture, m_options.speed);
        if (!m_options.capture.isEmpty() && m_receiverWanted) {
            RestartReceiver();
        }
    });
}

int HostSession::RunLoop()
{
    // The wish to leave may have come while the window was being built.
    if (!m_leave) {
        QCoreApplication::exec();
    }
    const int code = m_leave.value_or(0);
    m_leave.reset();
    return code;
}

void HostSession::ApplySettings()
{
    HostSupportConfig::SetProduct(m_product);
    if (!WriteLanguageFile(QDir::currentPath(), m_language)) {
        qWarning() << "language.ini cannot be written";
    }
    InstallTranslators();
}

void HostSession::InstallTranslators()
{
    const QString folder = BesideProgram(QStringLiteral("translations"));
    for (QTranslator* translator : {&m_hostTexts, &m_pluginTexts, &m_qtTexts}) {
        QCoreApplication::removeTranslator(translator);
    }
    const auto install = [](QTranslator& translator, const QString& name, const QString& from) {
        if (!translator.load(name, from)) {
            return false;
        }
        QCoreApplication::installTranslator(&translator);
        return true;
    };
    if (m_language == LANGUAGE_CHINESE) {
        if (!install(m_hostTexts, QStringLiteral("host_zh"), folder)) {
            qWarning().noquote() << "no translation" << folder + QStringLiteral("/host_zh.qm");
        }
        if (!install(m_qtTexts, QStringLiteral("qtbase_zh_CN"), folder)) {
            install(m_qtTexts, QStringLiteral("qtbase_zh_CN"),
                    QLibraryInfo::location(QLibraryInfo::TranslationsPath));
        }
    } else if (!install(m_pluginTexts, QStringLiteral("gnss_en"), folder)) {
        qWarning().noquote() << "no translation" << folder + QStringLiteral("/gnss_en.qm");
    }
}

ReceiverSettings HostSession::AskedOfReceiver() const
{
    ReceiverSettings settings;
    settings.program = m_options.receiver;
    settings.product = m_product;
    settings.idle = m_options.idle;
    settings.capture = m_options.capture;
    settings.speed = m_options.speed;
    settings.extra = m_options.receiverArguments;
    return settings;
}

void HostSession::StartReceiver()
{
    m_receiver.Start(AskedOfReceiver());
}

void HostSession::Build()
{
    m_window->ShowProduct(m_product);
    m_window->ShowLanguage(m_language);
    m_window->ShowCapture(m_options.capture, m_options.speed);

    m_plugin = std::make_unique<PluginSession>(m_options.plugin);
    const bool loaded = m_plugin->Load();
    m_station.Start(AskedOfReceiver(), m_options.station);
    m_station.Offer(kReadyMilliseconds);
    if (m_receiverWanted) {
        if (!m_receiver.WaitReady(kReadyMilliseconds) &&
            m_receiver.CurrentState() == ReceiverProcess::State::Starting) {
            qWarning() << "virtual receiver: not ready after 5 seconds";
        }
        UsePort(m_receiver.Port());
    } else if (!m_options.port.isEmpty()) {
        UsePort(m_options.port);
    }

    ComponentStatus plugin{m_options.plugin, loaded, m_plugin->Error()};
    if (loaded) {
        const QWidget* window = m_plugin->BuildWindow(m_window->Container());
        if (window) {
            m_window->ShowPlugin();
        } else {
            plugin.good = false;
            plugin.reason = tr("it built no window");
        }
    }
    if (!plugin.good) {
        qCritical().noquote() << "plug-in not loaded:" << plugin.file << plugin.reason;
        m_window->ShowMissingPlugin(plugin);
    }
    const ComponentStatus codec = CheckLibrary(CodecFile(QCoreApplication::applicationDirPath()));
    const ComponentStatus archiver = CheckProgram(ArchiverFile(QDir::currentPath()));
    for (const ComponentStatus& status : {codec, archiver}) {
        if (!status.good) {
            qWarning().noquote() << "not in use:" << status.file << status.reason;
        }
    }
    m_window->ShowComponents(plugin, codec, archiver);
    ShowReceiverState();

    m_built = true;
    m_painted = false;
    m_window->show();
    m_window->update();
    // A window that nobody sees is never painted.
    QTimer::singleShot(kPaintMilliseconds, this, &HostSession::OpenLine);
    if (m_headless) {
        m_headless->Start();
    }
}

bool HostSession::eventFilter(QObject* watched, QEvent* event)
{
    const bool paints = event->type() == QEvent::Paint || event->type() == QEvent::UpdateRequest;
    if (watched == m_window.get() && paints && !m_painted) {
        m_painted = true;
        // When the timer fires the whole window has been painted and shown.
        QTimer::singleShot(0, this, &HostSession::FirstPaint);
    }
    return QObject::eventFilter(watched, event);
}

void HostSession::FirstPaint()
{
    if (m_options.timing && !m_timingPrinted) {
        m_timingPrinted = true;
        std::printf("first paint %.0f ms, resident %.1f MB\n", MillisecondsSinceProcessStart(),
                    static_cast<double>(ResidentKilobytes()) / 1024.0);
        std::fflush(stdout);
    }
    OpenLine();
}

void HostSession::OpenLine()
{
    StartService();
    if (m_lineOpened || !m_built || m_port.isEmpty()) {
        return;
    }
    m_lineOpened = true;
    m_plugin->OpenPort(m_port);
}

/// Starts the assistance service once, behind the first picture: nobody asks it earlier. Where the user has named
/// another service only that one's authority is trusted.
void HostSession::StartService()
{
    if (m_serviceTried) {
        return;
    }
    m_serviceTried = true;
    const QString folder = QCoreApplication::applicationDirPath();
    if (m_options.noService || !IsOwnAssistConfig(AssistConfigFile(folder))) {
        TrustConfiguredAuthority(AssistConfigFile(folder), folder);
        return;
    }
    m_service.Start(
        {m_options.service, folder + QStringLiteral("/Source-Datas/assist-service"), m_options.serviceArguments});
}

void HostSession::UseService(const QString& host)
{
    const QString folder = QCoreApplication::applicationDirPath();
    const QString file = AssistConfigFile(folder);
    AssistConfig config;
    config.host = host;
    config.ca = m_service.Folder() + QStringLiteral("/certificate.pem");
    if (!ReadServiceCredentials(m_service.Folder(), config) || !IsOwnAssistConfig(file) ||
        !WriteAssistConfig(file, config)) {
        qWarning().noquote() << "assistance service: not written to" << file;
    }
    TrustConfiguredAuthority(file, folder);
}

/// Puts a port into the list of ports, in place of an earlier one.
void HostSession::UsePort(const QString& port)
{
    if (!m_port.isEmpty()) {
        SerialPortsVariable::Remove(m_port);
    }
    m_port = port;
    if (m_port.isEmpty()) {
        return;
    }
    SerialPortsVariable::Add(m_port);
    if (m_headless) {
        m_headless->AddPort(m_port);
    }
}

void HostSession::StopReceiver()
{
    m_lineOpened = true; // from here on the line is opened and closed by these two
    if (m_plugin && !m_receiver.Port().isEmpty() && IsOpenInThisProcess(m_receiver.Port())) {
        m_plugin->SwitchPort();
    }
    m_receiver.Stop();
    UsePort(m_receiver.Port());
    ShowReceiverState();
}

void HostSession::RestartReceiver()
{
    // The line is closed first: a port whose far end is gone reports an error for ever.
    StopReceiver();
    m_window->ShowCapture(m_options.capture, m_options.speed);
    StartReceiver();
    ShowReceiverState();
    const bool ready = m_receiver.WaitReady(kReadyMilliseconds);
    UsePort(m_receiver.Port());
    ShowReceiverState();
    if (!ready || !m_plugin) {
        return;
    }
    m_plugin->ChoosePort(m_port);
    if (!IsOpenInThisProcess(m_port)) {
        m_plugin->SwitchPort();
    }
}

void HostSession::ShowReceiverState()
{
    const bool ready = m_receiver.CurrentState() == ReceiverProcess::State::Ready;
    QString text = m_receiver.StateText();
    if (!m_receiverWanted && !m_options.port.isEmpty()) {
        text = tr("Port %1").arg(m_options.port);
    }
    m_window->ShowReceiver(m_receiverWanted, text, ready);
}

void HostSession::ReceiverEnded(const QString& reason)
{
    if (!m_window) {
        return;
    }
    ShowReceiverState();
    m_window->ShowNote(tr("The virtual receiver is gone: %1").arg(reason));
}

void HostSession::ChangeProduct(int product)
{
    if (product == m_product) {
        return;
    }
    m_product = product;
    m_settings.SetProduct(product);
    Leave(kRebuild);
}

void HostSession::ChangeLanguage(int language)
{
    if (language == m_language) {
        return;
    }
    m_language = language;
    m_settings.SetLanguage(language);
    Leave(kRebuild);
}

/// The wish may come from inside one of the plug-in's waits, whose code must not be unloaded under it: the event
/// loop is left, and what hangs on the plug-in goes when the stack is clean. A wait that goes on ends early by the
/// end of its window.
void HostSession::Leave(int code)
{
    // The first wish counts, but a wish to end goes before one to build again.
    if (!m_leave || *m_leave == kRebuild) {
        m_leave = code;
    }
    if (m_plugin) {
        QTimer::singleShot(kUnwindMilliseconds, m_plugin.get(),
                           [plugin = m_plugin.get()] { plugin->DestroyWindow(); });
    }
    QCoreApplication::exit(code);
}

void HostSession::TakeDown()
{
    m_built = false;
    m_lineOpened = false;
    if (m_plugin) {
        m_plugin->Unload();
        m_plugin.reset();
    }
    m_receiver.Stop();
    m_station.Stop();
    UsePort(QString());
}
