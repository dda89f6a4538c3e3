#include "BoxAnswerer.h"
#include "SenderTest.h"

#include "codec/Records.h"
#include "production/KpiSatellites.h"
#include "production/KpiViewWin.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTableWidget>
#include <QtTest>

#include <cmath>

namespace {

const QByteArray coldFrame = QByteArray::fromHex("7e041200030003000000050001000100017e");
const QByteArray hotFrame = QByteArray::fromHex("7e041200030002000000050001000100007e");
const QByteArray startFrame = QByteArray::fromHex("7e0419000100030000000c000100000001000100000000007e");
const QByteArray stopFrame = QByteArray::fromHex("7e040d0002000000000000007e");
const QByteArray nmeaFrame = QByteArray::fromHex("7e041300030004010000060003000200ff007e");

QByteArray Content(const char* name)
{
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const char* name, const QByteArray& content)
{
    QFile file(QString::fromLatin1(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

/// The window with a line that keeps its frames.
class Bench {
public:
    Bench() : window(std::make_unique<KpiViewWin>(nullptr)) { sender.Listen(window.get()); }

    template <typename Widget> Widget* Find(const char* name) const
    {
        return window->findChild<Widget*>(QLatin1String(name));
    }
    void Set(const char* name, const QString& text) const { Find<QLineEdit>(name)->setText(text); }
    void Tick(const char* name) const { Find<QCheckBox>(name)->setChecked(true); }
    void Click(const char* name) const { Find<QPushButton>(name)->click(); }
    QString ButtonText() const { return Find<QPushButton>("pushButton_2")->text(); }

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
        gnss::KpiFixRecord fix = {};
        fix.latitude = latitude;
        fix.longitude = longitude;
        fix.year = 2026;
        fix.month = 3;
        fix.day = 14;
        fix.second = second;
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

    bool Locked() const
    {
        const bool locked = !Find<QPushButton>("AddRefLoc")->isEnabled();
        for (const QLineEdit* edit : window->findChild<QStackedWidget*>()->findChildren<QLineEdit*>()) {
            if (edit->isReadOnly() != locked) {
                qWarning() << edit->objectName();
            }
        }
        for (const char* box : {"checkBox_coldStart", "checkBox_coldAgnss", "checkBox_coldPgnss",
                                "checkBox_hotStart", "checkBox_hotAgnss", "checkBox_hotPgnss"}) {
            if (Find<QCheckBox>(box)->isEnabled() == locked) {
                qWarning() << box;
            }
        }
        return locked;
    }

    SenderTest sender;
    std::unique_ptr<KpiViewWin> window;
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

    void TheForm()
    {
        const Bench bench;
        QCOMPARE(bench.window->windowTitle(), QString("性能测试"));
        auto* list = bench.Find<QListView>("listView");
        QCOMPARE(list->model()->rowCount(), 1);
        QCOMPARE(list->model()->index(0, 0).data().toString(), QString("Kpi测试"));
        emit list->clicked(list->model()->index(0, 0));
        QCOMPARE(bench.Find<QStackedWidget>("stackedWidget")->currentIndex(), 0);
        QCOMPARE(bench.Row("coldTestResult", 0), QString("冷启动测试结果 - - -"));
        QCOMPARE(bench.Row("hotTestResult", 0), QString("热启动测试结果 - - -"));
        for (const char* table : {"coldTestResult", "hotTestResult"}) {
            QCOMPARE(bench.Row(table, 1), QString("测试次数 定位次数 成功率 -"));
            QCOMPARE(bench.Row(table, 3), QString("TTFF_68% TTFF_95% TTFF_MAX TTFF_AVG"));
            QCOMPARE(bench.Row(table, 5), QString("CEP_68% CEP_95% CEP_MAX CEP_AVG"));
        }
        QCOMPARE(bench.Row("latestData", 0), QString("最新定位数据 - - -"));
        QCOMPARE(bench.Row("latestData", 1), QString("日期 时间 HDOP INUSE"));
        QCOMPARE(bench.Row("latestData", 3), QString("纬度 经度 高度 速度"));
        QCOMPARE(bench.Row("satData", 0), QString("卫星信息 - - - - - -"));
        QCOMPARE(bench.Row("satData", 1), QString("- Total GPS L1 BDS B1i GAL E1 GLO G1 QZSS L1"));
        QCOMPARE(bench.Row("satData", 4), QString("Top5 Cn0 - - - - - -"));
        const QList<QTableWidget*> tables = bench.window->findChildren<QTableWidget*>();
        QCOMPARE(tables.size(), 4);
        for (const QTableWidget* table : tables) {
            QCOMPARE(table->columnSpan(0, 0), table->columnCount());
            QVERIFY(table->horizontalHeader()->isHidden() && table->verticalHeader()->isHidden());
            QCOMPARE(table->verticalHeader()->sectionResizeMode(0), QHeaderView::Stretch);
            QCOMPARE(table->item(1, 1)->data(Qt::TextAlignmentRole).toInt(), 132);
        }
        for (const char* box :
             {"checkBox_coldAgnss", "checkBox_coldPgnss", "checkBox_hotAgnss", "checkBox_hotPgnss"}) {
            QVERIFY(!bench.Find<QCheckBox>(box)->isEnabled());
        }
        QVERIFY(bench.Find<QPushButton>("saveTestCfg")->styleSheet().contains("rgb(202, 251, 255)"));
        QVERIFY(bench.Find<QLabel>("label_2")->styleSheet().contains("rgb(170, 255, 0)"));
        QVERIFY(bench.Find<QLineEdit>("hotTestNum")->text().isEmpty());
    }

    void TheSlotsSendTheirFrames()
    {
        Bench bench;
        for (const char* slot :
             {"SlotEditStopBtnClicked", "SlotSendColdStart", "SlotSendHotStart", "SlotSendAllNmeaRpt"}) {
            QVERIFY(QMetaObject::invokeMethod(bench.window.get(), slot));
        }
        QCOMPARE(bench.sender.frames, (QList<QByteArray>{stopFrame, coldFrame, hotFrame, nmeaFrame}));
        bool result = true;
        QVERIFY(
            QMetaObject::invokeMethod(bench.window.get(), "SlotEditStartBtnClicked", Q_RETURN_ARG(bool, result)));
        QVERIFY(!result);
        QCOMPARE(bench.sender.frames.size(), 4);
        const QMetaObject* meta = bench.window->metaObject();
        QCOMPARE(meta->indexOfSlot("ChangeRefLocWhileCbxIdxChange(int)") -
                     meta->indexOfSlot("SlotEditStartBtnClicked()"),
                 10);
    }

    void ASeriesWithItsTables()
    {
        Bench bench;
        QSignalSpy wakeUps(bench.window.get(), &KpiViewWin::SendWakeUpCmd);
        bench.Set("refPosLat", "47");
        bench.Set("refPosLon", "8");
        bench.Set("refPosAlt", "x");
        bench.StartHot("2");
        QCOMPARE(bench.ButtonText(), QString("停止测试"));
        QVERIFY(bench.Locked());
        QCOMPARE(bench.sender.frames, (QList<QByteArray>{nmeaFrame, hotFrame, startFrame}));
        QCOMPARE(wakeUps.count(), 1);
        bench.Fix(0.0); // the seconds before the first record
        QCOMPARE(bench.Row("hotTestResult", 6), QString("- - - -"));
        bench.Fix(1.0);
        QCOMPARE(bench.Row("hotTestResult", 6), QString("0.00 0.00 0.00 0.00"));
        QCOMPARE(bench.Row("latestData", 2), QString("2026-3-14 0:0:1 0 -"));
        QCOMPARE(bench.Row("latestData", 4), QString("47.00000000N 8.00000000E 0.00m 0.00m/s"));
        const QByteArray satellites("\x02G\0\1\x28"
                                    "C\0\0\x20\0",
                                    10);
        bench.window->OnKpiCn0(satellites.constData(), satellites.size());
        QCOMPARE(bench.Row("satData", 2), QString("跟踪 2 1 1 - - -"));
        QCOMPARE(bench.Row("satData", 3), QString("使用 1 1 0 - - -"));
        QCOMPARE(bench.Row("satData", 4), QString("Top5 Cn0 36 40 32 - - -"));
        QCOMPARE(bench.Row("latestData", 2), QString("2026-3-14 0:0:1 0 1"));
        QTRY_COMPARE_WITH_TIMEOUT(bench.sender.frames.size(), 6, 10000);
        QCOMPARE(bench.Row("hotTestResult", 2), QString("2 1 100.00% -"));
        bench.Fix(2.0, -47.0, -8.0);
        QTRY_COMPARE_WITH_TIMEOUT(bench.ButtonText(), QString("开始测试"), 10000);
        QCOMPARE(bench.sender.frames.mid(3), (QList<QByteArray>{stopFrame, hotFrame, startFrame, stopFrame}));
        QVERIFY(!bench.Locked()); // the disabled boxes are free now
        QCOMPARE(bench.Row("hotTestResult", 2), QString("2 2 100.00% -"));
        QVERIFY(bench.Row("latestData", 4).startsWith("47.00000000S 8.00000000W"));

        const BoxAnswerer answerer;
        bench.Click("saveTestResult");
        QCOMPARE(answerer.boxes, QStringList("提示|测试结果保存成功"));
        const QStringList lines = QString::fromUtf8(Content("testResult.csv")).split('\n');
        QCOMPARE(lines[2], QString("0,0,0,0,0,0,0,0,0,0,0,"));
        QVERIFY(lines[5].startsWith("2,2,100.00%,") && lines[5].count(',') == 11);

        // The next run begins with empty cells.
        bench.Set("hotTestNum", "0");
        bench.Click("pushButton_2");
        QCOMPARE(bench.Row("hotTestResult", 2), QString("- - - -"));
        QCOMPARE(bench.Row("latestData", 4), QString("- - - -"));
        QCOMPARE(bench.Row("satData", 4), QString("Top5 Cn0 - - - - - -"));
    }

    void RecordsOutsideARunAndThoseThatLie()
    {
        Bench bench;
        bench.Fix(5.0);
        QCOMPARE(bench.Row("latestData", 2), QString("- - - -"));
        bench.StartHot();
        bench.window->OnKpiFix(nullptr, 64);
        bench.window->OnKpiFix("", 0);
        bench.window->OnKpiCn0(nullptr, 5);
        QCOMPARE(bench.Row("latestData", 2), QString("- - - -"));
        // Lengths that are too short, too long or negative; each buffer is of exactly its own size.
        for (const std::size_t size : {std::size_t(1), std::size_t(7), sizeof(gnss::KpiFixRecord),
                                       std::size_t(KpiSatellites::largestRecord)}) {
            const auto bytes = std::make_unique<char[]>(size);
            std::fill_n(bytes.get(), size, '\xff');
            bench.window->OnKpiCn0(bytes.get(), static_cast<int>(size));
            bench.window->OnKpiFix(bytes.get(), static_cast<int>(size));
            bench.window->OnKpiCn0(bytes.get(), -1);
        }
        const QByteArray large(KpiSatellites::largestRecord, 'G');
        bench.window->OnKpiCn0(large.constData(), 1000000000);
        bench.window->OnKpiFix(large.constData(), 1000000000);
        QVERIFY(bench.Row("latestData", 4).endsWith("m/s"));
    }

    void StopAndWarnings()
    {
        Bench bench;
        const BoxAnswerer answerer;
        bench.Click("pushButton_2");
        QCOMPARE(answerer.boxes, QStringList("错误|请勾选要执行的测试"));
        QCOMPARE(bench.ButtonText(), QString("开始测试"));
        bench.StartHot();
        bench.Click("pushButton_2");
        QCOMPARE(bench.sender.frames.last(), stopFrame);
        QCOMPARE(bench.ButtonText(), QString("开始测试"));
        QVERIFY(!bench.Locked());
        Global::positioningStarted = true;
        bench.Click("pushButton_2");
        QCOMPARE(answerer.boxes.last(), QString("错误|当前已经启动，请勿重复操作"));
        QVERIFY(bench.Locked());
        QCOMPARE(bench.ButtonText(), QString("开始测试"));
    }

    void ADestroyedWindowStopsItsRun()
    {
        Bench bench;
        bench.StartHot();
        bench.sender.frames.clear();
        bench.window.reset();
        QCOMPARE(bench.sender.frames, QList<QByteArray>{stopFrame});
        bench.sender.frames.clear();
        bench.window = std::make_unique<KpiViewWin>(nullptr);
        bench.sender.Listen(bench.window.get());
        bench.window.reset();
        QVERIFY(bench.sender.frames.isEmpty());
    }

    void TheWindowMayGoInsideItsOwnStart_data()
    {
        QTest::addColumn<int>("at");
        QTest::newRow("first wait") << 30;
        QTest::newRow("second wait") << 125;
    }

    void TheWindowMayGoInsideItsOwnStart()
    {
        QFETCH(int, at);
        Bench bench;
        QTimer::singleShot(at, bench.window.get(), [&bench] { bench.window.reset(); });
        bench.StartHot();
        QVERIFY(bench.window == nullptr);
        QCOMPARE(bench.sender.frames.last(), stopFrame);
    }

    void TheWindowMayGoAtItsOwnSend()
    {
        for (int number = 1; number <= 3; ++number) {
            Bench bench;
            int sent = 0;
            bench.sender.acknowledge = [&] {
                if (++sent == number) {
                    bench.window.reset();
                }
            };
            bench.StartHot();
            QVERIFY(bench.window == nullptr);
        }
    }

    void TheWindowMayGoWithItsBoxes()
    {
        for (const char* button : {"pushButton_2", "saveTestCfg", "saveTestResult"}) {
            Bench bench;
            QTimer::singleShot(50, bench.window.get(), [&bench] { bench.window.reset(); });
            bench.Click(button);
            QVERIFY(bench.window == nullptr);
        }
    }

    void TheConfigurationTravels()
    {
        {
            Bench bench;
            const BoxAnswerer answerer;
            bench.Tick("checkBox_coldStart");
            bench.Find<QCheckBox>("checkBox_hotPgnss")->setChecked(true);
            const char* edits[] = {"coldTestNum", "coldTestTimeout", "coldTestInr", "coldTestTrkTime",
                                   "hotTestNum",  "hotTestTimeout",  "hotTestInr"};
            for (int i = 0; i < 7; ++i) {
                bench.Set(edits[i], QString::number(i + 1));
            }
            bench.Click("saveTestCfg");
            QCOMPARE(answerer.boxes, QStringList("提示|测试配置保存成功"));
        }
        const Bench bench;
        QVERIFY(bench.Find<QCheckBox>("checkBox_coldStart")->isChecked());
        QVERIFY(!bench.Find<QCheckBox>("checkBox_hotStart")->isChecked());
        QVERIFY(bench.Find<QCheckBox>("checkBox_hotPgnss")->isChecked());
        QVERIFY(!bench.Find<QCheckBox>("checkBox_hotPgnss")->isEnabled());
        QCOMPARE(bench.Find<QLineEdit>("coldTestInr")->text(), QString("3"));
        QCOMPARE(bench.Find<QLineEdit>("hotTestTimeout")->text(), QString("6"));
        QCOMPARE(bench.Find<QLineEdit>("hotTestTrkTime")->text(), QString("0"));
    }

    void SavingWhereNothingCanBeWritten()
    {
        QDir().mkdir("Config.ini");
        QDir().mkdir("testResult.csv");
        const Bench bench;
        const BoxAnswerer answerer;
        bench.Click("saveTestCfg");
        bench.Click("saveTestResult");
        QCOMPARE(answerer.boxes, QStringList({"提示|测试配置保存成功", "提示|测试结果保存成功"}));
    }

    void ReferencePlaces()
    {
        Write("refLoc.ini", "[RefLoc_1]\nrefLocAlt=3\nrefLocLat=2\nrefLocLon=1\nrefLocName=屋顶\n\n"
                            "[RefLoc_2]\nrefLocAlt=6\nrefLocLat=5\nrefLocLon=4\nrefLocName=second\n");
        const Bench bench;
        const BoxAnswerer answerer;
        auto* box = bench.Find<QComboBox>("comboBox");
        const auto shown = [&bench] {
            return bench.Find<QLineEdit>("refPosLon")->text() + ' ' + bench.Find<QLineEdit>("refPosLat")->text() +
                   ' ' + bench.Find<QLineEdit>("refPosAlt")->text();
        };
        QCOMPARE(box->count(), 2);
        QCOMPARE(box->itemText(0), QString("屋顶"));
        QCOMPARE(box->currentIndex(), 0);
        QCOMPARE(shown(), QString("4 5 6")); // the last one
        box->setCurrentIndex(1);
        box->setCurrentIndex(0);
        QCOMPARE(shown(), QString("1 2 3"));

        bench.Click("AddRefLoc");
        auto* dialog = bench.window->findChild<QWidget*>("refLocWin");
        QVERIFY(dialog != nullptr && dialog->isVisible());
        const QList<QLineEdit*> edits = dialog->findChildren<QLineEdit*>();
        edits[0]->setText("third");
        edits[1]->setText("7");
        edits[2]->setText("8");
        dialog->findChildren<QPushButton*>()[0]->click();
        QCOMPARE(box->currentText(), QString("third"));
        QCOMPARE(shown(), QString("7 8 ")); // as typed; the file has 0
        QVERIFY(Content("refLoc.ini").contains("refLocName=屋顶\n"));
        box->setCurrentIndex(1);
        box->setCurrentIndex(2);
        QCOMPARE(shown(), QString("7 8 "));
        QVERIFY(QMetaObject::invokeMethod(bench.window.get(), "ChangeRefLocWhileCbxIdxChange", Q_ARG(int, 99)));
        QCOMPARE(shown(), QString("  "));
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(TestKpiWindow)
#include "tst_kpiwindow.moc"
