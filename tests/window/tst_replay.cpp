// SPDX-License-Identifier: MIT
#include "FileDialogAnswerer.h"
#include "WindowTest.h"

#include "widgets/CustomProgressBar.h"

#include <QPlainTextEdit>
#include <QSlider>
#include <QToolBar>
#include <QTreeWidgetItemIterator>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

/// Sizes of the pieces that the codec has been given.
QList<int> Decoded()
{
    QList<int> sizes;
    for (const QString& call : FakeCodec::Calls().filter(QRegularExpression("^GnssDecode "))) {
        sizes.append(call.mid(11).toInt());
    }
    return sizes;
}

/// Those of the first chunks of a capture.
QList<int> Sizes(int count)
{
    QList<int> sizes;
    for (int i = 0; i < count; ++i) {
        sizes.append(20 + i);
    }
    return sizes;
}

/// The window's replay as a person sees it: the timer is held, and ticks are made by hand.
class ReplayTest : public WindowTest {
public:
    using WindowTest::WindowTest;

    void Start(const QString& path)
    {
        const FileDialogAnswerer dialog({QDir::current().absoluteFilePath(path)});
        window->SlotReplayAction();
        QCOMPARE(dialog.answered, 1);
        lastDirectory = dialog.directory;
    }
    /// Starts a capture of `count` chunks; chunk i has 20 + i bytes.
    void Start(int count)
    {
        QByteArray bytes;
        for (int i = 0; i <= count; ++i) {
            bytes += "$GPGGA," + QByteArray(11 + i, 'x') + "\r\n";
        }
        WriteFile("capture.bin", bytes);
        Start("capture.bin");
        QVERIFY(Global::replayRunning);
    }

    /// Ticks so often, or until the replay ends; how many they were.
    int Tick(int most = 10000) const
    {
        int ticks = 0;
        for (; Global::replayRunning && ticks < most; ++ticks) {
            window->SlotSendReplayData();
        }
        return ticks;
    }

    void Drag(int position) const
    {
        slider->setSliderDown(true);
        slider->setSliderPosition(position);
    }

    /// The interval of the running replay timer, 0 while it is stopped.
    int Interval() const
    {
        for (const QTimer* timer : window->findChildren<QTimer*>()) {
            if (timer->isActive() && qobject_cast<ReplayPlayer*>(timer->parent()) != nullptr) {
                return timer->interval();
            }
        }
        return 0;
    }
    /// How many of the two controls.
    int ControlsShown() const
    {
        auto* tools = window->findChild<QToolBar*>();
        int shown = 0;
        for (QAction* action : tools->actions()) {
            const QWidget* widget = tools->widgetForAction(action);
            shown += action->isVisible() && (widget == bar || widget == pause) ? 1 : 0;
        }
        return shown;
    }

    CustomProgressBar* bar = window->findChild<CustomProgressBar*>();
    QSlider* slider = bar->findChild<QSlider*>();
    QPushButton* pause = Button("暂停/继续");
    QString lastDirectory;
};

} // namespace

class TestWindowReplay : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// One tick more than chunks, each chunk once, and the bar moves without seeking.
    void AReplayRunsToItsEnd()
    {
        for (const int chunks : {1, 7, 150}) {
            ReplayTest test;
            QCOMPARE(test.ControlsShown(), 0);
            for (int run = 1; run <= 2; ++run) {
                test.Start(chunks);
                QCOMPARE(test.ControlsShown(), 2);
                QCOMPARE(test.Interval(), 1000);
                QCOMPARE(test.Tick(), chunks + 1);
                QCOMPARE(Decoded().mid((run - 1) * chunks), Sizes(chunks));
                QCOMPARE(test.ControlsShown(), 0);
                QCOMPARE(test.Interval(), 0);
                QCOMPARE(test.bar->text(), QStringLiteral("0%"));
            }
            QVERIFY(test.RawCaptures().isEmpty());
        }
    }

    void TheDialogRemembersItsFolderAndRefusesWhatIsNoCapture()
    {
        ReplayTest test;
        {
            const FileDialogAnswerer cancelled({});
            test.window->SlotReplayAction();
            QCOMPARE(cancelled.title, QStringLiteral("Select File"));
            QCOMPARE(cancelled.filters, (QStringList{"Text file(*.txt *.log *.bin)", "ALL files(*.*)"}));
            QVERIFY(!cancelled.manyFiles && !Global::replayRunning);
        }
        const BoxAnswerer boxes;
        WriteFile("sub/capture.bin", "$GPGGA,1\r\n$GPRMC,1\r\n");
        test.Start("sub/capture.bin");
        // Something that is there and cannot be read, whoever asks.
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrcpy(address.sun_path, "socket.bin");
        const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        test.Start("socket.bin");
        ::close(socket);
        QCOMPARE(test.lastDirectory, QDir::current().absoluteFilePath("sub"));
        QCOMPARE(boxes.boxes, (QStringList{"GNSS|The playback file is incorrect.\nPlease select the correct file!",
                                           "GNSS|Open file failed!"}));
        QVERIFY(!Global::replayRunning && test.ControlsShown() == 0);
        QCOMPARE(test.Interval(), 0);
    }

    void SpeedAndPauseGoByTheTimerAndTheButtonEndsAReplay()
    {
        ReplayTest test;
        test.window->SlotChangeReplaySpeed("16");
        QCOMPARE(test.Interval(), 0);
        test.Start(10);
        QCOMPARE(test.Interval(), 62);
        test.Tick(4);
        FakeCodec::Emit(700, QByteArray());
        QCOMPARE(Global::firstFixText, QStringLiteral("0s"));
        test.window->SlotChangeReplaySpeed("0.25");
        QCOMPARE(test.Interval(), 4000);
        test.pause->click();
        QCOMPARE(test.Interval(), 0);
        QVERIFY(Global::replayRunning);
        test.window->SlotChangeReplaySpeed("最大速度");
        QCOMPARE(test.Interval(), 0);
        test.pause->click();
        QCOMPARE(test.Interval(), 16);
        test.window->SlotReplayAction();
        QVERIFY(!Global::replayRunning && test.ControlsShown() == 0);
        test.Start(3);
        QCOMPARE(test.Interval(), 16);
        QCOMPARE(test.Tick(), 4);
        QCOMPARE(Decoded(), Sizes(4) + Sizes(3));
    }

    void ASeekComesWithTheRelease()
    {
        ReplayTest test;
        test.Start(200);
        test.Tick(20);
        QCOMPARE(test.bar->text(), QStringLiteral("9%"));
        test.Drag(75);
        test.Tick(10);
        QCOMPARE(test.bar->text(), QStringLiteral("9%"));
        QCOMPARE(Decoded(), Sizes(30));
        test.slider->setSliderDown(false);
        QCOMPARE(test.bar->text(), QStringLiteral("75%"));
        test.Tick(1);
        QCOMPARE(Decoded().last(), 20 + 150);
        QCOMPARE(test.bar->text(), QStringLiteral("75%"));
        QCOMPARE(test.Tick(), 50);
        // While paused it moves the place and nothing else; at the end the next tick ends the replay.
        test.Start(3);
        test.pause->click();
        const int before = Decoded().size();
        test.Drag(100);
        test.slider->setSliderDown(false);
        QCOMPARE(Decoded().size(), before);
        QVERIFY(Global::replayRunning);
        QCOMPARE(test.Interval(), 0);
        QCOMPARE(test.Tick(), 1);
    }

    void AReplayMayEndWhileTheBarIsHeld()
    {
        ReplayTest test;
        test.window->resize(1600, 900);
        test.window->show();
        test.Start(20);
        QTRY_VERIFY(test.slider->isVisible());
        test.Drag(80);
        QCOMPARE(test.Tick(), 21);
        QVERIFY(!test.slider->isSliderDown());
        // The next one starts at its beginning, and its bar moves.
        test.Start(10);
        test.Tick(3);
        QCOMPARE(Decoded(), Sizes(20) + Sizes(3));
        QCOMPARE(test.bar->text(), QStringLiteral("20%"));
        QVERIFY(test.slider->isEnabled());
    }

    void TheWindowMayGoWhileItsDialogIsOpenOrAReplayRuns()
    {
        ReplayTest test;
        {
            const FileDialogAnswerer dialog({}, [&] { test.window.reset(); });
            test.window->SlotReplayAction();
            QVERIFY(!test.window);
        }
        test.Reopen();
        test.window->SlotChangeReplaySpeed("最大速度");
        test.Start(500);
        test.window.reset();
        QVERIFY(!Global::replayRunning);
        QTest::qWait(50);
    }

    /// With the real codec and every view open.
    void RealCapturesFillTheViews()
    {
        const QDir folder(QStringLiteral(GNSS_CAPTURES));
        const QStringList names = folder.entryList({"*.log"});
        if (names.isEmpty()) {
            QSKIP("no captures here");
        }
        WriteFile(FakeCodec::CodecPath(), Content(GNSS_BUILD_BIN "/Source-Datas/bin/GnssUtils.dll"));
        for (const QString& name : names) {
            ReplayTest test(0, 2, QString(), WindowTest::Codec::Own);
            for (QTreeWidgetItemIterator item(test.window->findChild<QTreeWidget*>()); *item != nullptr; ++item) {
                test.window->SlotCtrlPanelItemClicked(*item, 0);
            }
            const BoxAnswerer boxes;
            test.Start(folder.filePath(name));
            const int ggas = Content(folder.filePath(name)).count("GGA");
            QCOMPARE(Global::replayRunning, ggas > 1);
            QVERIFY(test.Tick() >= ggas - 1);
            QVERIFY(!Global::replayRunning);
            const auto* text = test.SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>();
            QVERIFY2(ggas < 2 || text->toPlainText().contains("$G"), qPrintable(name));
        }
        FakeCodec::Remove();
    }
};

QTEST_MAIN(TestWindowReplay)
#include "tst_replay.moc"
