// SPDX-License-Identifier: MIT
#include "TestReceiver.h"
#include "WindowTest.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTableWidget>

namespace {

/// The main window with its port open on the receiver and the performance test filled in.
class KpiRoad : public TestReceiver, public WindowTest {
public:
    KpiRoad(const QStringList& options, const QString& starts, const QString& timeout)
        : TestReceiver(QStringList{"--rate", "10", "--idle", "--memory", "kept"} + options),
          WindowTest(0, 2, link, WindowTest::Codec::Own)
    {
        OpenPort(link);
        QVERIFY(ready && Global::serialOpen);
        WindowTest::Click("性能测试视图");
        view = SubWindow("KpiViewWin")->widget();
        const QStringList texts = {"refPosLat",   "47.3977", "refPosLon",       "8.5456", "refPosAlt",       "408",
                                   "coldTestNum", starts,    "coldTestTimeout", timeout,  "coldTestTrkTime", "1",
                                   "hotTestNum",  starts,    "hotTestTimeout",  timeout,  "hotTestTrkTime",  "1"};
        for (int i = 0; i < texts.size(); i += 2) {
            view->findChild<QLineEdit*>(texts[i])->setText(texts[i + 1]);
        }
        for (const char* box : {"checkBox_coldStart", "checkBox_hotStart"}) {
            view->findChild<QCheckBox*>(box)->setChecked(true);
        }
    }

    void Click(const char* name) const { view->findChild<QPushButton*>(name)->click(); }
    bool Runs() const { return view->findChild<QPushButton*>("pushButton_2")->text() == "停止测试"; }
    QString Cell(const char* table, int row, int column) const
    {
        const QTableWidgetItem* cell = view->findChild<QTableWidget*>(table)->item(row, column);
        return cell != nullptr ? cell->text() : QString();
    }

    QPointer<QWidget> view;
};

} // namespace

class TestKpiRoad : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ASeriesInRealTime()
    {
        const KpiRoad road({"--ttff-cold", "2,0.2", "--ttff-hot", "0.5,0.1"}, "2", "60");
        road.Click("pushButton_2");
        QVERIFY(road.Runs());
        QVERIFY(QTest::qWaitFor([&] { return !road.Runs(); }, 120000));
        for (const char* table : {"hotTestResult", "coldTestResult"}) {
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
        const QList<QByteArray> lines = Content("testResult.csv").split('\n');
        QVERIFY(lines[2].startsWith("2,2,100.00%,0,0,0,0,"));
        QVERIFY(lines[5].startsWith("2,2,100.00%,"));
    }

    void TheViewOrTheWholeWindowGoesInAStart()
    {
        for (const bool whole : {false, true}) {
            const QTemporaryDir folder;
            KpiRoad road({"--ttff-hot", "30,0", "--transcript", folder.filePath("heard")}, "2", "60");
            const BoxAnswerer answerer;
            QTimer::singleShot(30, [&] { whole ? road.window.reset() : road.Area()->closeAllSubWindows(); });
            road.Click("pushButton_2");
            QTRY_VERIFY_WITH_TIMEOUT(road.view.isNull(), 10000);
            QTest::qWait(50);
            QVERIFY(answerer.boxes.isEmpty());
            // A view that is closed stops the receiver; no start frame was sent.
            const auto heard = [&] { return Content(folder.filePath("heard")); };
            QTRY_VERIFY(whole || heard().contains("7e040d0002000000000000007e"));
            QVERIFY(!heard().contains("7e04190001000300"));
        }
    }
};

QTEST_MAIN(TestKpiRoad)
#include "tst_road.moc"
