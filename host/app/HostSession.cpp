// SPDX-License-Identifier: MIT
#include "host/app/HostSession.h"

#include "host/app/Components.h"
#include "host/app/HeadlessRun.h"
#include "host/app/HostWindow.h"
#include "host/app/PluginSession.h"
#include "host/app/ProcessFacts.h"
#include "host/app/ProgramFiles.h"
#include "host/support/HostSupportConfig.h"

#include <QApplication>
#include <QDebug>
#include <QDir>
#include <QTimer>

#include <cstdio>

namespace {

constexpr int kRebuild = 1000; // a way out of the event loop that no exit status uses
constexpr int kPaintMilliseconds = 1000;
constexpr int kUnwindMilliseconds = 3000;
constexpr QSize kUsualSize(1280, 800);
constexpr QSize kHeadlessSize(1600, 1000);

} // namespace

HostSession::HostSession(const HostOptions& options)
    : m_options(WithProgramFiles(options)), m_settings(BesideProgram(QStringLiteral("host.ini")))
{
    m_product = options.product.value_or(m_settings.Product());
    m_language = options.language.value_or(m_settings.Language(QLocale::system()));
    m_receiverWanted = !options.noReceiver && options.port.isEmpty();
    connect(&m_line, &ReceiverLine::Ended, this, &HostSession::ReceiverEnded);
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
        m_line.Start(AskedOfReceiver());
    }

    m_window = std::make_unique<HostWindow>();
    m_window->installEventFilter(this);
    SizeWindow();
    if (m_options.headlessSeconds > 0) {
        m_headless = std::make_unique<HeadlessRun>(m_options.headlessSeconds, m_options.output, m_window.get());
        m_headless->SetReceiverState([this] { return m_line.Receiver().StateText(); });
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
                m_line.Start(AskedOfReceiver());
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
        connect(&m_line, &ReceiverLine::PortUsed, m_headless.get(), &HeadlessRun::AddPort);
    }
    connect(&m_line, &ReceiverLine::StateChanged, this, &HostSession::ShowReceiverState);
    connect(m_window.get(), &HostWindow::Closing, this, [this] { Leave(0); });
    connect(m_window.get(), &HostWindow::ProductChosen, this, &HostSession::ChangeProduct);
    connect(m_window.get(), &HostWindow::LanguageChosen, this, &HostSession::ChangeLanguage);
    connect(m_window.get(), &HostWindow::ReceiverSwitched, this, [this](bool on) {
        m_receiverWanted = on;
        if (on) {
            RestartReceiver();
        } else {
            m_line.Stop(m_plugin.get());
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
    m_translators.Install(m_language, BesideProgram(QStringLiteral("translations")));
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

void HostSession::Build()
{
    m_window->ShowProduct(m_product);
    m_window->ShowLanguage(m_language);
    m_window->ShowCapture(m_options.capture, m_options.speed);

    m_plugin = std::make_unique<PluginSession>(m_options.plugin);
    const bool loaded = m_plugin->Load();
    m_station.Start(AskedOfReceiver(), m_options.station);
    m_station.Offer(ReceiverLine::kReadyMilliseconds);
    if (m_receiverWanted) {
        if (!m_line.Await() && m_line.Receiver().CurrentState() == ReceiverProcess::State::Starting) {
            qWarning() << "virtual receiver: not ready after 5 seconds";
        }
    } else if (!m_options.port.isEmpty()) {
        m_line.UsePort(m_options.port);
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
    m_service.Start(m_options); // behind the first picture: nobody asks it earlier
    if (m_built) {
        m_line.OpenFirst(*m_plugin);
    }
}

void HostSession::RestartReceiver()
{
    // The line is closed first: a port whose far end is gone reports an error for ever.
    m_line.Stop(m_plugin.get());
    m_window->ShowCapture(m_options.capture, m_options.speed);
    m_line.StartAgain(AskedOfReceiver(), m_plugin.get());
}

void HostSession::ShowReceiverState()
{
    const bool ready = m_line.Receiver().CurrentState() == ReceiverProcess::State::Ready;
    QString text = m_line.Receiver().StateText();
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
    if (m_plugin) {
        m_plugin->Unload();
        m_plugin.reset();
    }
    m_line.TakeDown();
    m_station.Stop();
}
