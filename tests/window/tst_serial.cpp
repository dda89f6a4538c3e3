// SPDX-License-Identifier: MIT
#include "FileDialogAnswerer.h"
#include "LogCatcher.h"
#include "WindowTest.h"

#include "widgets/MyButton.h"

#include <QPlainTextEdit>
#include <QSerialPort>

#include <ctime>

namespace {

/// The capture of a port.
QString CaptureOf(const WindowTest& test, const Pty& pty)
{
    return test.RawCaptures().filter("GnssData" + pty.path.mid(pty.path.lastIndexOf('/')) + '_').value(0);
}

} // namespace

class TestWindowSerial : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void APortThatIsMissingOrCannotBeOpenedWarns()
    {
        const WindowTest test(0, 2, "/no/such/port");
        const BoxAnswerer answerer;
        const LogCatcher log;
        Global::currentPortName.clear();
        test.window->SlotSwitchPort();
        test.OpenPort("/no/such/port");
        QCOMPARE(answerer.boxes,
                 (QStringList{"GNSS|当前无可用串口，请检查串口连接状态",
                              "GNSS|/no/such/port open failed, please check com is busy or exist"}));
        QVERIFY(!Global::serialOpen);
        // The poll runs on over a closed port, quietly.
        QTest::qWait(50);
        QVERIFY(log.Lines().filter("not open").isEmpty());
        QVERIFY(test.RawCaptures().isEmpty());
        QVERIFY(test.Status().isEmpty());
    }

    void BytesGoToFileCodecAndHexView()
    {
        const LineTest test;
        test.Click("十六进制视图");
        QVERIFY(Global::serialOpen);
        QCOMPARE(test.Status(), QStringList{"打开串口 " + test.path});
        QCOMPARE(test.RawCaptures().size(), 1);

        const QByteArray bytes = QByteArray::fromHex("24470d0a00ff7e04efbbbf");
        test.Write(bytes);
        QTRY_COMPARE(Content(CaptureOf(test, test)), bytes);
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssDecode 11"));
        QCOMPARE(test.SubWindow("HexViewWin")->findChild<QPlainTextEdit*>()->toPlainText(),
                 QStringLiteral("24 47 0d 0a 00 ff 7e 04 ef bb bf                | $G....~...."));

        test.window->SlotSwitchPort();
        QVERIFY(!Global::serialOpen);
        QCOMPARE(test.Status().last(), "关闭串口 " + test.path);
        test.Write("lost");
        QTest::qWait(40);
        QCOMPARE(Content(CaptureOf(test, test)), bytes);
    }

    void SendingGoesToThePortOrWarns()
    {
        const LineTest test;
        const BoxAnswerer answerer;
        uint8_t frame[] = {0x7e, 0x04, 0x00, 0x7e};
        test.window->SlotSendPackets(frame, 0);
        test.window->SlotSendPackets(frame, -1);
        test.window->SlotSendPackets(frame, 4);
        FakeCodec::Emit(501, "codec");
        test.window->SlotSendHexData("hex");
        QCOMPARE(test.Read(12), QByteArray("\x7e\x04\0\x7e", 4) + "codechex");
        QVERIFY(answerer.boxes.isEmpty());
        test.window->SlotSwitchPort();
        test.window->SlotSendPackets(frame, 4);
        test.window->SlotSendHexData("x");
        // What the codec sends and the wake-up never warn.
        FakeCodec::Emit(501, "dropped");
        FakeCodec::Emit(500, nullptr, 0);
        QTest::qWait(20);
        const QString warning = "GNSS|Please open port before send packet!";
        QCOMPARE(answerer.boxes, (QStringList{warning, warning}));
    }

    void TheWakeUpGoesAtItsRateAndTheLinkComesBack()
    {
        LineTest test;
        test.window->SlotChangeBaudRate("9600");
        const LogCatcher log;
        FakeCodec::Emit(500, nullptr, 0);
        QCOMPARE(test.Read(1), QByteArray(1, '\0'));
        QCOMPARE(log.Lines().value(0), QStringLiteral("GnssCbType::CB_SLEEP_WAKEUP"));
        QVERIFY(
            log.Lines().value(1).contains(QRegularExpression("^send 0x00 time:\\d\\d:\\d\\d:\\d\\d\\.\\d{3}$")));
        // The far end shares the line's settings.
        const int line = ::open(qPrintable(test.path), O_RDWR | O_NOCTTY);
        termios settings = {};
        QCOMPARE(tcgetattr(line, &settings), 0);
        ::close(line);
        QCOMPARE(cfgetospeed(&settings), static_cast<speed_t>(B9600));
        // The next window begins at its own.
        test.Reopen();
        QCOMPARE(Global::currentBaudRate, 115200U);
    }

    void ThePortMenuGreysForeignPortsAndChangesTheOpenOne()
    {
        const LineTest test;
        const Pty foreign;
        const Pty second;
        QSerialPort other;
        other.setPortName(foreign.path);
        QVERIFY(other.open(QIODevice::ReadWrite));
        qputenv("GNSS_SERIAL_PORTS", (test.path + ':' + foreign.path + ':' + second.path).toLocal8Bit());
        test.window->SlotUpdatePortInfo();
        // The scan has not disturbed the live link.
        test.Write("alive");
        QTRY_COMPARE(Content(CaptureOf(test, test)), QByteArray("alive"));
        int met = 0;
        for (QAction* action : qobject_cast<MyButton*>(test.Button("选择串口号"))->menu()->actions()) {
            const QString text = action->text();
            QCOMPARE(action->isChecked(), text == test.path);
            QVERIFY(action->isEnabled() == (text != foreign.path) || text.startsWith("tty"));
            met += text == test.path || text == foreign.path || text == second.path ? 1 : 0;
        }
        QCOMPARE(met, 3);
        test.window->SlotChangePort(test.path);
        QCOMPARE(test.RawCaptures().size(), 1);
        test.window->SlotChangePort(second.path);
        QCOMPARE(test.Status().last(), "串口切换至 " + second.path);
        second.Write("two");
        QTRY_COMPARE(Content(CaptureOf(test, second)), QByteArray("two"));
        QCOMPARE(test.RawCaptures().size(), 2);
    }

    void APulledCableNeitherCrashesNorSpins()
    {
        LineTest test;
        test.Write("last words");
        test.Unplug();
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
        const Pty again;
        test.OpenPort(again.path);
        again.Write("back");
        QTRY_VERIFY(test.RawCaptures().size() == 2 && Content(test.RawCaptures().last()) == "back");
    }

    void AnUnwritableCaptureDirectoryLosesOnlyTheFile()
    {
        const Pty pty;
        const WindowTest test(0, 2, pty.path);
        WriteFile(test.application + "/GnssData", "");
        const LogCatcher log;
        test.OpenPort(pty.path);
        pty.Write("abc");
        QTRY_COMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssDecode 3"));
        QCOMPARE(log.Lines().count("Create GnssData file failed!"), 1);
        QFile::remove(test.application + "/GnssData");
    }

    void AChosenFolderTakesTheNextCaptures()
    {
        const Pty pty;
        const WindowTest test(0, 2, pty.path);
        QVERIFY(QDir().mkpath("chosen"));
        const auto choose = [&test](const QStringList& folder) {
            const FileDialogAnswerer answerer(folder);
            test.window->SlotSaveBtnClicked();
            QCOMPARE(answerer.title, QStringLiteral("Selecting a path for saving serial port data."));
        };
        const auto captures = [] { return QDir("chosen").entryInfoList(QDir::Files, QDir::Name); };
        // Nothing is made while the port is closed, another capture begins at once while it is open, and a
        // cancelled choice is the default folder from the next opening on.
        choose({QDir::current().filePath("chosen")});
        QVERIFY(captures().isEmpty());
        test.OpenPort(pty.path);
        QCOMPARE(captures().size(), 1);
        pty.Write("first");
        QTRY_COMPARE(Content(captures().value(0).filePath()), QByteArray("first"));
        choose({QDir::current().filePath("chosen")});
        choose({});
        QVERIFY(!QDir(test.captures).exists());
        test.window->SlotSwitchPort();
        test.window->SlotSwitchPort();
        QCOMPARE(captures().size(), 2);
        QCOMPARE(test.RawCaptures().size(), 1);
    }

    void TheWindowMayGoWhileADialogIsOpen()
    {
        WindowTest test;
        const FileDialogAnswerer dialog({}, [&test] { test.window.reset(); });
        test.window->SlotSaveBtnClicked();
        QVERIFY(test.window == nullptr);
    }
};

QTEST_MAIN(TestWindowSerial)
#include "tst_serial.moc"
