#include "BoxAnswerer.h"
#include "FakeChip.h"
#include "FileDialogAnswerer.h"
#include "ImageFile.h"
#include "LogCatcher.h"

#include "main/AckWait.h"
#include "main/PortList.h"
#include "main/ProcessState.h"
#include "production/FirmwareLoad.h"
#include "production/VersionLoad.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSerialPort>
#include <QTextEdit>

namespace {

const char version[] = "\x06.$GNTXT,V7*4A\r\n";

/// The firmware window on a port.
class Dialog {
public:
    explicit Dialog(const QString& port, const QString& image = QString())
    {
        qputenv("GNSS_SERIAL_PORTS", port.toLocal8Bit());
        window = new VersionLoad;
        window->Prepare();
        window->findChild<QComboBox*>()->setCurrentText(port.section(':', 0, 0));
        window->findChild<QLineEdit*>()->setText(image);
    }
    ~Dialog() { delete window; }
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    QStringList Log() const { return window->findChild<QTextEdit*>()->toPlainText().split('\n'); }
    QString Progress() const
    {
        const QList<QLabel*> labels = window->findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            if (label->text().startsWith("加载进度")) {
                return label->text();
            }
        }
        return {};
    }
    QStringList Ports() const
    {
        const auto* box = window->findChild<QComboBox*>();
        QStringList ports;
        for (int i = 0; i < box->count(); ++i) {
            ports.append(box->itemText(i));
        }
        return ports;
    }

    QPointer<VersionLoad> window;
};

/// A load without its waits.
class QuickLoad {
public:
    QuickLoad(FakeChip& chip, const FirmwareLoadRules& rules) : load(&owner, port, rules)
    {
        port.setPortName(chip.pty.path);
        port.open(QIODevice::ReadWrite);
        load.log = [this](const QString& line) { log.append(line); };
        load.progress = [this](int percent) { progress.append(percent); };
        // As long as the far end needs, and not longer: a busy machine takes its time.
        load.pump = [this, &chip](int milliseconds) {
            waits.append(milliseconds);
            if (milliseconds == FirmwareLoad::messageWaitMs) {
                (void)QTest::qWaitFor([&] { return chip.messages.size() > m_seen; }, farEndMs);
            }
            m_seen = chip.messages.size();
            (void)QTest::qWaitFor([&] { return port.bytesAvailable() > 0; }, farEndMs);
        };
    }

    QObject owner;
    QSerialPort port;
    FirmwareLoad load;
    QStringList log;
    QList<int> progress;
    QList<int> waits;

private:
    static constexpr int farEndMs = 300;
    int m_seen = 0;
};

} // namespace

class TestFirmwareLoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheWindowIsAsItIsDrawn()
    {
        FakeChip chip;
        const Dialog dialog(chip.pty.path);
        QCOMPARE(dialog.window->windowTitle(), QStringLiteral("固件加载"));
        QCOMPARE(dialog.window->size(), QSize(400, 400));
        QCOMPARE(dialog.window->windowModality(), Qt::ApplicationModal);
        QStringList texts;
        const QList<QPushButton*> buttons = dialog.window->findChildren<QPushButton*>();
        for (const QPushButton* button : buttons) {
            texts.append(button->text());
            QCOMPARE(button->size(), QSize(75, 21));
        }
        QCOMPARE(texts, (QStringList{"开始烧录", "选择固件"}));
        QCOMPARE(dialog.Progress(), QStringLiteral("加载进度：0%"));
        QVERIFY(dialog.Ports().contains(chip.pty.path));
    }

    void AnImageIsPlayedRecordByRecord()
    {
        const ImageFile image("record \"one\"\nempty\nrecord hex 00 01\nquit \"x\"\nrecord \"never sent\"\n");
        FakeChip chip;
        chip.onMessage = [&](const QByteArray& message) {
            chip.pty.Write(message.startsWith("QUIT ") ? QByteArray(version) : QByteArray("CG\x06"));
        };
        Dialog dialog(chip.pty.path, image.path);
        QStringList progress;
        QTimer watch;
        connect(&watch, &QTimer::timeout, [&] {
            if (progress.isEmpty() || progress.last() != dialog.Progress()) {
                progress.append(dialog.Progress());
            }
        });
        watch.start(20);
        const LogCatcher debug;
        QElapsedTimer clock;
        clock.start();
        dialog.window->SlotStartLoadVersion();
        QVERIFY(clock.elapsed() >= 3 * FirmwareLoad::messageWaitMs + FirmwareLoad::versionWaitMs);
        QCOMPARE(chip.messages, (QList<QByteArray>{"one", QByteArray("\0\1", 2), "QUIT x"}));
        QCOMPARE(progress, (QStringList{"加载进度：0%", "加载进度：33%", "加载进度：66%"}));
        QCOMPARE(dialog.Log(), (QStringList{"固件加载成功", "当前固件版本：$GNTXT,V7*4A"}));
        QVERIFY(LogCatcher::Lines().contains("当前固件版本：$GNTXT,V7*4A"));
        QVERIFY(ProbePort(chip.pty.path));
    }

    void LoadsEndAsTheirImageAndTheirAnswersSay_data()
    {
        QTest::addColumn<QByteArray>("description");
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<int>("sent");
        QTest::addColumn<QStringList>("log");
        const QStringList noVersion = {"", "固件加载成功", "当前固件版本：" + QString(QChar(0))};
        QTest::newRow("no header") << QByteArray("raw \"x\"\ncut 3") << QByteArray("C") << 0
                                   << QStringList{"读取版本号失败，请确认固件选择是否正确"};
        QTest::newRow("header only") << QByteArray() << QByteArray("C") << 0 << noVersion;
        QTest::newRow("bare end") << QByteArray("quit") << QByteArray("\x15") << 1 << noVersion;
        QTest::newRow("almost an end") << QByteArray("record \"QUIT\"") << QByteArray("G") << 1 << noVersion;
        QTest::newRow("wrong byte") << QByteArray("record \"a\"\nrecord \"b\"\nquit") << QByteArray("C\x15\xfa")
                                    << 1
                                    << QStringList{"固件加载失败，ACK值为43 15 FA", "ACK处理异常",
                                                   "固件加载失败，完成0/1条"};
        QTest::newRow("no answer") << QByteArray("record \"a\"") << QByteArray() << 1
                                   << QStringList{"串口读取ACK数据失败", "ACK处理异常",
                                                  "固件加载失败，完成0/-1条"};
        QTest::newRow("half a length") << QByteArray("record \"a\"\nraw hex 05") << QByteArray("C") << 1
                                       << QStringList{"串口读取ACK数据失败", "ACK处理异常",
                                                      "固件加载失败，完成1/0条"};
        QTest::newRow("half a record") << QByteArray("length 9\nrecord \"abc\"") << QByteArray() << 1
                                       << QStringList{"串口读取ACK数据失败", "ACK处理异常",
                                                      "固件加载失败，完成0/-1条"};
    }

    void LoadsEndAsTheirImageAndTheirAnswersSay()
    {
        QFETCH(QByteArray, description);
        QFETCH(QByteArray, answer);
        QFETCH(int, sent);
        QFETCH(QStringList, log);
        const ImageFile image(description);
        FakeChip chip;
        if (!answer.isEmpty()) {
            chip.AnswerWith(answer);
        }
        QuickLoad quick(chip, kDialogLoadRules);
        const bool good = log.contains("固件加载成功");
        QCOMPARE(quick.load.Run(image.path), good ? FirmwareLoadOutcome::Loaded : FirmwareLoadOutcome::Failed);
        QCOMPARE(quick.log, log);
        QCOMPARE(chip.messages.size(), sent);
    }

    void TheRulesTellTheWindowsApart()
    {
        const ImageFile image("quit");
        const auto run = [&](const FirmwareLoadRules& rules, const QByteArray& reply, QStringList& log) {
            FakeChip chip;
            chip.onMessage = [&](const QByteArray&) { chip.pty.Write(reply); };
            QuickLoad quick(chip, rules);
            const FirmwareLoadOutcome outcome = quick.load.Run(image.path);
            log = quick.log;
            return outcome;
        };
        QStringList log;
        QCOMPARE(run(kDialogLoadRules, "no version\r\n", log), FirmwareLoadOutcome::Loaded);
        QCOMPARE(log, (QStringList{"", "固件加载成功"}));
        QCOMPARE(run(kStationLoadRules, "no version\r\n", log), FirmwareLoadOutcome::Failed);
        QCOMPARE(log, (QStringList{"", "固件加载成功"}));
        QCOMPARE(run(kStationLoadRules, QByteArray(129, '$'), log), FirmwareLoadOutcome::Failed);
        QCOMPARE(log.last(), QStringLiteral("获取版本号长度异常，长度为129"));
        const LogCatcher debug;
        QCOMPARE(run(kStationLoadRules, version, log), FirmwareLoadOutcome::Loaded);
        QVERIFY(!LogCatcher::Lines().join('\n').contains("当前固件版本"));
    }

    void CountersOfTheStationWrap()
    {
        // 257 records count as 1; the one that fails is the 257th.
        QByteArray description;
        for (int i = 0; i < 257; ++i) {
            description += i == 256 ? "record \"bad\"\n" : i % 64 == 0 ? "record \"a\"\n" : "empty\n";
        }
        const ImageFile image(description);
        for (const bool narrow : {false, true}) {
            FakeChip chip;
            chip.onMessage = [&](const QByteArray& message) { chip.pty.Write(message == "bad" ? "x" : "C"); };
            QuickLoad quick(chip, narrow ? kStationLoadRules : kDialogLoadRules);
            QCOMPARE(quick.load.Run(image.path), FirmwareLoadOutcome::Failed);
            QCOMPARE(quick.log.last(), narrow ? QStringLiteral("固件加载失败，完成4/-1条")
                                              : QStringLiteral("固件加载失败，完成4/255条"));
        }
    }

    void ProgressIsGuardedForTwoRecords()
    {
        const ImageFile image("record \"a\"\nrecord \"b\"\n");
        FakeChip chip;
        chip.AnswerWith("C");
        QuickLoad quick(chip, kDialogLoadRules);
        QCOMPARE(quick.load.Run(image.path), FirmwareLoadOutcome::Loaded);
        QCOMPARE(quick.progress.size(), 2);
        QCOMPARE(quick.waits, (QList<int>{100, 100, 1000}));
        const ImageFile one("record \"a\"\n");
        quick.progress.clear();
        QCOMPARE(quick.load.Run(one.path), FirmwareLoadOutcome::Loaded);
        QCOMPARE(quick.progress, QList<int>{-100});
    }

    void AnAnswerInTwoPartsIsJudgedByTheFirst()
    {
        const ImageFile image("record \"a\"\nrecord \"b\"\nquit");
        FakeChip chip;
        chip.onMessage = [&](const QByteArray& message) {
            if (message == "a") {
                chip.pty.Write("C");
            } else {
                chip.pty.Write(message == "b" ? "xG" : version);
            }
        };
        QuickLoad quick(chip, kDialogLoadRules);
        QCOMPARE(quick.load.Run(image.path), FirmwareLoadOutcome::Failed);
        QVERIFY(quick.log.contains("固件加载失败，ACK值为78 47"));
    }

    void ALongRecordGoesOutWhole()
    {
        const ImageFile image("record random 65535 4\nquit");
        FakeChip chip;
        int received = 0;
        chip.onMessage = [&](const QByteArray& message) {
            received += message.size();
            if (received == 65535) {
                chip.pty.Write("G");
            }
        };
        Dialog dialog(chip.pty.path, image.path);
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(received, 65535 + 5);
        QCOMPARE(dialog.Log().first(), QStringLiteral("固件加载成功"));
    }

    void FilesThatAreNone_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("nothing") << QString();
        QTest::newRow("missing") << QStringLiteral("/nowhere/image.bin");
        QTest::newRow("folder") << QStringLiteral("/tmp");
        QTest::newRow("endless") << QStringLiteral("/dev/zero");
    }

    void FilesThatAreNone()
    {
        QFETCH(QString, path);
        FakeChip chip;
        const Dialog dialog(chip.pty.path, path);
        const BoxAnswerer boxes;
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(boxes.boxes, QStringList{"提示|打开文件失败"});
        QVERIFY(chip.messages.isEmpty());
        QVERIFY(OwnOpenPorts().isEmpty());
    }

    void BusyPortsAreLeftOutAndTold()
    {
        FakeChip chip;
        FakeChip other;
        const Dialog dialog(chip.pty.path + ':' + other.pty.path, "/nowhere");
        QVERIFY(dialog.Ports().contains(chip.pty.path) && dialog.Ports().contains(other.pty.path));
        QSerialPort holder;
        holder.setPortName(chip.pty.path);
        QVERIFY(holder.open(QIODevice::ReadWrite));
        const BoxAnswerer boxes;
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(boxes.boxes, QStringList{"GNSS|" + chip.pty.path + "串口打开失败，请确认串口存在且未被占用"});
        auto* box = dialog.window->findChild<QComboBox*>();
        QTest::mousePress(box, Qt::LeftButton);
        QVERIFY(!dialog.Ports().contains(chip.pty.path) && dialog.Ports().contains(other.pty.path));
        box->hidePopup();
    }

    void OwnOpenPortsAreNeverProbed()
    {
        FakeChip chip;
        const QTemporaryDir folder;
        const QString link = folder.filePath("link");
        QVERIFY(QFile::link(chip.pty.path, link));
        QSerialPort port;
        WatchOwnPort(&port);
        port.setPortName(chip.pty.path);
        QVERIFY(port.open(QIODevice::ReadWrite));
        QVERIFY(!ProbePort(link)); // another name of the same device
        port.close();
        QVERIFY(ProbePort(link));
        QVERIFY(OwnOpenPorts().isEmpty());
    }

    void AWindowMayGoInsideItsOwnLoad_data()
    {
        QTest::addColumn<int>("after");
        QTest::newRow("first message") << 30;
        QTest::newRow("second message") << 150;
        QTest::newRow("version wait") << 800;
    }

    void AWindowMayGoInsideItsOwnLoad()
    {
        QFETCH(int, after);
        const ImageFile image("record \"a\"\nrecord \"b\"\nquit");
        FakeChip chip;
        chip.AnswerWith("C");
        Dialog dialog(chip.pty.path, image.path);
        QTimer::singleShot(after, [&] { delete dialog.window; });
        dialog.window->SlotStartLoadVersion();
        QVERIFY(dialog.window.isNull());
        QVERIFY(ProbePort(chip.pty.path));
    }

    void ALineMayGoInsideALoad()
    {
        const ImageFile image("record \"a\"\nrecord \"b\"\nrecord \"c\"\nquit");
        FakeChip chip;
        chip.onMessage = [&](const QByteArray& message) {
            if (message == "a") {
                chip.pty.Write("C");
            } else {
                chip.pty.Unplug();
            }
        };
        Dialog dialog(chip.pty.path, image.path);
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(dialog.Log().last(), QStringLiteral("固件加载失败，完成1/2条"));
        QVERIFY(OwnOpenPorts().isEmpty());
    }

    void ASecondLoadInsideTheFirstEndsBoth()
    {
        const ImageFile image("record \"a\"\nrecord \"b\"\nquit");
        FakeChip chip;
        chip.AnswerWith("C");
        Dialog dialog(chip.pty.path, image.path);
        QTimer::singleShot(50, [&] { dialog.window->SlotStartLoadVersion(); });
        dialog.window->SlotStartLoadVersion();
        // The inner one closes the port under the outer one.
        QCOMPARE(dialog.Log().filter("固件加载成功").size(), 1);
        QCOMPARE(dialog.Log().last(), QStringLiteral("固件加载失败，完成0/1条"));
    }

    void TheFileDialogKeepsItsFolder()
    {
        const ImageFile image("quit");
        FakeChip chip;
        const Dialog dialog(chip.pty.path);
        {
            const FileDialogAnswerer choice({image.path});
            dialog.window->SlotSelectVersionPath();
            QCOMPARE(choice.title, QStringLiteral("选择文件"));
            QCOMPARE(choice.filters, QStringList{"Bin file(*.bin)"});
            QCOMPARE(choice.directory, QCoreApplication::applicationDirPath());
        }
        QCOMPARE(dialog.window->findChild<QLineEdit*>()->text(), image.path);
        QString folder;
        QTimer cancel;
        connect(&cancel, &QTimer::timeout, [&] {
            if (auto* files = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
                folder = files->directory().absolutePath();
                files->reject();
            }
        });
        cancel.start(5);
        const BoxAnswerer boxes;
        dialog.window->SlotSelectVersionPath();
        QCOMPARE(folder, QFileInfo(image.path).absolutePath());
        QCOMPARE(boxes.boxes, QStringList{"提示|选择路径不存在"});
        QCOMPARE(dialog.window->findChild<QLineEdit*>()->text(), image.path);
    }

    void ChangingThePortCountsOnlyWhenItIsOpen()
    {
        Global::ResetForNewWindow();
        FakeChip chip;
        const Dialog dialog(chip.pty.path);
        dialog.window->SlotChangePort(chip.pty.path);
        QCOMPARE(Global::loaderPortName, chip.pty.path);
        QVERIFY(OwnOpenPorts().isEmpty());
    }
};

QTEST_MAIN(TestFirmwareLoad)
#include "tst_firmwareload.moc"
