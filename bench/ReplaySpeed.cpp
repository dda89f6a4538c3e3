// SPDX-License-Identifier: MIT
// Replays a capture in the window with every view open, at top speed: chunks a second that really come, and how
// long one chunk takes from the codec to the painted views. To be run in a folder of its own, where the logs go.
//
//   ReplaySpeed CAPTURE

#include "base/ProcessState.h"
#include "window/GnssWindow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSettings>
#include <QTimer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <cstdio>

namespace {

void OpenEveryView(GnssWindow& window)
{
    for (QTreeWidgetItemIterator item(window.findChild<QTreeWidget*>()); *item != nullptr; ++item) {
        if ((*item)->childCount() == 0) {
            window.SlotCtrlPanelItemClicked(*item, 0);
        }
    }
    window.SlotTileWindows();
}

void Choose(const QString& capture)
{
    if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(capture);
        QMetaObject::invokeMethod(dialog, "accept");
    }
}

bool Start(GnssWindow& window, const QString& capture)
{
    QTimer::singleShot(500, &window, [&] { Choose(capture); });
    window.SlotReplayAction();
    return Global::replayRunning;
}

/// The one timer of the window that runs while a replay plays and no port is open.
QTimer* ReplayTimer(const GnssWindow& window)
{
    const QList<QTimer*> timers = window.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    const auto found =
        std::find_if(timers.begin(), timers.end(), [](const QTimer* timer) { return timer->isActive(); });
    return found != timers.end() ? *found : nullptr;
}

void Tell(const char* what, int ticks, const QElapsedTimer& clock)
{
    // The last tick sends nothing.
    const double seconds = static_cast<double>(clock.nsecsElapsed()) / 1e9;
    std::printf("%s: %d chunks in %s s, %s a second\n", what, ticks - 1,
                qPrintable(QString::number(seconds, 'f', 2)),
                qPrintable(QString::number((ticks - 1) / seconds, 'f', 1)));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 2) {
        std::fputs("usage: ReplaySpeed CAPTURE\n", stderr);
        return 2;
    }
    const QString capture = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(QStringLiteral("Source-Datas/bin/config"));
    QSettings(QStringLiteral("Source-Datas/bin/config/language.ini"), QSettings::IniFormat)
        .setValue(QStringLiteral("LanguageSetting/Language"), 2);
    GnssWindow window(QStringLiteral("Gnss"), 0, nullptr);
    window.resize(1500, 900);
    window.show();
    OpenEveryView(window);
    QApplication::processEvents();
    std::printf("%d views open\n", qobject_cast<QMdiArea*>(window.centralWidget())->subWindowList().size());

    window.SlotChangeReplaySpeed(QStringLiteral("60"));
    if (!Start(window, capture)) {
        std::fputs("ReplaySpeed: the capture cannot be replayed\n", stderr);
        return 1;
    }
    int ticks = 0;
    QElapsedTimer clock;
    const QMetaObject::Connection counter =
        QObject::connect(ReplayTimer(window), &QTimer::timeout, &window, [&] { ++ticks; });
    clock.start();
    while (Global::replayRunning) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    Tell("at top speed", ticks, clock);
    QObject::disconnect(counter);

    // Without the timer: one chunk and all the painting that it causes, then the next.
    window.SlotChangeReplaySpeed(QStringLiteral("0.25"));
    Start(window, capture);
    ticks = 0;
    clock.start();
    while (Global::replayRunning) {
        window.SlotSendReplayData();
        QApplication::processEvents();
        ++ticks;
    }
    Tell("without waiting", ticks, clock);
    return 0;
}
