#include "FileDialogAnswerer.h"
#include "Pty.h"
#include "WindowTest.h"

#include "widgets/CustomProgressBar.h"

#include <QPlainTextEdit>
#include <QSlider>
#include <QTimer>
#include <QToolBar>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// A capture of `count` chunks; chunk i has 20 + i bytes.
QByteArray Capture(int count)
{
    QByteArray bytes;
    for (int i = 0; i <= count; ++i) {
        bytes += "$GPGGA," + QByteArray(11 + i, 'x') + "\r\n";
    }
    return bytes;
}

QString Write(const QByteArray& bytes, const QString& name = QStringLiteral("capture.bin"))
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        return QString();
    }
    return QDir::current().absoluteFilePath(name);
}

/// Sizes of the pieces that the codec has been given.
QList<int> Decoded()
{
    QList<int> sizes;
    const QStringList calls = FakeCodec::Calls();
    for (const QString& call : calls) {
        if (call.startsWith("GnssDecode ")) {
            sizes.append(call.mid(11).toInt());
        }
    }
    return sizes;
}

QList<int> Sizes(int count, int from = 0)
{
    QList<int> sizes;
    for (int i = from; i < count; ++i) {
        sizes.append(20 + i);
    }
    return sizes;
}

/// The window's replay as a person sees it: the timer is held, and ticks are made by hand.
class ReplayTest : public WindowTest {
public:
    explicit ReplayTest(const QString& ports = QString()) : WindowTest(0, 2, ports)
    {
        bar = window->findChild<CustomProgressBar*>();
        slider = bar->findChild<QSlider*>();
        pauseButton = Button("暂停/继续");
    }

    void Start(const QString& path)
    {
        FileDialogAnswerer dialog({path});
        window->SlotReplayAction();
        QCOMPARE(dialog.answered, 1);
        lastDirectory = dialog.directory;
    }
    void Start(int chunks)
    {
        Start(Write(Capture(chunks)));
        QVERIFY(Global::replayRunning);
    }

    /// Ticks until the replay ends, and how many they were.
    int TicksToTheEnd() const
    {
        int ticks = 0;
        while (Global::replayRunning && ticks < 10000) {
            window->SlotSendReplayData();
            ++ticks;
        }
        return ticks;
    }
    void Tick(int count) const
    {
        for (int i = 0; i < count; ++i) {
            window->SlotSendReplayData();
        }
    }

    /// The interval of the running replay timer, 0 while it is stopped.
    int Interval() const
    {
        const QList<QTimer*> timers = window->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QTimer* timer : timers) {
            if (timer->isActive()) {
                return timer->interval();
            }
        }
        return 0;
    }
    /// Of both controls, which come and go together.
    bool ControlsShown() const
    {
        const QList<QToolBar*> toolBars = window->findChildren<QToolBar*>();
        for (const QToolBar* toolBar : toolBars) {
            QList<bool> shown;
            const QList<QAction*> actions = toolBar->actions();
            for (QAction* action : actions) {
                const QWidget* widget = toolBar->widgetForAction(action);
                if (widget == bar || widget == pauseButton) {
                    shown.append(action->isVisible());
                }
            }
            if (shown.size() == 2 && shown[0] == shown[1]) {
                return shown[0];
            }
        }
        QTest::qFail("the controls do not agree", __FILE__, __LINE__);
        return false;
    }

    CustomProgressBar* bar = nullptr;
    QSlider* slider = nullptr;
    QPushButton* pauseButton = nullptr;
    QString lastDirectory;
};

} // namespace

class TestWindowReplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void AReplayRunsToItsEnd_data()
    {
        QTest::addColumn<int>("chunks");
        QTest::newRow("1") << 1;
        QTest::newRow("3") << 3;
        QTest::newRow("100") << 100;
        QTest::newRow("150") << 150;
    }

    /// One tick more than chunks, each chunk once, and the bar moves without seeking.
    void AReplayRunsToItsEnd()
    {
        QFETCH(int, chunks);
        ReplayTest test;
        QVERIFY(!test.ControlsShown());
        test.Start(chunks);
        QVERIFY(test.ControlsShown());
        QCOMPARE(test.Interval(), 1000);
        QCOMPARE(test.TicksToTheEnd(), chunks + 1);
        QCOMPARE(Decoded(), Sizes(chunks));
        QVERIFY(!test.ControlsShown());
        QCOMPARE(test.Interval(), 0);
        QCOMPARE(test.bar->text(), QStringLiteral("0%"));
        QVERIFY(WindowTest::RawCaptures().isEmpty());

        test.Start(chunks);
        QCOMPARE(test.TicksToTheEnd(), chunks + 1);
        QCOMPARE(Decoded().size(), 2 * chunks);
    }

    void TheBarShowsTheChunkThatWasSent()
    {
        ReplayTest test;
        test.Start(7);
        QStringList texts;
        for (int i = 0; i < 7; ++i) {
            test.Tick(1);
            texts.append(test.bar->text());
        }
        QCOMPARE(texts, (QStringList{"0%", "14%", "28%", "42%", "57%", "71%", "85%"}));
    }

    void TheDialogRemembersItsFolder()
    {
        ReplayTest test;
        FileDialogAnswerer cancelled({});
        test.window->SlotReplayAction();
        QCOMPARE(cancelled.title, QStringLiteral("Select File"));
        QCOMPARE(cancelled.filters, (QStringList{"Text file(*.txt *.log *.bin)", "ALL files(*.*)"}));
        QVERIFY(!cancelled.manyFiles);
        QVERIFY(!Global::replayRunning);
        QDir().mkdir("sub");
        test.Start(Write(Capture(2), "sub/capture.bin"));
        test.window->SlotReplayAction();
        QVERIFY(!Global::replayRunning);
        test.Start(2);
        QCOMPARE(test.lastDirectory, QDir::current().absoluteFilePath("sub"));
    }

    void WhatHoldsNoChunkIsRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("noise") << QByteArray(3000000, '\xA5');
        QTest::newRow("one GGA at the beginning") << QByteArray("$GPGGA,1\r\n$GPRMC,1\r\n");
    }

    void WhatHoldsNoChunkIsRefused()
    {
        QFETCH(QByteArray, bytes);
        ReplayTest test;
        const BoxAnswerer boxes;
        test.Start(Write(bytes));
        QCOMPARE(boxes.boxes,
                 QStringList{"GNSS|The playback file is incorrect.\nPlease select the correct file!"});
        QVERIFY(!Global::replayRunning && !test.ControlsShown());
        QCOMPARE(test.Interval(), 0);
    }

    void WhatCannotBeOpenedIsRefused()
    {
        ReplayTest test;
        const BoxAnswerer boxes;
        // Something that is there and cannot be read, whoever asks.
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrcpy(address.sun_path, "capture.bin");
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        test.Start(QDir::current().absoluteFilePath("capture.bin"));
        ::close(socket);
        ::unlink("capture.bin");
        QCOMPARE(boxes.boxes, QStringList{"GNSS|Open file failed!"});
        QVERIFY(!Global::replayRunning);
    }

    void TheButtonEndsAReplay()
    {
        ReplayTest test;
        test.Start(10);
        test.Tick(4);
        test.window->SlotPauseBtnClicked();
        test.window->SlotReplayAction();
        QVERIFY(!Global::replayRunning && !test.ControlsShown());
        QCOMPARE(Decoded(), Sizes(4));
        test.Start(3);
        QCOMPARE(test.TicksToTheEnd(), 4);
        QCOMPARE(Decoded(), Sizes(4) + Sizes(3));
    }

    void SpeedAndPauseGoByTheTimer()
    {
        ReplayTest test;
        test.window->SlotChangeReplaySpeed("16");
        QCOMPARE(test.Interval(), 0);
        test.Start(10);
        QCOMPARE(test.Interval(), 62);
        test.window->SlotChangeReplaySpeed("0.25");
        QCOMPARE(test.Interval(), 4000);
        test.pauseButton->click();
        QCOMPARE(test.Interval(), 0);
        QVERIFY(Global::replayRunning);
        test.window->SlotChangeReplaySpeed("最大速度");
        QCOMPARE(test.Interval(), 0);
        test.pauseButton->click();
        QCOMPARE(test.Interval(), 16);
        test.window->SlotReplayAction();
        test.Start(3);
        QCOMPARE(test.Interval(), 16);
    }

    void ASeekComesWithTheRelease()
    {
        ReplayTest test;
        test.Start(200);
        test.Tick(20);
        QCOMPARE(test.bar->text(), QStringLiteral("9%"));
        test.slider->setSliderDown(true);
        test.slider->setSliderPosition(75);
        test.Tick(10);
        QCOMPARE(test.bar->text(), QStringLiteral("9%"));
        QCOMPARE(Decoded(), Sizes(30));
        test.slider->setSliderDown(false);
        QCOMPARE(test.bar->text(), QStringLiteral("75%"));
        test.Tick(1);
        QCOMPARE(Decoded().last(), 20 + 150);
        QCOMPARE(test.bar->text(), QStringLiteral("75%"));
        QCOMPARE(test.TicksToTheEnd(), 50);

        // While paused it moves the place and nothing else; at the end the next tick ends the replay.
        test.Start(3);
        test.pauseButton->click();
        const int before = Decoded().size();
        test.slider->setSliderDown(true);
        test.slider->setSliderPosition(100);
        test.slider->setSliderDown(false);
        QCOMPARE(Decoded().size(), before);
        QVERIFY(Global::replayRunning);
        QCOMPARE(test.Interval(), 0);
        QCOMPARE(test.TicksToTheEnd(), 1);
    }

    void AReplayMayEndWhileTheBarIsHeld()
    {
        ReplayTest test;
        test.window->resize(1600, 900);
        test.window->show();
        test.Start(20);
        test.Tick(10);
        QTRY_VERIFY(test.slider->isVisible());
        test.slider->setSliderDown(true);
        test.slider->setSliderPosition(80);
        QCOMPARE(test.TicksToTheEnd(), 11);
        QCOMPARE(Decoded(), Sizes(20));
        QVERIFY(!test.slider->isSliderDown());
        QCOMPARE(test.bar->text(), QStringLiteral("0%"));

        // The next one starts at its beginning, and its bar moves.
        test.Start(10);
        test.Tick(3);
        QCOMPARE(Decoded(), Sizes(20) + Sizes(3));
        QCOMPARE(test.bar->text(), QStringLiteral("20%"));
        QVERIFY(test.slider->isEnabled());
    }

    void AFirstFixOfAReplayTakesNoTime()
    {
        ReplayTest test;
        test.Start(3);
        test.Tick(1);
        FakeCodec::Emit(700, QByteArray());
        QCOMPARE(Global::firstFixText, QStringLiteral("0s"));
    }

    void AReplayAndALivePortFeedOneCodec()
    {
        Pty pty;
        ReplayTest test(pty.path);
        test.window->SlotChangePort(pty.path);
        test.window->SlotSwitchPort();
        QVERIFY(Global::serialOpen);
        test.Start(3);
        test.Tick(1);
        pty.Write("live\n");
        QTRY_COMPARE(Decoded(), (QList<int>{20, 5}));
        test.Tick(1);
        QCOMPARE(Decoded(), (QList<int>{20, 5, 21}));
        const QStringList raw = WindowTest::RawCaptures();
        QCOMPARE(raw.size(), 1);
        QCOMPARE(WindowTest::Content(raw.first()), QByteArray("live\n"));
    }

    void TheWindowMayGoWhileItsDialogIsOpenOrAReplayRuns()
    {
        ReplayTest test;
        FileDialogAnswerer dialog({}, [&] { test.window.reset(); });
        test.window->SlotReplayAction();
        QVERIFY(!test.window);

        ReplayTest other;
        other.window->SlotChangeReplaySpeed("最大速度");
        other.Start(500);
        other.window.reset();
        QVERIFY(!Global::replayRunning);
        QTest::qWait(50);
    }

    void RealCapturesFillTheViews_data()
    {
        const QDir folder(QStringLiteral(GNSS_CAPTURES));
        const QStringList names = folder.entryList({"*.log"});
        if (names.isEmpty()) {
            QSKIP("no captures here");
        }
        QTest::addColumn<QString>("path");
        for (const QString& name : names) {
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
        }
    }

    /// With the real codec and every view open.
    void RealCapturesFillTheViews()
    {
        QFETCH(QString, path);
        WindowTest::CleanFolders();
        QDir().mkpath(QFileInfo(FakeCodec::CodecPath()).path());
        FakeCodec::Remove();
        QVERIFY(
            QFile::copy(QStringLiteral(GNSS_BUILD_BIN "/Source-Datas/bin/GnssUtils.dll"), FakeCodec::CodecPath()));
        WindowTest::InstallDecoder();
        WindowTest::InstallTree();
        WindowTest::WriteLanguage(2);
        {
            GnssWindow window("Gnss", 0, nullptr);
            auto* tree = window.findChild<QTreeWidget*>();
            for (QTreeWidgetItemIterator item(tree); *item != nullptr; ++item) {
                if ((*item)->childCount() == 0) {
                    window.SlotCtrlPanelItemClicked(*item, 0);
                }
            }
            FileDialogAnswerer dialog({path});
            BoxAnswerer boxes;
            window.SlotReplayAction();
            const QByteArray bytes = WindowTest::Content(path);
            const int ggas = bytes.count("GGA");
            QCOMPARE(Global::replayRunning, ggas > 1);
            int ticks = 0;
            while (Global::replayRunning && ticks < 10000) {
                window.SlotSendReplayData();
                ++ticks;
            }
            QVERIFY(!Global::replayRunning);
            if (ggas > 1) {
                QVERIFY(ticks >= ggas - 1);
                const auto texts = window.findChildren<QPlainTextEdit*>();
                QVERIFY(std::any_of(texts.begin(), texts.end(), [](const QPlainTextEdit* text) {
                    return text->toPlainText().contains("$G");
                }));
            }
        }
        FakeCodec::Remove();
    }
};

QTEST_MAIN(TestWindowReplay)
#include "tst_window_replay.moc"
