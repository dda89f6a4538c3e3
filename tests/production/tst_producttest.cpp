// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "FakeChip.h"
#include "FileDialogAnswerer.h"
#include "ImageFile.h"
#include "LogCatcher.h"
#include "ProductTestDriver.h"

#include "line/PortList.h"
#include "production/Cn0PaintWidget.h"

namespace {

const QByteArray startFrame =
    QByteArray::fromHex("7e 04 19 00 01 00 03 00 00 00 0c 00 01 00 00 00 01 00 01 00 00 00 00 00 7e");
const QByteArray stopFrame = QByteArray::fromHex("7e 04 0d 00 02 00 00 00 00 00 00 00 7e");

constexpr int limitMs = 60000;

QByteArray Gga(const char* utc, int quality)
{
    return "$GNGGA," + QByteArray(utc) + ",4723.86,N,00832.73,E," + QByteArray::number(quality) +
           ",20,0.41,408.8,M,0.0,M,,*7B\r\n";
}

QByteArray Signals(int gps, int bds)
{
    return "$GPGSV,1,1,01,03,56,104," + QByteArray::number(gps) + ",1*6C\r\n$GBGSV,1,1,01,21,56,104," +
           QByteArray::number(bds) + ",1*6C\r\n";
}

/// What makes a unit pass at once.
const QByteArray goodUnit = Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1);

/// A window whose test runs: its image has no records, and the far end is in the test's hand.
class Running {
public:
    explicit Running(const std::function<void(const ProductTestDriver&)>& settings = {})
        : file(QByteArray()), driver(chip.pty.path, file.path)
    {
        driver.ScanPn("PN7");
        if (settings) {
            settings(driver);
        }
        driver.Start();
    }

    /// Returns when the window has taken it, or has ended its test.
    void Say(const QByteArray& bytes)
    {
        chip.Say(bytes);
        QVERIFY(QTest::qWaitFor(
            [this] { return !driver.Running() || QFileInfo(driver.RawLogs().value(0)).size() >= chip.said; },
            limitMs));
    }

    bool Ended() const
    {
        return QTest::qWaitFor([this] { return !driver.Running(); }, limitMs) &&
               QTest::qWaitFor([this] { return chip.messages.contains(stopFrame); }, limitMs);
    }

    FakeChip chip;
    ImageFile file;
    ProductTestDriver driver;
};

} // namespace

/// The window around the sequencer, on a line in the test's hand.
class TestProductTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProductTestDriver::CleanFolders(); }

    void AUnitPassesOnItsSecondFix()
    {
        Running unit;
        const ProductTestDriver& driver = unit.driver;
        QVERIFY(driver.Running());
        QCOMPARE(driver.Log(), (QStringList{"", "固件加载成功", "当前固件版本：" + QString(QChar(0))}));
        QTRY_VERIFY(unit.chip.messages.contains(startFrame));
        QCOMPARE(driver.RawLogs().size(), 1);

        const QByteArray first = "noise" + Gga("120000.00", 0) + Gga("120001.00", 1) + Signals(44, 46);
        unit.Say(first);
        QVERIFY(driver.Running());
        QCOMPARE(driver.Rows(), 0);
        // What follows the fix that judges is shown and kept, but no longer counts.
        const QByteArray last = Gga("120002.00", 1) + Signals(99, 99) + Gga("120003.00", 1);
        unit.Say(last);
        QVERIFY(unit.Ended());
        QCOMPARE(driver.Rows(), 1);
        QStringList row = driver.Row(0);
        row.removeAt(5); // the time to the fix
        QCOMPARE(row, (QStringList{"PN7", "44", "46", "1", "NA", "PASS", "0", "0"}));
        QCOMPARE(driver.Content(driver.RawLogs().first()), first + last);
        const QString shown = driver.Find<QPlainTextEdit>("showNmea")->toPlainText();
        QCOMPARE(shown.split('\n').size(), 8);
        QVERIFY(shown.startsWith("$GNGGA,120000.00") && shown.endsWith("*7B"));
        QCOMPARE(driver.Results(), QStringList{driver.Find<QLineEdit>("TestRsltPath")->text()});
        QCOMPARE(driver.Reports().size(), 1);
        QVERIFY(driver.Reports().first().contains("/PN7["));
        const QByteArray report = driver.Content(driver.Reports().first());
        QVERIFY(report.contains("\nnoise$GNGGA,120000.00") &&
                report.contains("\n$GPGSV,1,1,01,03,56,104,44,1*6C\n"));
        QVERIFY(OwnOpenPorts().isEmpty());
        QCOMPARE(driver.Verdict(), QStringLiteral("PASS通过"));
        QCOMPARE(driver.Find<QLabel>("signalTestRltLbl")->styleSheet(),
                 QStringLiteral("QLabel { color: green; }"));
        QCOMPARE(driver.Text("testNum") + driver.Text("passNum") + driver.Text("passNumRatio"),
                 QStringLiteral("1次1次100.00%"));

        driver.Start();
        QVERIFY(driver.Verdict().isEmpty() && !driver.Find<QPlainTextEdit>("showNmea")->toPlainText().isEmpty());
        driver.Stop();
        // A stop leaves the raw log alone.
        QVERIFY(driver.Rows() == 1 && driver.Reports().size() == 1 && driver.RawLogs().size() == 2);
        QTRY_COMPARE(unit.chip.messages.count(stopFrame), 2);
    }

    void UnitsThatFailShowWhy()
    {
        Running unit([](const ProductTestDriver& driver) {
            driver.ScanPn(QString());
            driver.Check("isNeedNonGps", true);
            driver.Set("nonGpsCn0Thresh", 47);
            driver.Set("testTimeout", 999);
        });
        const ProductTestDriver& driver = unit.driver;
        unit.Say(goodUnit);
        QVERIFY(unit.Ended());
        QCOMPARE(driver.Verdict(), QStringLiteral("非GPS载噪比小于门限值"));
        driver.Check("clearHisNmeaLog", true);
        driver.Start();
        QVERIFY(driver.Find<QPlainTextEdit>("showNmea")->toPlainText().isEmpty());
        driver.window->SlotTimeoutProc();
        QVERIFY(unit.Ended());
        QCOMPARE(driver.Verdict(), QStringLiteral("FAILED不通过"));
        QCOMPARE(driver.Find<QLabel>("signalTestRltLbl")->styleSheet(), QStringLiteral("QLabel { color: red; }"));
        QCOMPARE(driver.Text("testNum") + driver.Text("passNum") + driver.Text("passNumRatio"),
                 QStringLiteral("2次0次0.00%"));
        QCOMPARE(driver.Content(driver.Results().first()).split('\n').at(2),
                 QByteArray(",44,46,1,1,NA,FAILED,0,0,40,47,999,NA,"));
        const QString report = driver.Reports().last();
        QVERIFY(report.contains("/NA[") && report.endsWith("][FAILED不通过]产测视图1.txt"));
        QVERIFY(driver.Content(report).contains("TTFF = 0.00 "));
    }

    void ADelayEndsByItself()
    {
        Running unit([](const ProductTestDriver& driver) {
            driver.Check("testDelayChkBox", true);
            driver.Set("testDelay", 2);
        });
        unit.Say(goodUnit);
        QVERIFY(unit.driver.Running() && unit.driver.Rows() == 1 && unit.driver.Reports().isEmpty());
        QVERIFY(unit.Ended());
        QVERIFY(unit.driver.Content(unit.driver.Results().first()).endsWith(",60,2,\n"));
        QCOMPARE(unit.driver.Reports().size(), 1);
    }

    void APortTakenBetweenLoadAndStartIsTold()
    {
        FakeChip chip;
        const ImageFile image("quit");
        const ProductTestDriver driver(chip.pty.path, image.path);
        chip.AnswerWith("", "QUIT ", [&] { driver.Find<QComboBox>("serialCbx")->setCurrentIndex(-1); });
        const BoxAnswerer boxes;
        driver.Start();
        QCOMPARE(boxes.boxes, QStringList{"GNSS|串口打开失败，请确认串口存在且未被占用"});
        QVERIFY(!driver.Running());
    }

    void ALineThatGoesLeavesTheTimeout()
    {
        Running unit([](const ProductTestDriver& driver) { driver.Set("testTimeout", 1); });
        unit.Say(Gga("120001.00", 0));
        unit.chip.pty.Unplug();
        QVERIFY(QTest::qWaitFor([&] { return !unit.driver.Running(); }, limitMs));
        QCOMPARE(unit.driver.Rows(), 1);
        QCOMPARE(unit.driver.Reports().size(), 1);
    }

    void WindowsMayCloseAtAnyTime()
    {
        const ImageFile image("record \"a\"\nquit");
        for (const QByteArray& when : {QByteArray("a"), QByteArray("QUIT "), startFrame, QByteArray()}) {
            FakeChip chip;
            const ProductTestDriver driver(chip.pty.path, image.path);
            connect(driver.window, &ProductTest::CloseSignal, driver.window, &QObject::deleteLater);
            driver.window->show();
            chip.AnswerWith("C", when, [&] { driver.window->close(); });
            driver.Start();
            if (when.isEmpty()) {
                QVERIFY(driver.Running());
                driver.window->close();
            }
            QTRY_VERIFY(driver.window.isNull());
            QVERIFY(ProbePort(chip.pty.path));
        }
    }

    void ASecondStartInsideTheLoadIsNoHarm()
    {
        FakeChip chip;
        const ImageFile image("record \"a\"\nrecord \"b\"\nquit");
        const ProductTestDriver driver(chip.pty.path, image.path);
        driver.Set("testTimeout", 2);
        int starts = 1;
        chip.AnswerWith("C", "a", [&] {
            if (++starts == 2) {
                driver.Start();
            }
        });
        driver.Start();
        // The outer load ends on the closed port; the inner one's test runs to its timeout.
        QVERIFY(QTest::qWaitFor([&] { return driver.Rows() == 1 && !driver.Running(); }, limitMs));
        QCOMPARE(driver.Rows(), 1);
        QCOMPARE(driver.Reports().size(), 1);
    }

    void FilesThatCannotBeWrittenChangeNoVerdict()
    {
        const QString folder = QCoreApplication::applicationDirPath();
        QFile inTheWay[] = {{folder + "/ProductTest"}, {folder + "/GnssData"}};
        for (QFile& file : inTheWay) {
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.close();
        }
        {
            const LogCatcher log;
            Running unit;
            unit.chip.Say(goodUnit);
            QVERIFY(unit.Ended());
            QCOMPARE(unit.driver.Row(0).at(6), QStringLiteral("PASS"));
            QCOMPARE(unit.driver.Text("testNum"), QStringLiteral("1次"));
            const QString told =
                "Production test report generation failed: An exception occurred when opening the report file";
            QCOMPARE(unit.driver.Log().last(), told);
            QVERIFY(LogCatcher::Lines().contains(told));
            QVERIFY(LogCatcher::Lines().contains("Create GnssData file failed!"));
        }
        for (QFile& file : inTheWay) {
            file.remove();
        }
    }

    void SettingsAreLockedAndFilesChosen()
    {
        const ProductTestDriver driver;
        QCOMPARE(driver.Find<QComboBox>("baudRateCbx")->currentText(), QStringLiteral("115200"));
        driver.ScanPn("x");
        driver.Find<QPushButton>("clearPNBtn")->click();
        QVERIFY(driver.Find<QLineEdit>("PNNodeLdt")->text().isEmpty());
        for (const bool locked : {true, false}) {
            driver.Check("lockCfgRtn", locked);
            for (const char* name : {"serialCbx", "baudRateCbx", "testTimeout", "testDelayChkBox", "testDelay",
                                     "gpsCn0Thresh", "nonGpsCn0Thresh", "isNeedGps", "isNeedNonGps"}) {
                QCOMPARE(driver.Find<QWidget>(name)->isEnabled(), !locked);
            }
            QVERIFY(driver.Find<QWidget>("PNNodeLdt")->isEnabled());
        }
        const ImageFile image("");
        const FileDialogAnswerer choice({image.path});
        driver.window->SlotSelectFile();
        QCOMPARE(choice.title + choice.filters.join('|'), QStringLiteral("选择文件Bin file(*.bin)"));
        auto* path = driver.Find<QLineEdit>("versionFilePath");
        path->setText("something else");
        const FileDialogAnswerer cancel({});
        driver.window->SlotSelectFile();
        QCOMPARE(path->text(), image.path); // regained, without a message
    }

    void BarsStandWhereTheyBelong()
    {
        const ProductTestDriver driver;
        auto* painted = driver.Find<Cn0PaintWidget>("cn0PaintWidget");
        driver.window->show();
        EpochSignals sums;
        sums.bars[0][3] = {40};  // GPS
        sums.bars[1][21] = {30}; // BDS
        sums.bars[4][193] = {0}; // QZS
        painted->SetBars(sums.bars);
        const QImage image = painted->grab().toImage();
        const int unit = (painted->height() + 1) / 100;
        const QColor brown(96, 56, 17);
        QVERIFY(image.pixelColor(236, 199) == brown && image.pixelColor(244, 200 - 40 * unit) == brown);
        QVERIFY(image.pixelColor(245, 195) != brown);
        QCOMPARE(image.pixelColor(250, 200 - 30 * unit), QColor(203, 65, 84));
        QVERIFY(image.pixelColor(264, 199) != QColor(159, 43, 104)); // no signal, no bar
    }
};

QTEST_MAIN(TestProductTest)
#include "tst_producttest.moc"
