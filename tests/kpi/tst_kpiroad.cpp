#include "TestReceiver.h"
#include "WindowTest.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTableWidget>
#include <QTemporaryDir>

namespace {

/// The main window with its port open on the receiver and the performance test filled in.
class KpiRoad {
public:
    KpiRoad(const QStringList& options, const QString& starts, const QString& timeout)
        : receiver(QStringList{"--rate", "10", "--idle", "--memory", "kept"} + options),
          test(0, 2, receiver.link, WindowTest::Codec::Own)
    {
        test.window->SlotChangePort(receiver.link);
        test.window->SlotSwitchPort();
        test.Click("性能测试视图");
        view = test.SubWindow("KpiViewWin")->widget();
        const std::pair<const char*, QString> texts[] = {
            {"refPosLat", "47.3977"}, {"refPosLon", "8.5456"},      {"refPosAlt", "408"},
            {"coldTestNum", starts},  {"coldTestTimeout", timeout}, {"coldTestTrkTime", "1"},
            {"hotTestNum", starts},   {"hotTestTimeout", timeout},  {"hotTestTrkTime", "1"}};
        for (const auto& text : texts) {
            view->findChild<QLineEdit*>(QLatin1String(text.first))->setText(text.second);
        }
        for (const char* box : {"checkBox_coldStart", "checkBox_hotStart"}) {
            view->findChild<QCheckBox*>(QLatin1String(box))->setChecked(true);
        }
    }

    bool IsOpen() const { return receiver.ready && Global::serialOpen; }
    void Click(const char* name) const { view->findChild<QPushButton*>(QLatin1String(name))->click(); }
    bool Runs() const { return view->findChild<QPushButton*>("pushButton_2")->text() == "停止测试"; }
    QString Cell(const char* table, int row, int column) const
    {
        const QTableWidgetItem* cell = view->findChild<QTableWidget*>(QLatin1String(table))->item(row, column);
        return cell != nullptr ? cell->text() : QString();
    }

    TestReceiver receiver;
    WindowTest test;
    QWidget* view = nullptr;
};

} // namespace

class TestKpiRoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ASeriesInRealTime()
    {
        const KpiRoad road({"--ttff-cold", "2,0.2", "--ttff-hot", "0.5,0.1", "--seed", "7"}, "2", "60");
        QVERIFY(road.IsOpen());
        road.Click("pushButton_2");
        QVERIFY(road.Runs());
        QVERIFY(QTest::qWaitFor([&] { return !road.Runs(); }, 120000));
        for (const char* table : {"hotTestResult", "coldTestResult"}) {
            QCOMPARE(road.Cell(table, 2, 0), QString("2"));
            QCOMPARE(road.Cell(table, 2, 1), QString("2"));
            QCOMPARE(road.Cell(table, 2, 2), QString("100.00%"));
            const double worst = road.Cell(table, 6, 2).toDouble();
            QVERIFY2(worst > 0.0 && worst < 10.0, qPrintable(road.Cell(table, 6, 2)));
        }
        const double ttff = road.Cell("hotTestResult", 4, 2).toDouble();
        QVERIFY2(ttff > 0.1 && ttff < 5.0, qPrintable(road.Cell("hotTestResult", 4, 2)));
        // So quick a cold start has no time.
        QCOMPARE(road.Cell("coldTestResult", 4, 0), QString());
        QVERIFY(road.Cell("latestData", 4, 0).startsWith("47.39"));
        QVERIFY(road.Cell("latestData", 4, 1).endsWith("E"));
        QVERIFY(road.Cell("satData", 2, 1).toInt() > 10);
        QVERIFY(road.Cell("satData", 4, 2).toInt() > 20);

        const BoxAnswerer answerer;
        road.Click("saveTestResult");
        const QList<QByteArray> lines = WindowTest::Content("testResult.csv").split('\n');
        QVERIFY(lines[2].startsWith("2,2,100.00%,0,0,0,0,"));
        QVERIFY(lines[5].startsWith("2,2,100.00%,"));
    }

    void TheViewIsClosedInAStart()
    {
        const QTemporaryDir folder;
        const QString transcript = folder.filePath("transcript");
        const KpiRoad road({"--ttff-hot", "30,0", "--transcript", transcript}, "2", "60");
        QVERIFY(road.IsOpen());
        auto* sub = road.test.SubWindow("KpiViewWin");
        QTimer::singleShot(120, sub, &QMdiSubWindow::close);
        road.Click("pushButton_2");
        QTRY_VERIFY_WITH_TIMEOUT(road.test.SubWindow("KpiViewWin") == nullptr, 10000);
        // The stop frame is the last that the receiver hears; no start frame was sent.
        const auto heard = [&transcript] {
            QByteArray last;
            const QList<QByteArray> lines = WindowTest::Content(transcript).split('\n');
            for (const QByteArray& line : lines) {
                last = line.contains(" > ") ? line : last;
            }
            return last;
        };
        QTRY_VERIFY_WITH_TIMEOUT(heard().contains("7e040d0002000000000000007e"), 10000);
        QVERIFY(!WindowTest::Content(transcript).contains("7e04190001000300"));
        road.test.Click("性能测试视图");
        QVERIFY(road.test.SubWindow("KpiViewWin") != nullptr);
    }

    void TheWholeWindowGoesInARun()
    {
        KpiRoad road({"--ttff-hot", "30,0"}, "2", "60");
        QVERIFY(road.IsOpen());
        road.Click("pushButton_2");
        QVERIFY(road.Runs());
        const BoxAnswerer answerer;
        road.test.window.reset();
        QTest::qWait(50);
        QVERIFY(answerer.boxes.isEmpty());
    }

    void AClosedPortIsToldAtEachFrame()
    {
        const KpiRoad road({}, "1", "0");
        QVERIFY(road.IsOpen());
        road.test.window->SlotSwitchPort();
        const BoxAnswerer answerer;
        road.Click("pushButton_2");
        QVERIFY(QTest::qWaitFor([&] { return !road.Runs(); }, 30000));
        // Once for the NMEA frame, then start, restart and stop of two tests.
        QCOMPARE(answerer.boxes.size(), 7);
        QCOMPARE(answerer.boxes.first(), QString("GNSS|Please open port before send packet!"));
        QCOMPARE(road.Cell("hotTestResult", 2, 2), QString("0%"));
        QCOMPARE(road.Cell("coldTestResult", 4, 3), QString("0.0"));
    }
};

QTEST_MAIN(TestKpiRoad)
#include "tst_kpiroad.moc"
