#include "SimulatedHost.h"

#include <QtTest>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A host whose receiver reports a fix every second, beginning some seconds after each start frame.
class FixingHost : public SimulatedHost {
public:
    explicit FixingHost(double secondsToFix = 15.0)
    {
        config = {2, 60, 3, 5, 2, 60, 3, 5};
        toTheReceiver = [this, secondsToFix](KpiFrame frame) {
            if (frame == KpiFrame::Start) {
                m_fixAt = now + static_cast<qint64>(secondsToFix * 1000.0);
            } else if (frame == KpiFrame::Stop) {
                m_fixAt = -1;
            }
        };
        atEveryStep = [this] {
            if (m_fixAt >= 0 && now >= m_fixAt && (now - m_fixAt) % 1000 == 0) {
                Report(static_cast<double>(now) / 1000.0);
            }
        };
    }

    /// A record as the window hands it in.
    void Report(double seconds)
    {
        if (sequencer.Accepts()) {
            sequencer.OnPosition(seconds, {0.0, 0.0, 100.0});
        }
    }

    void Start(bool coldTicked, bool hotTicked)
    {
        cold = coldTicked;
        hot = hotTicked;
        sequencer.StartStopClicked();
    }

private:
    qint64 m_fixAt = -1;
};

const QString coldTest = "cold wake start stop";
const QString hotTest = "hot wake start stop";

} // namespace

class TestKpiSequencer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void HotStartsRunBeforeColdOnes()
    {
        FixingHost host(9.9);
        host.Start(true, true);
        QVERIFY(host.running && host.locked);
        QVERIFY(host.RunToTheEnd(200));
        QCOMPARE(host.Done(), QStringList({"nmea", hotTest, hotTest, coldTest, coldTest}).join(' '));
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Done);
        QCOMPARE(host.sequencer.State(), KpiTestState::Idle);
        QVERIFY(!host.running && !host.locked && host.timers.isEmpty());
        QCOMPARE(host.Row("Hot", 2), QString("2 2 100.00%"));
        QCOMPARE(host.Row("Hot", 4), QString("9.78 9.78 9.78 9.78"));
        // Too quick for a cold start: it counts as fixed and has an error, but no time.
        QCOMPARE(host.Row("Cold", 2), QString("2 2 100.00%"));
        QCOMPARE(host.Row("Cold", 4), QString());
        QVERIFY(!host.Row("Cold", 6).isEmpty());
        QCOMPARE(host.sequencer.Statistics().Cep(KpiTestMode::Cold).size(), std::size_t(2));
    }

    void OneKindKeepsItsModeAndTheOtherKindsCounts()
    {
        FixingHost host;
        host.Start(true, false);
        QVERIFY(host.RunToTheEnd(100));
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Cold);
        QCOMPARE(host.Done(), QStringList({"nmea", coldTest, coldTest}).join(' '));
        QCOMPARE(host.Row("Cold", 4), QString("14.88 14.88 14.88 14.88"));
        host.Start(false, true);
        QVERIFY(host.sequencer.Statistics().Ttff(KpiTestMode::Cold).empty());
        QVERIFY(host.RunToTheEnd(100));
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Hot);
        // A slow hot start has no time either.
        QCOMPARE(host.Row("Hot", 2), QString("2 2 100.00%"));
        QCOMPARE(host.Row("Hot", 4), QString());
    }

    void StatesAndTimersOfOneTest()
    {
        FixingHost host;
        host.config.coldNum = 1;
        host.Start(true, false);
        const qint64 begun = host.now;
        QCOMPARE(begun, 150);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        QCOMPARE(host.timers, (QMap<KpiTimer, qint64>{{KpiTimer::Timeout, begun + 60000}}));
        QCOMPARE(host.cells, (QMap<QString, QString>{{"Cold 2 0", "1"}}));
        host.config.coldTrkTime = 7; // in force from the next look on
        host.Pass(15000);
        QCOMPARE(host.sequencer.State(), KpiTestState::Tracking);
        QCOMPARE(host.timers, (QMap<KpiTimer, qint64>{{KpiTimer::Track, begun + 22000}}));
        QVERIFY(!host.cells.contains("Cold 2 1"));
        host.Pass(7000);
        QCOMPARE(host.sequencer.State(), KpiTestState::Gap);
        QCOMPARE(host.timers, (QMap<KpiTimer, qint64>{{KpiTimer::Delay, begun + 25000}}));
        QCOMPARE(host.Row("Cold", 2), QString("1 1 100.00%"));
        QVERIFY(host.sequencer.Accepts());
        host.Pass(3000);
        QVERIFY(!host.sequencer.TestRunning());
        QCOMPARE(host.Done(), "nmea " + coldTest);
    }

    void AReceiverThatNeverFixes()
    {
        FixingHost host(1e6);
        host.config.coldNum = 1;
        host.Start(true, true);
        host.Pass(60000);
        QCOMPARE(host.sequencer.State(), KpiTestState::TimedOut);
        QVERIFY(!host.sequencer.Accepts());
        QCOMPARE(host.Row("Hot", 2), QString("1  0%"));
        host.Pass(3000);
        QCOMPARE(host.Row("Hot", 2), QString("2 0 0%"));
        QCOMPARE(host.Row("Hot", 4), QString("0.0 0.0 0.0 0.0"));
        QCOMPARE(host.Row("Hot", 6), QString("0.0 0.0 0.0 0.0"));
        QCOMPARE(host.Row("Cold", 4), QString());
        QVERIFY(host.RunToTheEnd(200));
        QCOMPARE(host.Row("Cold", 2), QString("1 0 0%"));
        QCOMPARE(host.Row("Cold", 6), QString("0.0 0.0 0.0 0.0"));
        QCOMPARE(host.Done(), QStringList({"nmea", hotTest, hotTest, coldTest}).join(' '));
    }

    void TheRateHasTwoFormats()
    {
        FixingHost host;
        host.config.hotNum = 3;
        host.config.hotTimeout = 20;
        host.Start(false, true);
        host.Pass(15000 + 5000);
        QCOMPARE(host.Row("Hot", 2), QString("1 1 100.00%"));
        host.atEveryStep = [] {};
        host.Pass(3150 + 20000);
        QCOMPARE(host.Row("Hot", 2), QString("2 1 50%"));
        host.Pass(3150 + 20000);
        QCOMPARE(host.Row("Hot", 2), QString("3 1 33.3333%"));
    }

    void TheSecondsOfTheLastRecordAreNoFix()
    {
        FixingHost host;
        host.atEveryStep = [] {};
        host.Start(true, false);
        host.Report(0.0); // as at the beginning
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(1e-16);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(7.0);
        QCOMPARE(host.sequencer.State(), KpiTestState::Tracking);
        host.Pass(5000);
        host.Report(8.0); // the gap follows the records
        host.Pass(3150);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(8.0);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(notANumber);
        QCOMPARE(host.sequencer.State(), KpiTestState::Tracking);
    }

    void ARecordInsideTheStartIsAFixSinceTheLastStart()
    {
        FixingHost host;
        host.atEveryStep = [&host] {
            if (host.now == 60) {
                host.Report(1.0);
            }
        };
        host.Start(false, true);
        // The start goes on, and its timeout runs beside the tracking time.
        QCOMPARE(host.Done(), QString("nmea hot wake start"));
        QCOMPARE(host.sequencer.State(), KpiTestState::Tracking);
        QVERIFY(host.timers.contains(KpiTimer::Timeout) && host.timers.contains(KpiTimer::Track));
        QCOMPARE(host.Row("Hot", 4), QString("-0.12 -0.12 -0.12 -0.12"));
    }

    void AStopInEachWait_data()
    {
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("done");
        QTest::newRow("before the wake-up") << 50 << "nmea hot stop wake";
        QTest::newRow("after the wake-up") << 120 << "nmea hot wake stop";
        QTest::newRow("waiting for the fix") << 5000 << "nmea hot wake start stop";
        QTest::newRow("tracking") << 17000 << "nmea hot wake start stop";
        QTest::newRow("in the gap") << 22000 << "nmea hot wake start stop stop";
    }

    void AStopInEachWait()
    {
        QFETCH(int, at);
        QFETCH(QString, done);
        FixingHost host;
        const auto fixes = host.atEveryStep;
        host.atEveryStep = [&] {
            fixes();
            if (host.now == at) {
                host.sequencer.StartStopClicked();
            }
        };
        host.Start(false, true);
        host.Pass(100000);
        QCOMPARE(host.Done(), done);
        QCOMPARE(host.sequencer.State(), KpiTestState::Idle);
        QVERIFY(!host.sequencer.TestRunning() && !host.running && !host.locked && host.timers.isEmpty());
        QVERIFY(!host.Row("Hot", 2).isEmpty());
        // And from there anew.
        host.atEveryStep = fixes;
        host.Start(false, true);
        QVERIFY(host.RunToTheEnd(200));
        QVERIFY(host.Row("Hot", 2).startsWith("2 2 "));
    }

    void AStopAndAStartInsideOneWait()
    {
        FixingHost host;
        const auto fixes = host.atEveryStep;
        host.atEveryStep = [&] {
            fixes();
            if (host.now == 40 || host.now == 60) {
                host.sequencer.StartStopClicked();
            }
        };
        host.Start(false, true);
        QCOMPARE(host.Done(), QString("nmea hot stop nmea hot wake start"));
        QVERIFY(host.RunToTheEnd(200));
        QCOMPARE(host.Row("Hot", 2), QString("2 2 100.00%"));
    }

    void NothingToDo()
    {
        FixingHost host;
        host.Start(false, false);
        QCOMPARE(host.Done(), QString("nmea nothing-ticked"));
        QVERIFY(!host.running && !host.locked && !host.sequencer.TestRunning());

        host.config = {};
        host.Start(true, true);
        QCOMPARE(host.Done(), QString("nmea"));
        QVERIFY(!host.running && !host.locked && !host.sequencer.TestRunning());
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Done);
        QVERIFY(host.cells.isEmpty());
    }

    void PositioningThatRunsAlreadyLocksTheForm()
    {
        FixingHost host;
        host.positioningStarted = true;
        host.Start(true, false);
        QCOMPARE(host.Done(), QString("already-started"));
        QVERIFY(host.locked && !host.running && !host.sequencer.TestRunning());
        host.positioningStarted = false;
        host.Start(true, false);
        host.positioningStarted = true;
        host.sequencer.StartStopClicked();
        QVERIFY(!host.locked && host.sequencer.TestRunning());
        QVERIFY(host.RunToTheEnd(200));
        QVERIFY(!host.locked);
    }

    void AFailedStartFrameLeavesTheTestHanging()
    {
        FixingHost host;
        host.encodes = false;
        host.Start(true, false);
        host.Pass(1000000);
        QVERIFY(host.sequencer.TestRunning() && host.timers.isEmpty());
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.encodes = true;
        host.sequencer.StartStopClicked();
        QCOMPARE(host.Done(), QString("wake stop"));
        QCOMPARE(host.sequencer.State(), KpiTestState::Idle);
    }

    void NothingIsTouchedWhenTheWindowIsGone()
    {
        FixingHost host;
        host.atEveryStep = [&host] { host.gone = true; };
        host.Start(true, false);
        QCOMPARE(host.Done(), QString("nmea cold"));
        QVERIFY(host.timers.isEmpty());
    }

    void NoTimeAtAll()
    {
        // Everything 0: a fix inside the start may end the test and begin the next one there.
        FixingHost host(0.0);
        host.config = {3, 0, 0, 0, 3, 0, 0, 0};
        double seconds = 0;
        host.atEveryStep = [&] { host.Report(++seconds); };
        host.Start(true, true);
        QVERIFY(host.RunToTheEnd(100));
        QVERIFY(host.cells.value("Cold 2 0") == "3" && host.cells.value("Hot 2 0") == "3");
    }
};

QTEST_GUILESS_MAIN(TestKpiSequencer)
#include "tst_kpisequencer.moc"
