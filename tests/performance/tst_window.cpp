// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "Files.h"
#include "SenderTest.h"

#include "performance/KpiSatellites.h"
#include "performance/KpiViewWin.h"
#include "protocol/Records.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTemporaryDir>

namespace {

const QByteArray coldFrame = QByteArray::fromHex("7e041200030003000000050001000100017e");
const QByteArray hotFrame = QByteArray::fromHex("7e041200030002000000050001000100007e");
const QByteArray startFrame = QByteArray::fromHex("7e0419000100030000000c000100000001000100000000007e");
const QByteArray stopFrame = QByteArray::fromHex("7e040d0002000000000000007e");
const QByteArray nmeaFrame = QByteArray::fromHex("7e041300030004010000060003000200ff007e");

/// The window with a line that keeps its frames.
class Bench : public SenderBench<KpiViewWin> {
public:
    void Set(const char* name, const QString& text) const { Find<QLineEdit>(name)->setText(text); }
    QString Text(const char* name) const { return Find<QLineEdit>(name)->text(); }
    void Tick(const char* name) const { Find<QCheckBox>(name)->setChecked(true); }
    void Click(const char* name) const { Find<QPushButton>(name)->click(); }

    /// The texts of a row; "-" for a cell that is missing.
    QString Row(const char* table, int row) const
    {
        auto* widget = Find<QTableWidget>(table);
        QStringList texts;
        for (int column = 0; column < widget->columnCount(); ++column) {
            const QTableWidgetItem* cell = widget->item(row, column);
            texts.append(cell != nullptr ? cell->text() : QString("-"));
        }
        return texts.join(' ');
    }

    void Fix(double second, double latitude = 47.0, double longitude = 8.0) const
    {
        const protocol::KpiFixRecord fix = {longitude, latitude, 0, 2026, 3, 14, 0, 0, 0, second, 0, 0};
        window->OnKpiFix(&fix, sizeof fix);
    }

    /// A hot series whose times are all 0 but the timeout.
    void StartHot(const char* count = "1") const
    {
        Tick("checkBox_hotStart");
        Set("hotTestNum", count);
        Set("hotTestTimeout", "60");
        Click("pushButton_2");
    }

    /// The start button and whether the form can be used: all of it or nothing.
    QString State() const
    {
        const QWidget* form = window->findChild<QStackedWidget*>();
        int edits = 0;
        for (const QLineEdit* edit : form->findChildren<QLineEdit*>()) {
            edits += edit->isReadOnly() ? 0 : 1;
        }
        int boxes = Find<QPushButton>("AddRefLoc")->isEnabled() ? 1 : 0;
        for (const QCheckBox* box : form->findChildren<QCheckBox*>()) {
            boxes += box->isEnabled() ? 1 : 0;
        }
        return Find<QPushButton>("pushButton_2")->text() + QString(" %1 %2").arg(edits).arg(boxes);
    }
};

} // namespace

class TestKpiWindow : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // A folder of its own for each test: settings of one path share what was parsed.
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }
    void cleanup()
    {
        Global::positioningStarted = false;
        QDir::setCurrent(QDir::tempPath());
    }

    void ASeriesWithItsTables()
    {
        const Bench bench;
        QSignalSpy wakeUps(bench.window.data(), &KpiViewWin::SendWakeUpCmd);
        bench.Set("refPosLat", "47");
        bench.Set("refPosLon", "8");
        bench.Set("refPosAlt", "x");
        bench.Fix(5.0); // outside a run
        QCOMPARE(bench.Row("latestData", 2), QString("- - - -"));
        QCOMPARE(bench.State(), QString("开始测试 11 3"));
        bench.StartHot("2");
        QCOMPARE(bench.State(), QString("停止测试 0 0"));
        QCOMPARE(bench.frames, (QList<QByteArray>{nmeaFrame, hotFrame, startFrame}));
        QCOMPARE(wakeUps.count(), 1);
        bench.Fix(0.0); // the seconds before the first record
        QCOMPARE(bench.Row("hotTestResult", 6), QString("- - - -"));
        bench.Fix(1.0);
        QCOMPARE(bench.Row("hotTestResult", 6), QString("0.00 0.00 0.00 0.00"));
        QCOMPARE(bench.Row("latestData", 2), QString("2026-3-14 0:0:1 0 -"));
        QCOMPARE(bench.Row("latestData", 4), QString("47.00000000N 8.00000000E 0.00m 0.00m/s"));
        bench.window->OnKpiCn0("\x02G\0\1\x28"
                               "C\0\0\x20\0",
                               10);
        QCOMPARE(bench.Row("satData", 2), QString("跟踪 2 1 1 - - -"));
        QCOMPARE(bench.Row("satData", 3), QString("使用 1 1 0 - - -"));
        QCOMPARE(bench.Row("satData", 4), QString("Top5 Cn0 36 40 32 - - -"));
        QCOMPARE(bench.Row("latestData", 2), QString("2026-3-14 0:0:1 0 1"));
        // Lengths that are too long, too short or negative.
        bench.window->OnKpiFix(nullptr, 64);
        bench.window->OnKpiFix("", -1);
        bench.window->OnKpiCn0(std::vector<char>(1, '\xff').data(), 1);
        bench.window->OnKpiCn0(QByteArray(KpiSatellites::largestRecord, 'G').constData(), 1000000000);
        bench.window->OnKpiFix(std::vector<char>(7).data(), 7);
        QTRY_COMPARE_WITH_TIMEOUT(bench.frames.size(), 6, 10000);
        QCOMPARE(bench.Row("hotTestResult", 2), QString("2 1 100.00% -"));
        bench.Fix(2.0, -47.0, -8.0);
        // The boxes that were never enabled are free now.
        QTRY_COMPARE_WITH_TIMEOUT(bench.State(), QString("开始测试 11 7"), 10000);
        QCOMPARE(bench.frames.mid(3), (QList<QByteArray>{stopFrame, hotFrame, startFrame, stopFrame}));
        QCOMPARE(bench.Row("hotTestResult", 2), QString("2 2 100.00% -"));
        QVERIFY(bench.Row("latestData", 4).startsWith("47.00000000S 8.00000000W"));

        const BoxAnswerer answerer;
        bench.Click("saveTestResult");
        QCOMPARE(answerer.boxes, QStringList("提示|测试结果保存成功"));
        const QList<QByteArray> lines = Content("testResult.csv").split('\n');
        QCOMPARE(lines[2], QByteArray("0,0,0,0,0,0,0,0,0,0,0,"));
        QVERIFY(lines[5].startsWith("2,2,100.00%,") && lines[5].count(',') == 11);

        // The next run begins with empty cells.
        bench.StartHot("0");
        QCOMPARE(bench.Row("hotTestResult", 2), QString("- - - -"));
        QCOMPARE(bench.Row("latestData", 4), QString("- - - -"));
        QCOMPARE(bench.State(), QString("开始测试 11 7"));
        bench.StartHot();
        bench.window->OnKpiCn0("\1E\0\1\x14", 5);
        QCOMPARE(bench.Row("satData", 4), QString("Top5 Cn0 20 - - 20 - -"));
    }

    void StopAndWarnings()
    {
        const Bench bench;
        const BoxAnswerer answerer;
        bench.Click("pushButton_2");
        QCOMPARE(bench.State(), QString("开始测试 11 7"));
        bench.StartHot();
        // Positioning that begins in a run unlocks the form, otherwise it locks it.
        Global::positioningStarted = true;
        bench.Click("pushButton_2");
        QCOMPARE(bench.State(), QString("停止测试 11 7"));
        Global::positioningStarted = false;
        bench.Click("pushButton_2");
        QCOMPARE(bench.frames.last(), stopFrame);
        QCOMPARE(bench.State(), QString("开始测试 11 7"));
        Global::positioningStarted = true;
        bench.Click("pushButton_2");
        const QString started = "错误|当前已经启动，请勿重复操作";
        QCOMPARE(answerer.boxes, (QStringList{"错误|请勾选要执行的测试", started, started}));
        QCOMPARE(bench.State(), QString("开始测试 0 0"));
        QVERIFY(QMetaObject::invokeMethod(bench.window.data(), "SlotSendColdStart"));
        QCOMPARE(bench.frames.last(), coldFrame);
        // Told also when nothing can be written.
        QVERIFY(QDir().mkdir("Config.ini") && QDir().mkdir("testResult.csv"));
        bench.Click("saveTestCfg");
        bench.Click("saveTestResult");
        QCOMPARE(answerer.boxes.mid(3), (QStringList{"提示|测试配置保存成功", "提示|测试结果保存成功"}));
    }

    void ADestroyedWindowStopsItsRun()
    {
        for (const int runs : {0, 1}) {
            Bench bench;
            bench.StartHot(runs != 0 ? "1" : "0");
            delete bench.window;
            QCOMPARE(bench.frames.count(stopFrame), runs);
        }
    }

    /// In its waits, at its sends and with its boxes.
    void TheWindowMayGoInsideItsOwnSlots()
    {
        for (const int milliseconds : {30, 125}) {
            Bench bench;
            QTimer::singleShot(milliseconds, bench.window.data(), [&bench] { delete bench.window; });
            bench.StartHot();
            QVERIFY(bench.window.isNull());
            QCOMPARE(bench.frames.last(), stopFrame);
        }
        for (const int number : {1, 2, 3}) {
            Bench bench;
            bench.acknowledge = [&] {
                if (bench.frames.size() == number) {
                    delete bench.window;
                }
            };
            bench.StartHot();
            QVERIFY(bench.window.isNull());
        }
        for (const char* button : {"pushButton_2", "saveTestCfg", "saveTestResult"}) {
            Bench bench;
            QTimer::singleShot(50, bench.window.data(), [&bench] { delete bench.window; });
            bench.Click(button);
            QVERIFY(bench.window.isNull());
        }
    }

    void TheConfigurationTravels()
    {
        const char* edits[] = {"coldTestNum", "coldTestTimeout", "coldTestInr", "coldTestTrkTime",
                               "hotTestNum",  "hotTestTimeout",  "hotTestInr",  "hotTestTrkTime"};
        const QStringList texts = {"1", "2", "3,5", "4", "5", "6", "7", "0"};
        WriteFile("Config.ini", "[Other]\nkey=1\n");
        {
            const Bench bench;
            const BoxAnswerer answerer;
            bench.Tick("checkBox_coldStart");
            bench.Tick("checkBox_hotPgnss");
            for (int i = 0; i < 7; ++i) {
                bench.Set(edits[i], texts[i]);
            }
            bench.Click("saveTestCfg");
            QCOMPARE(answerer.boxes, QStringList("提示|测试配置保存成功"));
        }
        const QByteArray file = Content("Config.ini");
        QVERIFY(file.startsWith("[TestCfg]\n") && file.contains("ColdStartTest=true\n") &&
                !file.contains("Other"));
        QVERIFY(file.contains("ColdStartTestInr=\"3,5\"\n") && file.contains("HotStartTestTrkTime=0\n"));
        const Bench bench;
        QVERIFY(bench.Find<QCheckBox>("checkBox_coldStart")->isChecked());
        QVERIFY(!bench.Find<QCheckBox>("checkBox_hotStart")->isChecked());
        QVERIFY(bench.Find<QCheckBox>("checkBox_hotPgnss")->isChecked());
        for (int i = 0; i < 8; ++i) {
            QCOMPARE(bench.Text(edits[i]), texts[i]);
        }
    }

    void ReferencePlaces()
    {
        WriteFile("refLoc.ini", "[RefLoc_1]\nrefLocAlt=3\nrefLocLat=2\nrefLocLon=1\nrefLocName=屋顶\n\n"
                                "[RefLoc_2]\nrefLocAlt=6\nrefLocLat=5\nrefLocLon=4\nrefLocName=second\n");
        const Bench bench;
        const BoxAnswerer answerer;
        auto* box = bench.Find<QComboBox>("comboBox");
        const auto at = [&](int index) {
            box->setCurrentIndex(index);
            return box->currentText() + ' ' + bench.Text("refPosLon") + ' ' + bench.Text("refPosLat") + ' ' +
                   bench.Text("refPosAlt");
        };
        QCOMPARE(at(0), QString("屋顶 4 5 6")); // the numbers are the last one's
        QCOMPARE(at(1), QString("second 4 5 6"));
        QCOMPARE(at(0), QString("屋顶 1 2 3"));
        bench.Click("AddRefLoc");
        auto* dialog = bench.Find<QWidget>("refLocWin");
        QVERIFY(dialog->isVisible());
        const QStringList texts = {"third", "7", "8"};
        for (int i = 0; i < 3; ++i) {
            dialog->findChildren<QLineEdit*>()[i]->setText(texts[i]);
        }
        dialog->findChildren<QPushButton*>()[0]->click();
        QCOMPARE(at(2), QString("third 7 8 ")); // as typed; the file has 0
        QVERIFY(Content("refLoc.ini").contains("refLocName=屋顶\n"));
        QVERIFY(QMetaObject::invokeMethod(bench.window.data(), "ChangeRefLocWhileCbxIdxChange", Q_ARG(int, 99)));
        QVERIFY(bench.Text("refPosLon").isEmpty());
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(TestKpiWindow)
#include "tst_window.moc"
