// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "FakeChip.h"
#include "FileDialogAnswerer.h"
#include "ImageFile.h"
#include "LogCatcher.h"

#include "line/PortList.h"
#include "production/FirmwareLoad.h"
#include "production/StationPort.h"
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
        const auto shown = std::find_if(labels.begin(), labels.end(),
                                        [](const QLabel* label) { return label->text().startsWith("加载进度"); });
        return shown == labels.end() ? QString() : (*shown)->text();
    }
    bool Offers(const QString& port) const { return window->findChild<QComboBox*>()->findText(port) >= 0; }

    QPointer<VersionLoad> window;
};

/// A load that waits for the far end alone: for each message to arrive, and for what it says to it.
class QuickLoad {
public:
    QuickLoad(FakeChip& chip, const FirmwareLoadRules& rules) : load(&owner, port, rules)
    {
        port.setPortName(chip.pty.path);
        port.open(QIODevice::ReadWrite);
        load.log = [this](const QString& line) { log.append(line); };
        load.progress = [this](int percent) { progress.append(QString::number(percent)); };
        load.pump = [this, &chip](int milliseconds) {
            waits.append(milliseconds);
            if (milliseconds == FirmwareLoad::messageWaitMs) {
                (void)QTest::qWaitFor([&] { return chip.messages.size() > m_seen; }, farEndMs);
                m_seen = chip.messages.size();
            }
            if (chip.said > m_heard) {
                (void)QTest::qWaitFor([&] { return port.bytesAvailable() >= chip.said - m_heard; }, farEndMs);
                m_heard = chip.said;
            }
        };
    }

    QObject owner;
    QSerialPort port;
    FirmwareLoad load;
    QStringList log;
    QStringList progress;
    QList<int> waits;

private:
    static constexpr int farEndMs = 2000;
    int m_seen = 0;
    int m_heard = 0;
};

} // namespace

class TestFirmwareLoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void AWaitEndsWithWhatIsDue()
    {
        bool done = false;
        QTimer::singleShot(0, [&] { done = true; });
        StationWait(0); // a machine that comes back after the end of its wait
        QVERIFY(done);
    }

    void AnImageIsPlayedRecordByRecord()
    {
        const ImageFile image("record \"one\"\nempty\nrecord hex 00 01\nquit \"x\"\nrecord \"never sent\"\n");
        FakeChip chip;
        Dialog dialog(chip.pty.path, image.path);
        QStringList progress;
        chip.onMessage = [&](const QByteArray& message) {
            progress.append(dialog.Progress());
            chip.Say(message.startsWith("QUIT ") ? QByteArray(version) : QByteArray("CG\x06"));
        };
        QElapsedTimer clock;
        clock.start();
        dialog.window->SlotStartLoadVersion();
        QVERIFY(clock.elapsed() >= 3 * FirmwareLoad::messageWaitMs + FirmwareLoad::versionWaitMs);
        QCOMPARE(chip.messages, (QList<QByteArray>{"one", QByteArray("\0\1", 2), "QUIT x"}));
        QCOMPARE(progress, (QStringList{"加载进度：0%", "加载进度：33%", "加载进度：66%"}));
        QCOMPARE(dialog.Log(), (QStringList{"固件加载成功", "当前固件版本：$GNTXT,V7*4A"}));
        QVERIFY(ProbePort(chip.pty.path));
    }

    /// Each message holds its own answer; one that begins with '-' gets none.
    void LoadsEndAsTheirImageAndTheirAnswersSay_data()
    {
        QTest::addColumn<bool>("station");
        QTest::addColumn<QByteArray>("description");
        QTest::addColumn<QString>("log");
        QTest::addColumn<QString>("progress");
        const auto row = [](const char* name, bool station, const QByteArray& description, const QString& log,
                            const char* progress = "") {
            QTest::newRow(name) << station << description << log << QString(progress);
        };
        const QString good = "|固件加载成功";
        const QString nothing = good + "|当前固件版本：" + QChar(0);
        const QString none = "串口读取ACK数据失败|ACK处理异常|固件加载失败，完成%1条";
        const QString wrong = "固件加载失败，ACK值为%1|ACK处理异常|固件加载失败，完成%2条";
        row("no header", false, "raw \"x\"\ncut 3", "读取版本号失败，请确认固件选择是否正确");
        row("header only", false, "", nothing);
        row("bare end", false, "quit", nothing);
        row("almost an end", false, "record \"QUIT\"", wrong.arg("51 55 49 54", "0/-1"));
        row("good", false, "record hex 43 47 06\nempty\nrecord \"G\"\nquit \"$V*12\"",
            good + "|当前固件版本：$V*12", "50 100");
        row("wrong byte", false, "record \"C\"\nrecord hex 43 15 FA\nempty\nquit", wrong.arg("43 15 FA", "1/2"),
            "50");
        row("no answer", false, "record \"-\"", none.arg("0/-1"));
        row("half a length", false, "record \"C\"\nraw hex 05", none.arg("1/0"), "100");
        row("half a record", false, "length 9\nrecord \"-bc\"", none.arg("0/-1"));
        row("one record", false, "record \"C\"", nothing, "-100");
        row("two records", false, "record \"C\"\nrecord \"C\"", nothing, "100 100");
        row("no version", false, "quit \"no version\"", good);
        row("no version, station", true, "quit \"no version\"", good);
        row("long version", true, "quit random 129 1", good + "|获取版本号长度异常，长度为129");
        // 258 records; they count as 2 in 8 bits.
        const QByteArray many = "record \"C\"\n" + QByteArray("empty\n").repeated(256) + "record \"x\"\n";
        row("many records", false, many, wrong.arg("78", "1/256"), "0");
        row("many records, station", true, many, wrong.arg("78", "1/0"), "100");
    }

    void LoadsEndAsTheirImageAndTheirAnswersSay()
    {
        QFETCH(bool, station);
        QFETCH(QByteArray, description);
        QFETCH(QString, log);
        QFETCH(QString, progress);
        const ImageFile image(description);
        FakeChip chip;
        chip.onMessage = [&chip](const QByteArray& message) {
            if (!message.startsWith('-')) {
                chip.Say(message.startsWith("QUIT ") ? message.mid(5) : message);
            }
        };
        QuickLoad quick(chip, station ? kStationLoadRules : kDialogLoadRules);
        const bool good = log.contains(station ? "当前固件版本" : "固件加载成功");
        const LogCatcher debug;
        QCOMPARE(quick.load.Run(image.path), good ? FirmwareLoadOutcome::Loaded : FirmwareLoadOutcome::Failed);
        QCOMPARE(quick.log.join('|'), log);
        QCOMPARE(quick.progress.join(' '), progress);
        QCOMPARE(LogCatcher::Lines().join('|').contains("当前固件版本"), !station && log.contains("当前固件版本"));
        QCOMPARE(quick.waits.count(FirmwareLoad::versionWaitMs), int(log.contains("固件加载成功")));
    }

    void ALongRecordGoesOutWhole()
    {
        const ImageFile image("record random 65535 4\nquit");
        FakeChip chip;
        int received = 0;
        chip.onMessage = [&](const QByteArray& message) {
            received += message.size();
            if (received == 65535) {
                chip.Say("G");
            }
        };
        QuickLoad quick(chip, kDialogLoadRules);
        quick.load.pump = [&, expected = 0](int) mutable {
            expected = expected == 0 ? 65535 : 65535 + 5;
            (void)QTest::qWaitFor([&] { return received >= expected; }, 20000);
        };
        QCOMPARE(quick.load.Run(image.path), FirmwareLoadOutcome::Loaded);
        QCOMPARE(received, 65535 + 5);
    }

    void FilesThatAreNoneAreTold()
    {
        for (const char* path : {"", "/nowhere/image.bin", "/tmp", "/dev/zero"}) {
            FakeChip chip;
            const Dialog dialog(chip.pty.path, path);
            const BoxAnswerer boxes;
            dialog.window->SlotStartLoadVersion();
            QCOMPARE(boxes.boxes, QStringList{"提示|打开文件失败"});
            QVERIFY(chip.messages.isEmpty() && OwnOpenPorts().isEmpty());
        }
    }

    void BusyPortsAreLeftOutAndTold()
    {
        FakeChip chip;
        FakeChip other;
        const QString path = chip.pty.path;
        const Dialog dialog(path + ':' + other.pty.path, "/nowhere");
        QVERIFY(dialog.Offers(path) && dialog.Offers(other.pty.path));
        QSerialPort holder;
        WatchOwnPort(&holder);
        holder.setPortName(path);
        QVERIFY(holder.open(QIODevice::ReadWrite));
        const BoxAnswerer boxes;
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(boxes.boxes, QStringList{"GNSS|" + path + "串口打开失败，请确认串口存在且未被占用"});
        auto* box = dialog.window->findChild<QComboBox*>();
        QTest::mousePress(box, Qt::LeftButton);
        QVERIFY(!dialog.Offers(path) && dialog.Offers(other.pty.path));
        box->hidePopup();
        // Another name of a port that this program has open is not tried.
        const QTemporaryDir folder;
        QVERIFY(QFile::link(path, folder.filePath("link")));
        QVERIFY(!ProbePort(folder.filePath("link")));
        holder.close();
        QVERIFY(ProbePort(folder.filePath("link")));
    }

    void ALineMayGoInsideALoad()
    {
        const ImageFile image("record \"a\"\nrecord \"b\"\nrecord \"c\"\nquit");
        FakeChip chip;
        chip.onMessage = [&](const QByteArray& message) {
            if (message == "a") {
                chip.Say("C");
            } else {
                chip.pty.Unplug();
            }
        };
        Dialog dialog(chip.pty.path, image.path);
        dialog.window->SlotStartLoadVersion();
        QCOMPARE(dialog.Log().last(), QStringLiteral("固件加载失败，完成1/2条"));
        QVERIFY(OwnOpenPorts().isEmpty());
    }

    void TheFileDialogKeepsItsFolder()
    {
        const ImageFile image("quit");
        const Dialog dialog(QString{});
        const FileDialogAnswerer choice({image.path});
        dialog.window->SlotSelectVersionPath();
        QCOMPARE(choice.title + choice.filters.join('|'), QStringLiteral("选择文件Bin file(*.bin)"));
        QCOMPARE(choice.directory, QCoreApplication::applicationDirPath());
        const FileDialogAnswerer cancel({});
        const BoxAnswerer boxes;
        dialog.window->SlotSelectVersionPath();
        QCOMPARE(cancel.directory, QFileInfo(image.path).absolutePath());
        QCOMPARE(boxes.boxes, QStringList{"提示|选择路径不存在"});
        QCOMPARE(dialog.window->findChild<QLineEdit*>()->text(), image.path);
    }

    void AnOpenPortFollowsItsName()
    {
        const ImageFile image("record \"a\"\nquit");
        FakeChip chip;
        FakeChip other;
        Dialog dialog(chip.pty.path, image.path);
        dialog.window->SlotChangePort(chip.pty.path); // closed: nothing is opened
        QVERIFY(OwnOpenPorts().isEmpty());
        chip.AnswerWith("", "a", [&] {
            dialog.window->SlotChangePort(other.pty.path);
            other.Say("C");
        });
        dialog.window->SlotStartLoadVersion();
        QVERIFY(other.messages.contains("QUIT "));
        QVERIFY(OwnOpenPorts().isEmpty());
    }
};

QTEST_MAIN(TestFirmwareLoad)
#include "tst_firmwareload.moc"
