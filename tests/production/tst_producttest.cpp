#include "BoxAnswerer.h"
#include "FakeChip.h"
#include "FileDialogAnswerer.h"
#include "ImageFile.h"
#include "LogCatcher.h"
#include "ProductTestDriver.h"

#include "main/PortList.h"
#include "production/Cn0PaintWidget.h"

#include <QSerialPort>

namespace {

const QByteArray startFrame =
    QByteArray::fromHex("7e 04 19 00 01 00 03 00 00 00 0c 00 01 00 00 00 01 00 01 00 00 00 00 00 7e");
const QByteArray stopFrame = QByteArray::fromHex("7e 04 0d 00 02 00 00 00 00 00 00 00 7e");

constexpr int limitMs = 20000;

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

/// A window whose test runs: its image has no records, and the far end is in the test's hand.
class Running {
public:
    explicit Running(const std::function<void(const ProductTestDriver&)>& settings = {},
                     const QByteArray& image = QByteArray())
        : file(image), driver(chip.pty.path, file.path)
    {
        driver.ScanPn("PN7");
        if (settings) {
            settings(driver);
        }
        driver.Start();
    }

    void Say(const QByteArray& bytes) const
    {
        chip.pty.Write(bytes);
        QTest::qWait(40);
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

/// The window's own rules, on a line in the test's hand.
class TestProductTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { ProductTestDriver::CleanFolders(); }

    void TheFormIsAsItIsDrawn()
    {
        const ProductTestDriver driver;
        const auto* rates = driver.Find<QComboBox>("baudRateCbx");
        QStringList offered;
        for (int i = 0; i < rates->count(); ++i) {
            offered.append(rates->itemText(i));
        }
        QCOMPARE(offered, (QStringList{"4800", "9600", "19200", "38400", "57600", "115200", "1000000"}));
        QCOMPARE(rates->currentText(), QStringLiteral("115200"));
        QCOMPARE(driver.Find<QSpinBox>("gpsCn0Thresh")->value(), 40);
        QCOMPARE(driver.Find<QSpinBox>("testDelay")->maximum(), 999);
        QVERIFY(driver.Find<QCheckBox>("isNeedGps")->isChecked());
        QVERIFY(!driver.Find<QCheckBox>("isNeedNonGps")->isChecked());
        QStringList headers;
        const QAbstractItemModel* model = driver.Find<QTableView>("testRltTable")->model();
        for (int column = 0; column < model->columnCount(); ++column) {
            headers.append(model->headerData(column, Qt::Horizontal).toString());
        }
        QCOMPARE(headers, (QStringList{"PN", "Cn0(GPS)", "Cn0(NoGPS)", "SVs(GPS)", "SVs(NoGPS)", "TTFF(s)",
                                       "Result", "MES", "Log"}));
        for (const char* name : {"signalTestRltLbl", "testNum", "passNum", "passNumRatio", "totalSatInfo",
                                 "gpsSatInfo", "bdsSatInfo", "gloSatInfo", "galSatInfo", "qzsSatInfo"}) {
            QVERIFY2(driver.Find<QLabel>(name) != nullptr, name);
        }
        QVERIFY(driver.Find<QWidget>("cn0PaintWidget") != nullptr);
    }

    void AUnitPassesOnItsSecondFix()
    {
        const Running unit;
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
        QCOMPARE(driver.Verdict(), QStringLiteral("PASS通过"));
        QCOMPARE(driver.Find<QLabel>("signalTestRltLbl")->styleSheet(),
                 QStringLiteral("QLabel { color: green; }"));
        QCOMPARE(driver.Row(0), (QStringList{"PN7", "44", "46", "1", "NA", "0.00", "PASS", "0", "0"}));
        QCOMPARE(driver.Rows(), 1);
        QCOMPARE(driver.Text("testNum") + driver.Text("passNum") + driver.Text("passNumRatio"),
                 QStringLiteral("1次1次100.00%"));
        QCOMPARE(driver.Content(driver.RawLogs().first()), first + last);
        const QString shown = driver.Find<QPlainTextEdit>("showNmea")->toPlainText();
        QCOMPARE(shown.split('\n').size(), 8);
        QVERIFY(shown.startsWith("$GNGGA,120000.00") && shown.endsWith("*7B"));
        QCOMPARE(driver.Results().size(), 1);
        QCOMPARE(driver.Find<QLineEdit>("TestRsltPath")->text(), driver.Results().first());
        QVERIFY(driver.Content(driver.Results().first()).endsWith("PN7,44,46,1,1,0,PASS,0,0,40,NA,60,NA,\n"));
        QCOMPARE(driver.Reports().size(), 1);
        QVERIFY(driver.Reports().first().contains("/PN7["));
        QVERIFY(driver.Reports().first().endsWith("][PASS通过]产测视图1.txt"));
        const QByteArray report = driver.Content(driver.Reports().first());
        QVERIFY(report.contains("\nnoise$GNGGA,120000.00") &&
                report.contains("\n$GPGSV,1,1,01,03,56,104,44,1*6C\n"));
        QVERIFY(OwnOpenPorts().isEmpty());
    }

    void WeakSignalsFail_data()
    {
        QTest::addColumn<int>("gps");
        QTest::addColumn<int>("bds");
        QTest::addColumn<bool>("needGps");
        QTest::addColumn<bool>("needNonGps");
        QTest::addColumn<QString>("verdict");
        QTest::newRow("reaching") << 40 << 0 << true << false << "PASS通过";
        QTest::newRow("gps") << 39 << 50 << true << false << "GPS载噪比小于门限值";
        QTest::newRow("gps before others") << 39 << 1 << true << true << "GPS载噪比小于门限值";
        QTest::newRow("others") << 40 << 39 << true << true << "非GPS载噪比小于门限值";
        QTest::newRow("nothing asked") << 0 << 0 << false << false << "PASS通过";
    }

    void WeakSignalsFail()
    {
        QFETCH(int, gps);
        QFETCH(int, bds);
        QFETCH(bool, needGps);
        QFETCH(bool, needNonGps);
        QFETCH(QString, verdict);
        const Running unit([&](const ProductTestDriver& driver) {
            driver.Check("isNeedGps", needGps);
            driver.Check("isNeedNonGps", needNonGps);
            driver.Set("nonGpsCn0Thresh", 40);
        });
        unit.Say(Gga("120001.00", 1) + Signals(gps, bds));
        unit.Say(Gga("120002.00", 2));
        QVERIFY(unit.Ended());
        const bool passes = verdict.startsWith("PASS");
        QCOMPARE(unit.driver.Verdict(), verdict);
        QCOMPARE(unit.driver.Row(0).at(6), passes ? QStringLiteral("PASS") : QStringLiteral("FAILED"));
        QCOMPARE(unit.driver.Text("passNumRatio"), passes ? QStringLiteral("100.00%") : QStringLiteral("0.00%"));
        QCOMPARE(unit.driver.Find<QLabel>("signalTestRltLbl")->styleSheet().contains("red"), !passes);
        QVERIFY(unit.driver.Reports().first().contains('[' + verdict + ']'));
    }

    void WithoutAFixTheTimeRunsOut()
    {
        const Running unit([](const ProductTestDriver& driver) {
            driver.Set("testTimeout", 1);
            driver.ScanPn(QString());
        });
        unit.Say(Gga("120001.00", 0) + Signals(44, 46) + Gga("120002.00", 0));
        QVERIFY(unit.Ended());
        QCOMPARE(unit.driver.Verdict(), QStringLiteral("FAILED不通过"));
        QCOMPARE(unit.driver.Row(0).at(5), QStringLiteral("NA"));
        QVERIFY(unit.driver.Content(unit.driver.Results().first())
                    .endsWith("\n,44,46,1,1,NA,FAILED,0,0,40,NA,1,NA,\n"));
        QVERIFY(unit.driver.Reports().first().contains("/NA["));
        QVERIFY(unit.driver.Reports().first().contains("[FAILED不通过]"));
        QVERIFY(unit.driver.Content(unit.driver.Reports().first()).contains("TTFF = 0.00 "));
        QTest::qWait(1200);
        QCOMPARE(unit.driver.Rows(), 1);
    }

    void MidnightNeverJudges()
    {
        const Running unit;
        unit.Say(Gga("235959.00", 1) + Signals(44, 46) + Gga("000000.00", 1) + Signals(44, 46) +
                 Gga("000001.00", 1));
        QTest::qWait(200);
        QVERIFY(unit.driver.Running());
        QCOMPARE(unit.driver.Rows(), 0);
    }

    void ADelayGoesOnRecording()
    {
        const Running unit([](const ProductTestDriver& driver) {
            driver.Check("testDelayChkBox", true);
            driver.Set("testDelay", 1);
        });
        unit.Say(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
        QCOMPARE(unit.driver.Rows(), 1);
        QVERIFY(unit.driver.Running());
        QVERIFY(unit.driver.Reports().isEmpty());
        // Weak signals now have no part in the verdict.
        unit.Say(Signals(1, 1) + Gga("120003.00", 1) + Signals(1, 1) + Gga("120004.00", 1));
        QCOMPARE(unit.driver.Rows(), 1);
        QVERIFY(unit.Ended());
        QCOMPARE(unit.driver.Rows(), 1);
        QCOMPARE(unit.driver.Text("testNum"), QStringLiteral("1次"));
        QCOMPARE(unit.driver.Reports().size(), 1);
        QVERIFY(unit.driver.Content(unit.driver.Reports().first()).contains("120004.00"));
        QVERIFY(unit.driver.Content(unit.driver.Results().first()).endsWith(",60,1,\n"));
    }

    void TheStopButtonLeavesOnlyTheRawLog()
    {
        const Running unit;
        unit.Say(Gga("120001.00", 1));
        unit.driver.Stop();
        QVERIFY(unit.Ended());
        QCOMPARE(unit.driver.Rows(), 0);
        QVERIFY(unit.driver.Results().isEmpty() && unit.driver.Reports().isEmpty());
        QCOMPARE(unit.driver.RawLogs().size(), 1);
        unit.driver.Stop(); // without a test it does nothing
        QCOMPARE(unit.chip.messages.count(stopFrame), 1);
    }

    void AnEmptyVersionStartsNoTest()
    {
        FakeChip chip;
        const ImageFile image("quit");
        chip.onMessage = [&](const QByteArray&) { chip.pty.Write("no dollar"); };
        const ProductTestDriver driver(chip.pty.path, image.path);
        driver.Start();
        QVERIFY(!driver.Running());
        QCOMPARE(driver.Log(), (QStringList{"", "固件加载成功"}));
        QVERIFY(OwnOpenPorts().isEmpty());
        QCOMPARE(driver.RawLogs().size(), 1);
    }

    void PortsThatFailAreTold()
    {
        FakeChip chip;
        const ImageFile image("");
        const ProductTestDriver driver(chip.pty.path, image.path);
        QSerialPort holder;
        holder.setPortName(chip.pty.path);
        QVERIFY(holder.open(QIODevice::ReadWrite));
        const BoxAnswerer boxes;
        driver.Start();
        const QString told = "GNSS|" + chip.pty.path + "串口打开失败，请确认串口存在且未被占用";
        QCOMPARE(boxes.boxes, QStringList{told});
        holder.close();
        // Taken by somebody else between the load and the start.
        QTimer::singleShot(700, [&] { driver.Find<QComboBox>("serialCbx")->setCurrentIndex(-1); });
        driver.Start();
        QCOMPARE(boxes.boxes.size(), 2);
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

    void WindowsMayCloseAtAnyTime_data()
    {
        QTest::addColumn<int>("after");
        QTest::newRow("load") << 50;
        QTest::newRow("version") << 600;
        QTest::newRow("start") << 1250;
        QTest::newRow("test") << 1800;
    }

    void WindowsMayCloseAtAnyTime()
    {
        QFETCH(int, after);
        FakeChip chip;
        chip.AnswerWith("C");
        const ImageFile image("record \"a\"\nquit");
        auto* driver = new ProductTestDriver(chip.pty.path, image.path);
        connect(driver->window, &ProductTest::CloseSignal, driver->window, &QObject::deleteLater);
        driver->window->show();
        QTimer::singleShot(after, driver->window, [window = driver->window] { window->close(); });
        driver->Start();
        QTRY_VERIFY(driver->window.isNull());
        delete driver;
        QVERIFY(ProbePort(chip.pty.path));
    }

    void AWindowMayCloseInItsDelay()
    {
        Running unit([](const ProductTestDriver& driver) {
            driver.Check("testDelayChkBox", true);
            driver.Set("testDelay", 1);
        });
        unit.Say(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
        QCOMPARE(unit.driver.Rows(), 1);
        delete unit.driver.window;
        QTest::qWait(1300);
        // The verdict is kept in its row.
        QCOMPARE(unit.driver.Content(unit.driver.Results().first()).count('\n'), 2);
    }

    void ASecondStartInsideTheLoadIsNoHarm()
    {
        FakeChip chip;
        chip.AnswerWith("C");
        const ImageFile image("record \"a\"\nrecord \"b\"\nquit");
        const ProductTestDriver driver(chip.pty.path, image.path);
        driver.Set("testTimeout", 2);
        QTimer::singleShot(50, driver.window, [&] { driver.Start(); });
        driver.Start();
        // The outer load ends on the closed port or on foreign bytes; the inner one's test runs to its timeout.
        QVERIFY(QTest::qWaitFor([&] { return driver.Rows() == 1; }, limitMs));
        QVERIFY(QTest::qWaitFor([&] { return !driver.Running(); }, limitMs));
        QCOMPARE(driver.Rows(), 1);
        QCOMPARE(driver.Reports().size(), 1);
    }

    void FloodsAndEndlessSentencesAreSurvived()
    {
        const Running unit;
        QByteArray flood = "$";
        for (int i = 0; i < 30; ++i) {
            flood += QByteArray(1000, 'x');
            unit.chip.pty.Write(flood.mid(flood.size() - 1000));
            QTest::qWait(12);
        }
        unit.Say(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
        QVERIFY(unit.Ended());
        QCOMPARE(unit.driver.Verdict(), QStringLiteral("PASS通过"));
    }

    void FilesThatCannotBeWrittenChangeNoVerdict()
    {
        QFile inTheWay(QCoreApplication::applicationDirPath() + "/ProductTest");
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        inTheWay.close();
        QFile alsoInTheWay(QCoreApplication::applicationDirPath() + "/GnssData");
        QVERIFY(alsoInTheWay.open(QIODevice::WriteOnly));
        alsoInTheWay.close();
        {
            const LogCatcher log;
            const Running unit;
            unit.Say(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
            QVERIFY(unit.Ended());
            QCOMPARE(unit.driver.Row(0).at(6), QStringLiteral("PASS"));
            QCOMPARE(unit.driver.Text("testNum"), QStringLiteral("1次"));
            const QString told =
                "Production test report generation failed: An exception occurred when opening the report file";
            QCOMPARE(unit.driver.Log().last(), told);
            QVERIFY(LogCatcher::Lines().contains(told));
            QVERIFY(LogCatcher::Lines().contains("Create GnssData file failed!"));
        }
        inTheWay.remove();
        alsoInTheWay.remove();
    }

    void TwoWindowsAreIndependent()
    {
        FakeChip chips[2];
        const ImageFile image("");
        ProductTestDriver one(chips[0].pty.path, image.path);
        ProductTestDriver two(chips[1].pty.path, image.path);
        two.window->setWindowTitle("产测视图2");
        QTimer::singleShot(200, two.window, [&] { two.Start(); });
        one.Start();
        QTRY_VERIFY(one.Running() && two.Running());
        for (const FakeChip& chip : chips) {
            chip.pty.Write(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
        }
        QTRY_VERIFY_WITH_TIMEOUT(!one.Running() && !two.Running(), limitMs);
        QCOMPARE(ProductTestDriver::Results().size(), 2);
        QCOMPARE(ProductTestDriver::Reports().size(), 2);
        QCOMPARE(one.Rows() + two.Rows(), 2);
    }

    void SettingsAreLockedAndFilesChosen()
    {
        const ProductTestDriver driver;
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
        {
            const FileDialogAnswerer choice({image.path});
            driver.window->SlotSelectFile();
            QCOMPARE(choice.title, QStringLiteral("选择文件"));
            QCOMPARE(choice.filters, QStringList{"Bin file(*.bin)"});
        }
        auto* path = driver.Find<QLineEdit>("versionFilePath");
        QCOMPARE(path->text(), image.path);
        path->setText("something else");
        const FileDialogAnswerer cancel({});
        driver.window->SlotSelectFile();
        QCOMPARE(path->text(), image.path); // regained, without a message
    }

    void ClearingShowsOnlyTheLastUnit()
    {
        const Running unit;
        unit.Say(Gga("120001.00", 1) + Signals(44, 46) + Gga("120002.00", 1));
        QVERIFY(unit.Ended());
        const auto* shown = unit.driver.Find<QPlainTextEdit>("showNmea");
        QVERIFY(!shown->toPlainText().isEmpty());
        unit.driver.Start();
        QVERIFY(!shown->toPlainText().isEmpty());
        QCOMPARE(unit.driver.Verdict(), QString());
        unit.driver.Stop();
        unit.driver.Check("clearHisNmeaLog", true);
        unit.driver.Start();
        QVERIFY(shown->toPlainText().isEmpty());
    }

    void BarsStandWhereTheyBelong()
    {
        const ProductTestDriver driver;
        auto* painted = driver.Find<Cn0PaintWidget>("cn0PaintWidget");
        driver.window->resize(1180, 860);
        driver.window->show();
        QVERIFY(QTest::qWaitForWindowExposed(driver.window));
        EpochSignals sums;
        sums.bars[0][3] = {40};  // GPS
        sums.bars[1][21] = {30}; // BDS
        sums.bars[4][193] = {0}; // QZS
        painted->SetBars(sums.bars);
        const QImage image = painted->grab().toImage();
        const int unit = (painted->height() + 1) / 100;
        QCOMPARE(image.pixelColor(236, 199), QColor(96, 56, 17));
        QCOMPARE(image.pixelColor(244, 200 - 40 * unit), QColor(96, 56, 17));
        QCOMPARE(image.pixelColor(250, 200 - 30 * unit), QColor(203, 65, 84));
        QVERIFY(image.pixelColor(245, 195) != QColor(96, 56, 17));
        QVERIFY(image.pixelColor(264, 199) != QColor(159, 43, 104));
    }
};

QTEST_MAIN(TestProductTest)
#include "tst_producttest.moc"
