#include "FileDialogAnswerer.h"
#include "LogCatcher.h"
#include "Pty.h"
#include "WindowTest.h"

#include "widgets/MyButton.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QSerialPort>

#include <ctime>

namespace {

QString FileName(const Pty& pty)
{
    return pty.path.mid(pty.path.lastIndexOf('/') + 1);
}

} // namespace

class TestWindowSerial : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void WithNoPortAClickWarnsAndStartsNothing()
    {
        WindowTest test;
        if (!Global::currentPortName.isEmpty()) {
            QSKIP("this machine has serial ports");
        }
        BoxAnswerer answerer;
        test.window->SlotSwitchPort();
        QCOMPARE(answerer.boxes, QStringList{"GNSS|当前无可用串口，请检查串口连接状态"});
        QVERIFY(!Global::serialOpen);
        QVERIFY(test.Status().isEmpty());
    }

    void APortThatCannotBeOpenedWarns()
    {
        WindowTest test(0, 2, "/no/such/port");
        BoxAnswerer answerer;
        const LogCatcher log;
        test.window->SlotChangePort("/no/such/port");
        test.window->SlotSwitchPort();
        QCOMPARE(answerer.boxes, QStringList{"GNSS|/no/such/port open failed, please check com is busy or exist"});
        QVERIFY(!Global::serialOpen);
        // The poll runs on over a closed port, quietly.
        QTest::qWait(50);
        QVERIFY(log.Lines().filter("not open").isEmpty());
        QVERIFY(test.RawCaptures().isEmpty());
    }

    void BytesGoToFileCodecAndHexView()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        test.Click("十六进制视图");
        test.window->SlotChangePort(pty.path);
        test.window->SlotSwitchPort();
        QVERIFY(Global::serialOpen);
        QCOMPARE(test.Status(), QStringList{"打开串口 " + pty.path});
        QCOMPARE(test.RawCaptures().size(), 1);
        QVERIFY(test.RawCaptures().first().contains('/' + FileName(pty) + '_'));

        const QByteArray bytes = QByteArray::fromHex("24470d0a00ff7e04efbbbf");
        pty.Write(bytes);
        QTRY_COMPARE(test.Content(test.RawCaptures().first()), bytes);
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssDecode 11"));
        QCOMPARE(test.SubWindow("HexViewWin")->findChild<QPlainTextEdit*>()->toPlainText(),
                 QStringLiteral("24 47 0d 0a 00 ff 7e 04 ef bb bf                | $G....~...."));

        test.window->SlotSwitchPort();
        QVERIFY(!Global::serialOpen);
        QCOMPARE(test.Status().last(), "关闭串口 " + pty.path);
        pty.Write("lost");
        QTest::qWait(40);
        QCOMPARE(test.Content(test.RawCaptures().first()), bytes);
    }

    void SendingGoesToThePortOrWarns()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        uint8_t frame[] = {0x7e, 0x04, 0x00, 0x7e};
        {
            BoxAnswerer answerer;
            test.window->SlotSendPackets(frame, 4);
            test.window->SlotSendHexData("x");
            QCOMPARE(answerer.boxes, (QStringList{"GNSS|Please open port before send packet!",
                                                  "GNSS|Please open port before send packet!"}));
            // What the codec sends and the wake-up never warn.
            FakeCodec::Emit(501, "dropped");
            FakeCodec::Emit(500, nullptr, 0);
            QTest::qWait(20);
            QCOMPARE(answerer.boxes.size(), 2);
        }
        test.window->SlotChangePort(pty.path);
        test.window->SlotSwitchPort();
        BoxAnswerer answerer;
        test.window->SlotSendPackets(frame, 0);
        test.window->SlotSendPackets(frame, -1);
        test.window->SlotSendPackets(frame, 4);
        FakeCodec::Emit(501, "codec");
        test.window->SlotSendHexData("hex");
        QCOMPARE(pty.Read(12), QByteArray("\x7e\x04\0\x7e", 4) + "codechex");
        QVERIFY(answerer.boxes.isEmpty());
    }

    void TheWakeUpGoesAtItsRateAndTheLinkComesBack()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        test.window->SlotChangePort(pty.path);
        test.window->SlotChangeBaudRate("9600");
        test.window->SlotSwitchPort();
        const LogCatcher log;
        FakeCodec::Emit(500, nullptr, 0);
        QCOMPARE(pty.Read(1), QByteArray(1, '\0'));
        QVERIFY(log.Lines().contains("GnssCbType::CB_SLEEP_WAKEUP"));
        const QStringList sent =
            log.Lines().filter(QRegularExpression("^send 0x00 time:\\d\\d:\\d\\d:\\d\\d\\.\\d{3}$"));
        QCOMPARE(sent.size(), 1);
        // The far end shares the line's settings.
        const int line = ::open(pty.path.toLatin1().constData(), O_RDWR | O_NOCTTY);
        termios settings = {};
        QCOMPARE(tcgetattr(line, &settings), 0);
        ::close(line);
        QCOMPARE(cfgetospeed(&settings), static_cast<speed_t>(B9600));
    }

    void ChangingThePortWhileOpenStartsANewCapture()
    {
        Pty first;
        Pty second;
        WindowTest test(0, 2, first.path + ':' + second.path);
        test.window->SlotChangePort(first.path);
        test.window->SlotSwitchPort();
        test.window->SlotChangePort(first.path);
        QCOMPARE(test.RawCaptures().size(), 1);
        test.window->SlotChangePort(second.path);
        QCOMPARE(test.Status().last(), "串口切换至 " + second.path);
        second.Write("two");
        const QString pattern = '/' + FileName(second) + '_';
        QTRY_COMPARE(test.Content(test.RawCaptures().filter(pattern).value(0)), QByteArray("two"));
        QCOMPARE(test.RawCaptures().size(), 2);
    }

    void ThePortMenuGreysForeignPortsOnly()
    {
        Pty own;
        Pty foreign;
        WindowTest test(0, 2, own.path + ':' + foreign.path);
        QSerialPort other;
        other.setPortName(foreign.path);
        QVERIFY(other.open(QIODevice::ReadWrite));
        test.window->SlotChangePort(own.path);
        test.window->SlotSwitchPort();
        test.window->SlotUpdatePortInfo();
        auto* button = qobject_cast<MyButton*>(test.Button("选择串口号"));
        QVERIFY(button != nullptr);
        const QList<QAction*> actions = button->menu()->actions();
        QStringList enabled;
        QStringList disabled;
        for (const QAction* action : actions) {
            (action->isEnabled() ? enabled : disabled).append(action->text());
            QCOMPARE(action->isChecked(), action->text() == own.path);
        }
        QVERIFY(enabled.contains(own.path));
        QVERIFY(disabled.contains(foreign.path));
        // The scan has not disturbed the live link.
        own.Write("alive");
        QTRY_COMPARE(test.Content(test.RawCaptures().first()), QByteArray("alive"));
    }

    void APulledCableNeitherCrashesNorSpins()
    {
        auto pty = std::make_unique<Pty>();
        WindowTest test(0, 2, pty->path);
        test.window->SlotChangePort(pty->path);
        test.window->SlotSwitchPort();
        pty->Write("last words");
        pty->Unplug();
        QTest::qWait(50);
        const std::clock_t before = std::clock();
        QTest::qWait(500);
        const double cpuSeconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        QVERIFY2(cpuSeconds < 0.2, qPrintable(QString::number(cpuSeconds)));
        QVERIFY(Global::serialOpen);
        uint8_t byte = 1;
        test.window->SlotSendPackets(&byte, 1);
        QTest::qWait(30);
        test.window->SlotSwitchPort();
        QVERIFY(!Global::serialOpen);
        // The same window opens another line.
        Pty again;
        test.window->SlotChangePort(again.path);
        test.window->SlotSwitchPort();
        again.Write("back");
        QTRY_COMPARE(test.Content(test.RawCaptures().filter('/' + FileName(again) + '_').last()),
                     QByteArray("back"));
    }

    void AnUnwritableCaptureDirectoryLosesOnlyTheFile()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        QFile blocker(QCoreApplication::applicationDirPath() + "/GnssData");
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        const LogCatcher log;
        test.window->SlotChangePort(pty.path);
        test.window->SlotSwitchPort();
        QVERIFY(log.Lines().contains("Create GnssData file failed!"));
        pty.Write("abc");
        QTRY_COMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssDecode 3"));
        blocker.remove();
    }

    void AChosenFolderTakesTheNextCaptures()
    {
        Pty pty;
        WindowTest test(0, 2, pty.path);
        QVERIFY(QDir().mkpath("chosen"));
        const QDir chosen("chosen");
        test.window->SlotChangePort(pty.path);
        {
            // Chosen while the port is closed: nothing is made yet.
            const FileDialogAnswerer answerer({chosen.absolutePath()});
            test.window->SlotSaveBtnClicked();
            QCOMPARE(answerer.title, QStringLiteral("Selecting a path for saving serial port data."));
        }
        QVERIFY(chosen.entryList(QDir::Files).isEmpty());
        test.window->SlotSwitchPort();
        QCOMPARE(chosen.entryList(QDir::Files).size(), 1);
        QVERIFY(!QDir(QCoreApplication::applicationDirPath() + "/GnssData").exists());
        pty.Write("first");
        QTRY_COMPARE(test.Content(chosen.filePath(chosen.entryList(QDir::Files).first())), QByteArray("first"));
        {
            // Chosen while it is open: another capture begins at once.
            const FileDialogAnswerer answerer({chosen.absolutePath()});
            test.window->SlotSaveBtnClicked();
        }
        QCOMPARE(chosen.entryList(QDir::Files).size(), 2);
        {
            // Cancelled: the present capture runs on, the next opening is in the default folder again.
            const FileDialogAnswerer answerer({});
            test.window->SlotSaveBtnClicked();
        }
        QCOMPARE(chosen.entryList(QDir::Files).size(), 2);
        QVERIFY(test.RawCaptures().isEmpty());
        test.window->SlotSwitchPort();
        test.window->SlotSwitchPort();
        QCOMPARE(chosen.entryList(QDir::Files).size(), 2);
        QCOMPARE(test.RawCaptures().size(), 1);
    }

    void TheWindowMayGoWhileABoxOrADialogIsOpen()
    {
        WindowTest test(0, 2, "/no/such/port");
        QTimer timer;
        connect(&timer, &QTimer::timeout, [&test] {
            if (QApplication::activeModalWidget() != nullptr) {
                test.window.reset();
            }
        });
        timer.start(5);
        GnssWindow* window = test.window.get();
        window->SlotSaveBtnClicked();
        QVERIFY(test.window == nullptr);

        test.window = std::make_unique<GnssWindow>("Gnss", 0, nullptr);
        test.window->SlotChangePort("/no/such/port");
        test.Button("选择串口号")->findChild<QPushButton*>()->click();
        QVERIFY(test.window == nullptr);

        uint8_t byte = 1;
        test.window = std::make_unique<GnssWindow>("Gnss", 0, nullptr);
        window = test.window.get();
        window->SlotSendPackets(&byte, 1);
        QVERIFY(test.window == nullptr);
    }

    void ASecondWindowStartsFromTheDefaults()
    {
        WindowTest test;
        test.window->SlotChangeBaudRate("9600");
        test.window = std::make_unique<GnssWindow>("Gnss", 0, nullptr);
        QCOMPARE(Global::currentBaudRate, 115200U);
        auto* button = qobject_cast<MyButton*>(test.Button("选择波特率"));
        QVERIFY(button != nullptr);
        QCOMPARE(button->Inner()->text(), QStringLiteral("115200"));
    }
};

QTEST_MAIN(TestWindowSerial)
#include "tst_window_serial.moc"
