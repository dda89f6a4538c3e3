// SPDX-License-Identifier: MIT
// Figures of the whole window over the open codec, each beside what a user could do instead in the same run:
//
//   WindowBench tick FILE...     CPU time of one 10 ms tick at 100 kB/s with the default views, beside a bare
//                                QSerialPort poll of the same line with the same data
//   WindowBench views RECEIVER [PICTURE]
//                                share of a core with all twelve views open and shown, tiled, at 10 Hz from the
//                                virtual receiver, beside a bare poll of the same kind; saves what it shows
//   WindowBench send RECEIVER    time from a click on "send" to the words in the status log, 100 times, beside
//                                the poll period
//
// It runs in the folder of the program, whose Source-Datas/bin holds the codec.

#include "base/ProcessState.h"
#include "views/log/NMEAViewWin.h"
#include "window/GnssWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int chunkBytes = 1000;
constexpr int chunkMs = 10;
constexpr int measureMs = 10000;

double CpuSeconds()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

void RunLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// A child process that writes the data to the far end of a pseudo-terminal, 1000 bytes every 10 ms.
class Feeder {
public:
    explicit Feeder(const QByteArray& data)
    {
        m_master = posix_openpt(O_RDWR | O_NOCTTY);
        grantpt(m_master);
        unlockpt(m_master);
        char name[128] = {};
        ptsname_r(m_master, name, sizeof(name));
        path = QString::fromLatin1(name);
        m_slave = open(name, O_RDWR | O_NOCTTY);
        termios settings = {};
        tcgetattr(m_slave, &settings);
        cfmakeraw(&settings);
        tcsetattr(m_slave, TCSANOW, &settings);
        m_child = fork();
        if (m_child == 0) {
            int at = 0;
            for (;;) {
                const QByteArray chunk = data.mid(at, chunkBytes);
                if (write(m_master, chunk.constData(), static_cast<size_t>(chunk.size())) < 0) {
                    _exit(0);
                }
                at = at + chunkBytes >= data.size() ? 0 : at + chunkBytes;
                usleep(chunkMs * 1000);
            }
        }
    }
    ~Feeder()
    {
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
        close(m_slave);
        close(m_master);
    }
    Feeder(const Feeder&) = delete;
    Feeder& operator=(const Feeder&) = delete;

    QString path;

private:
    int m_master = -1;
    int m_slave = -1;
    pid_t m_child = -1;
};

double BarePollCpu(const QByteArray& data)
{
    const Feeder feeder(data);
    QSerialPort port;
    port.setPortName(feeder.path);
    port.setBaudRate(115200);
    if (!port.open(QIODevice::ReadWrite)) {
        return -1;
    }
    qint64 bytes = 0;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, [&] { bytes += port.readAll().size(); });
    timer.start(chunkMs);
    RunLoop(1000);
    bytes = 0;
    const double before = CpuSeconds();
    RunLoop(measureMs);
    const double used = CpuSeconds() - before;
    std::printf("bare poll: %.1f kB/s, %.3f %% of a core\n", static_cast<double>(bytes) / measureMs,
                used * 100e3 / measureMs);
    return used;
}

double WindowCpu(const QByteArray& data, bool shown)
{
    const Feeder feeder(data);
    GnssWindow window(QStringLiteral("bench"), 0, nullptr);
    window.resize(1600, 1000);
    if (shown) {
        window.show();
    }
    window.SlotChangePort(feeder.path);
    window.SlotSwitchPort();
    RunLoop(1000);
    const double before = CpuSeconds();
    RunLoop(measureMs);
    const double used = CpuSeconds() - before;
    std::printf("window with the default views%s: %.3f %% of a core\n", shown ? ", shown" : ", hidden",
                used * 100e3 / measureMs);
    return used;
}

int BenchTick(const QStringList& files)
{
    QByteArray data;
    for (const QString& name : files) {
        QFile file(name);
        if (file.open(QIODevice::ReadOnly)) {
            data += file.readAll();
        }
    }
    if (data.isEmpty()) {
        std::fprintf(stderr, "no data to feed\n");
        return 1;
    }
    const double bare = BarePollCpu(data);
    const double hidden = WindowCpu(data, false);
    const double shown = WindowCpu(data, true);
    const double ticks = static_cast<double>(measureMs) / chunkMs;
    std::printf("one tick: bare %.3f ms, window hidden %.3f ms (%.2f times), shown %.3f ms (%.2f times)\n",
                bare / ticks * 1e3, hidden / ticks * 1e3, hidden / bare, shown / ticks * 1e3, shown / bare);
    return 0;
}

/// Opens every view of the control panel.
void OpenAllViews(GnssWindow& window)
{
    auto* tree = window.findChild<QTreeWidget*>();
    for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
        window.SlotCtrlPanelItemClicked(*it, 0);
    }
    auto* area = qobject_cast<QMdiArea*>(window.centralWidget());
    area->tileSubWindows();
    std::printf("%d views open\n", static_cast<int>(area->subWindowList().size()));
}

int BenchViews(const QString& receiver, const QString& picture)
{
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("receiver"));
    QProcess process;
    process.start(receiver, {QStringLiteral("--link"), link, QStringLiteral("--rate"), QStringLiteral("10"),
                             QStringLiteral("--memory"), QStringLiteral("kept"), QStringLiteral("--track"),
                             QStringLiteral("circle")});
    if (!process.waitForReadyRead(5000)) {
        std::fprintf(stderr, "the receiver does not start\n");
        return 1;
    }
    double bare = 0;
    {
        QSerialPort port;
        port.setPortName(link);
        if (!port.open(QIODevice::ReadWrite)) {
            return 1;
        }
        qint64 bytes = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] { bytes += port.readAll().size(); });
        timer.start(chunkMs);
        RunLoop(1000);
        const double before = CpuSeconds();
        RunLoop(measureMs);
        bare = CpuSeconds() - before;
        std::printf("bare poll: %.1f kB/s, %.2f %% of a core\n", static_cast<double>(bytes) / (measureMs + 1000),
                    bare * 100e3 / measureMs);
    }
    GnssWindow window(QStringLiteral("bench"), 0, nullptr);
    window.resize(1920, 1080);
    window.show();
    OpenAllViews(window);
    window.SlotChangePort(link);
    window.SlotSwitchPort();
    RunLoop(3000);
    const double before = CpuSeconds();
    RunLoop(measureMs);
    const double used = CpuSeconds() - before;
    std::printf("all views, 10 Hz: %.2f %% of a core (%.1f times the bare poll)\n", used * 100e3 / measureMs,
                used / bare);
    if (!picture.isEmpty() && !window.grab().save(picture)) {
        std::fprintf(stderr, "%s cannot be written\n", qPrintable(picture));
        return 1;
    }
    process.terminate();
    process.waitForFinished();
    return 0;
}

int BenchSend(const QString& receiver)
{
    constexpr int sends = 100;
    QTemporaryDir folder;
    const QString link = folder.filePath(QStringLiteral("receiver"));
    QProcess process;
    process.start(receiver, {QStringLiteral("--link"), link, QStringLiteral("--idle")});
    if (!process.waitForReadyRead(5000)) {
        std::fprintf(stderr, "the receiver does not start\n");
        return 1;
    }
    GnssWindow window(QStringLiteral("bench"), 0, nullptr);
    window.show();
    window.SlotChangePort(link);
    window.SlotSwitchPort();
    auto* send = window.findChild<QAbstractButton*>(QStringLiteral("send"));
    auto* log = window.findChild<QTextEdit*>();
    std::vector<double> times;
    for (int i = 0; i < sends; ++i) {
        RunLoop(37); // no fixed phase to the poll
        log->clear();
        QElapsedTimer clock;
        clock.start();
        send->click();
        if (log->toPlainText().isEmpty()) {
            std::fprintf(stderr, "no words came\n");
            return 1;
        }
        times.push_back(static_cast<double>(clock.nsecsElapsed()) * 1e-6);
    }
    std::sort(times.begin(), times.end());
    std::printf("click to words, %d sends: median %.2f ms, p90 %.2f ms, max %.2f ms; median / 10 ms poll = %.2f\n",
                sends, times[sends / 2], times[sends * 9 / 10], times.back(), times[sends / 2] / chunkMs);
    process.terminate();
    process.waitForFinished();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() > 2 && arguments.at(1) == QLatin1String("tick")) {
        return BenchTick(arguments.mid(2));
    }
    if (arguments.size() == 3 && arguments.at(1) == QLatin1String("send")) {
        return BenchSend(arguments.at(2));
    }
    if (arguments.size() > 2 && arguments.at(1) == QLatin1String("views")) {
        return BenchViews(arguments.at(2), arguments.value(3));
    }
    std::fprintf(stderr, "usage: WindowBench tick FILE... | views RECEIVER [PICTURE] | send RECEIVER\n");
    return 2;
}
