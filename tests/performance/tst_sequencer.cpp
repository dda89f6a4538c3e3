// SPDX-License-Identifier: MIT
#include "SimulatedHost.h"

#include <QtTest>

#include <limits>

namespace {

/// A host whose receiver reports a fix every second, beginning some seconds after each start frame.
class FixingHost : public SimulatedHost {
public:
    explicit FixingHost(double secondsToFix = 15.0)
    {
        config = {2, 60, 3, 5, 2, 60, 3, 5};
        toTheReceiver = [this, secondsToFix](protocol::ReadyFrame frame) {
            if (frame == protocol::ReadyFrame::Start || frame == protocol::ReadyFrame::Stop) {
                m_fixAt =
                    frame == protocol::ReadyFrame::Stop ? -1 : now + static_cast<qint64>(secondsToFix * 1000.0);
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

    /// Clicks the start button at some moments while the fixes go on.
    void ClickAt(const QList<qint64>& moments)
    {
        atEveryStep = [this, fixes = atEveryStep, moments] {
            fixes();
            if (moments.contains(now)) {
                sequencer.StartStopClicked();
            }
        };
    }

    /// The state, the timers with their next times, and the form.
    QString State() const
    {
        QString text =
            QStringList{"idle", "waiting", "timed out", "tracking", "gap"}.value(int(sequencer.State()));
        for (const KpiTimer timer : timers.keys()) {
            text +=
                QStringList{", timeout ", ", track ", ", delay "}.at(int(timer)) + QString::number(timers[timer]);
        }
        return text + (sequencer.TestRunning() ? ", running" : "") + (running ? ", stop" : "") +
               (locked ? ", locked" : "");
    }

    /// Counts, times and errors of a kind.
    QString Table(const QString& kind) const { return Row(kind, 2) + " | " + Row(kind, 4) + " | " + Row(kind, 6); }

private:
    qint64 m_fixAt = -1;
};

const QString coldTest = " cold wake start stop";
const QString hotTest = " hot wake start stop";

} // namespace

class TestKpiSequencer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void HotStartsRunBeforeColdOnes()
    {
        FixingHost host(9.9);
        host.Start(true, true);
        QVERIFY(host.RunToTheEnd(200));
        QCOMPARE(host.Done(), "nmea" + hotTest + hotTest + coldTest + coldTest);
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Done);
        QCOMPARE(host.State(), QString("idle"));
        QCOMPARE(host.Table("Hot"), QString("2 2 100.00% | 9.78 9.78 9.78 9.78 | 0.00 0.00 0.00 0.00"));
        // Too quick for a cold start: it counts as fixed and has an error, but no time.
        QCOMPARE(host.Table("Cold"), QString("2 2 100.00% |  | 0.00 0.00 0.00 0.00"));
    }

    void OneKindKeepsItsModeAndTheOtherKindsCounts()
    {
        FixingHost host;
        host.Start(true, false);
        QVERIFY(host.RunToTheEnd(100));
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Cold);
        QCOMPARE(host.Done(), "nmea" + coldTest + coldTest);
        QCOMPARE(host.Row("Cold", 4), QString("14.88 14.88 14.88 14.88"));
        host.Start(false, true);
        QVERIFY(host.sequencer.Statistics().Ttff(KpiTestMode::Cold).empty());
        QVERIFY(host.RunToTheEnd(100));
        QCOMPARE(host.sequencer.Mode(), KpiTestMode::Hot);
        // A slow hot start has no time either.
        QCOMPARE(host.Table("Hot"), QString("2 2 100.00% |  | 0.00 0.00 0.00 0.00"));
    }

    void StatesAndTimersOfOneTest()
    {
        FixingHost host;
        host.config.coldNum = 1;
        host.Start(true, false);
        QCOMPARE(host.State(), QString("waiting, timeout 60150, running, stop, locked"));
        QCOMPARE(host.Table("Cold"), QString("1 |  | "));
        host.config.coldTrkTime = 7; // in force from the next look on
        host.Pass(15000);
        QCOMPARE(host.State(), QString("tracking, track 22150, running, stop, locked"));
        QCOMPARE(host.Row("Cold", 2), QString("1"));
        host.Pass(7000);
        QCOMPARE(host.State(), QString("gap, delay 25150, running, stop, locked"));
        QCOMPARE(host.Row("Cold", 2), QString("1 1 100.00%"));
        QVERIFY(host.sequencer.Accepts());
        host.Pass(3000);
        QCOMPARE(host.State(), QString("idle"));
        QCOMPARE(host.Done(), "nmea" + coldTest);
    }

    void TestsWithoutAFix()
    {
        FixingHost host;
        host.config = {1, 20, 3, 5, 3, 20, 3, 5};
        host.Start(true, true);
        host.Pass(15000 + 5000);
        QCOMPARE(host.Row("Hot", 2), QString("1 1 100.00%"));
        host.atEveryStep = [] {};
        // The rate has two formats.
        for (const char* row : {"2 1 50%", "3 1 33.3333%"}) {
            host.Pass(3150 + 20000);
            QCOMPARE(host.Row("Hot", 2), QString(row));
            QVERIFY(host.State().startsWith("timed out, delay ") && !host.sequencer.Accepts());
        }
        host.Pass(3150 + 20000);
        QCOMPARE(host.Table("Cold"), QString("1  0% |  | "));
        host.Pass(3000);
        QCOMPARE(host.Table("Cold"), QString("1 0 0% | 0.0 0.0 0.0 0.0 | 0.0 0.0 0.0 0.0"));
        QCOMPARE(host.Done(), "nmea" + hotTest + hotTest + hotTest + coldTest);
    }

    void TheSecondsOfTheLastRecordAreNoFix()
    {
        FixingHost host;
        host.atEveryStep = [] {};
        host.Start(true, false);
        host.Report(0.0); // as at the beginning
        host.Report(1e-16);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(7.0);
        QCOMPARE(host.sequencer.State(), KpiTestState::Tracking);
        host.Pass(5000);
        host.Report(8.0); // the gap follows the records
        host.Pass(3150);
        host.Report(8.0);
        QCOMPARE(host.sequencer.State(), KpiTestState::WaitFix);
        host.Report(std::numeric_limits<double>::quiet_NaN());
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
        QCOMPARE(host.State(), QString("tracking, timeout 60150, track 5060, running, stop, locked"));
        QCOMPARE(host.Row("Hot", 4), QString("-0.12 -0.12 -0.12 -0.12"));
    }

    void AStopInEachWait()
    {
        const QMap<qint64, QString> stops = {{50, "nmea hot stop wake"},
                                             {120, "nmea hot wake stop"},
                                             {5000, "nmea hot wake start stop"},
                                             {17000, "nmea hot wake start stop"},
                                             {22000, "nmea hot wake start stop stop"}};
        for (const qint64 at : stops.keys()) {
            FixingHost host;
            host.ClickAt({at});
            host.Start(false, true);
            host.Pass(100000);
            QCOMPARE(host.Done(), stops[at]);
            QCOMPARE(host.State(), QString("idle"));
            // And from there anew.
            host.Start(false, true);
            QVERIFY(host.RunToTheEnd(200));
            QVERIFY(host.Row("Hot", 2).startsWith("2 2 "));
        }
        // And a start behind it inside the same wait.
        FixingHost host;
        host.ClickAt({40, 60});
        host.Start(false, true);
        QCOMPARE(host.Done(), QString("nmea hot stop nmea hot wake start"));
        QVERIFY(host.RunToTheEnd(200));
        QCOMPARE(host.Row("Hot", 2), QString("2 2 100.00%"));
    }

    void AFailedStartFrameLeavesTheTestHanging()
    {
        FixingHost host;
        host.encodes = false;
        host.Start(true, false);
        host.Pass(1000000);
        QCOMPARE(host.State(), QString("waiting, running, stop, locked"));
        host.encodes = true;
        host.sequencer.StartStopClicked();
        QCOMPARE(host.Done() + ' ' + host.State(), QString("wake stop idle"));
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
#include "tst_sequencer.moc"
