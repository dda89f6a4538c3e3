// SPDX-License-Identifier: MIT
// Figures of the assistance, over the whole road: window, local service, seed decoder, codec and virtual receiver.
//
//   AssistBench [RUNS]    time of a whole offline injection (14 items) and of a whole online one (25 items),
//   beside
//                         the sum of the ACK times of its items, RUNS times (10)
//
// An ACK time runs from the moment at which the window has handed a frame to the port to the moment at which its
// ACK has come in at the window. It runs in the folder of the programs.

#include "assist/AssistOffline.h"
#include "assist/AssistOnline.h"
#include "base/ProcessState.h"
#include "window/GnssWindow.h"

#include "host/app/AssistConfig.h"
#include "host/app/ServiceProcess.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int startMs = 20000;
constexpr int replyMs = 10000;
constexpr double nsPerMs = 1e6;

/// Keeps when frames depart, when their ACKs come in and when the status log was last written to.
class Timed : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const bool result = QApplication::notify(receiver, event);
        if (Global::ackCount != m_count) {
            m_count = Global::ackCount;
            if (departed >= 0) {
                sumNs += clock.nsecsElapsed() - departed;
                departed = -1;
                ++acks;
            }
        }
        return result;
    }

    void Begin()
    {
        clock.start();
        first = departed = -1;
        sumNs = lastLine = 0;
        frames = acks = 0;
    }

    void Depart()
    {
        departed = clock.nsecsElapsed();
        first = first < 0 ? departed : first;
        ++frames;
    }

    QElapsedTimer clock;
    qint64 first = -1;    ///< ns, departure of the first frame
    qint64 departed = -1; ///< ns, of the frame that waits for its ACK
    qint64 sumNs = 0;
    qint64 lastLine = 0; ///< ns
    int frames = 0;
    int acks = 0;

private:
    quint32 m_count = 0;
};

bool Wait(int milliseconds, const std::function<bool()>& done)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return done();
}

void Click(const QWidget& window, const char* name)
{
    window.findChild<QAbstractButton*>(QLatin1String(name))->click();
}

template <typename Window> Window* ToolWindow()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (auto* window = qobject_cast<Window*>(widget)) {
            return window;
        }
    }
    return nullptr;
}

struct Figures {
    std::vector<double> whole;
    std::vector<double> acks;
};

void Take(Figures& figures, double wholeMs, double ackMs)
{
    figures.whole.push_back(wholeMs);
    figures.acks.push_back(ackMs);
}

void Tell(const char* name, int items, const Figures& figures)
{
    std::vector<double> ratios;
    for (std::size_t i = 0; i < figures.whole.size(); ++i) {
        ratios.push_back(figures.whole[i] / figures.acks[i]);
    }
    const auto line = [](const char* what, std::vector<double> values) {
        std::sort(values.begin(), values.end());
        std::printf("  %-18s median %8.2f, %8.2f to %8.2f\n", what, values[values.size() / 2], values.front(),
                    values.back());
    };
    std::printf("%s, %d items, %zu runs\n", name, items, figures.whole.size());
    line("whole, ms", figures.whole);
    line("sum of ACKs, ms", figures.acks);
    line("ratio", ratios);
}

bool StartService(ServiceProcess& service)
{
    const QString folder = QCoreApplication::applicationDirPath();
    service.Start(
        {folder + QStringLiteral("/assist-service"), folder + QStringLiteral("/Source-Datas/assist-service"), {}});
    AssistConfig config;
    config.ca = QStringLiteral("Source-Datas/assist-service/certificate.pem");
    const QString file = AssistConfigFile(folder);
    if (!Wait(startMs, [&service] { return !service.Host().isEmpty(); }) ||
        !ReadServiceCredentials(service.Folder(), config)) {
        return false;
    }
    config.host = service.Host();
    return WriteAssistConfig(file, config) && TrustConfiguredAuthority(file, folder);
}

int Run(Timed& application, int runs)
{
    ServiceProcess service;
    if (!StartService(service)) {
        std::fprintf(stderr, "no service\n");
        return 1;
    }
    const QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("receiver"));
    QProcess receiver;
    receiver.start(QCoreApplication::applicationDirPath() + QStringLiteral("/gnss-receiver"),
                   {QStringLiteral("--link"), link, QStringLiteral("--die-with-parent")});
    qputenv("GNSS_SERIAL_PORTS", link.toLocal8Bit());
    if (!receiver.waitForReadyRead(startMs)) {
        std::fprintf(stderr, "no receiver\n");
        return 1;
    }
    GnssWindow window(QStringLiteral("Gnss"), 0, nullptr);
    window.show();
    window.SlotChangePort(link);
    window.SlotSwitchPort();

    auto* offline = ToolWindow<AssistOffline>();
    auto* online = ToolWindow<AssistOnline>();
    const auto depart = [&application] { application.Depart(); };
    QObject::connect(offline, &AssistOffline::SendMsg, &application, depart, Qt::DirectConnection);
    QObject::connect(online, &AssistOnline::SendMsg, &application, depart, Qt::DirectConnection);
    QObject::connect(window.findChild<QTextEdit*>(), &QTextEdit::textChanged, &application,
                     [&application] { application.lastLine = application.clock.nsecsElapsed(); });

    application.Begin();
    Click(*offline, "Pgnss_Request");
    if (!Wait(replyMs, [&application] { return application.lastLine > 0; })) {
        std::fprintf(stderr, "no seed\n");
        return 1;
    }
    Figures offlineFigures;
    Figures onlineFigures;
    int offlineItems = 0;
    int onlineItems = 0;
    for (int run = 0; run < runs; ++run) {
        application.Begin();
        Click(*offline, "Pgnss_Inject");
        offlineItems = application.acks;
        Take(offlineFigures, static_cast<double>(application.clock.nsecsElapsed()) / nsPerMs,
             static_cast<double>(application.sumNs) / nsPerMs);

        // The time of the request is not in it.
        application.Begin();
        Click(*online, "Agnss_ReqAndInject");
        Wait(replyMs,
             [online, &application] { return application.frames > 0 && online->Counters().totalCount == 0; });
        onlineItems = application.acks;
        Take(onlineFigures, static_cast<double>(application.lastLine - application.first) / nsPerMs,
             static_cast<double>(application.sumNs) / nsPerMs);
    }
    Tell("offline injection", offlineItems, offlineFigures);
    Tell("online injection", onlineItems, onlineFigures);
    receiver.terminate();
    receiver.waitForFinished();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    Timed application(argc, argv);
    const int runs = argc > 1 ? QByteArray(argv[1]).toInt() : 10;
    return runs > 0 ? Run(application, runs) : 2;
}
