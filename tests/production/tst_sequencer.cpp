// SPDX-License-Identifier: MIT
#include "SimulatedStation.h"

#include <QtTest>

namespace {

QByteArray Gga(const char* utc, int quality)
{
    return "$GNGGA," + QByteArray(utc) + ",4723.86,N,00832.73,E," + QByteArray::number(quality) +
           ",20,0.41,408.8,M,0.0,M,,*7B\r\n";
}

QByteArray Signals(int gps, int bds)
{
    return "$GPGSV,1,1,02,03,56,104," + QByteArray::number(gps) + ",4,56,104,3,1*6C\r\n" +
           "$GBGSV,1,1,01,21,56,104," + QByteArray::number(bds) + ",1*6C\r\n";
}

QByteArray Unit(int gps, int bds)
{
    return Gga("120001.00", 1) + Signals(gps, bds) + Gga("120002.00", 2);
}

const QString toTheStart = "0 clear log1 load open start taken wait100";
const QString toTheEnd = " stop offered close";
const QString weakGps = "GPS载噪比小于门限值";

} // namespace

class TestUnitSequencer : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void AUnitPassesOnItsSecondFix()
    {
        SimulatedStation station;
        station.sequencer->StartClicked();
        QCOMPARE(station.Done(), toTheStart);
        QCOMPARE(station.State(), QString("running timeout 60100 read taken open"));
        station.sequencer->StartClicked();
        QCOMPARE(station.Done(), QString());

        station.Pass(12000);
        const QByteArray first = "noise" + Gga("120000.00", 0) + Signals(9, 9) + Gga("120001.00", 1);
        station.Say(first);
        QCOMPARE(station.State(), QString("running read taken open"));
        QCOMPARE(station.Done(), QString("raw epoch epoch"));
        // A batch ends anywhere, and what follows the fix that judges no longer counts.
        const QByteArray last =
            Signals(44, 46) + Gga("120002.00", 1) + Signals(99, 99) + Gga("120003.00", 1) + "$GNGGA,1";
        station.Say(last.left(50));
        station.Say(last.mid(50));
        QCOMPARE(station.Done(), "raw raw epoch 1PASS通过 1/1 shown path row" + toTheEnd + " report epoch");
        QCOMPARE(station.State(), QString("idle"));
        QCOMPARE(station.rows, QStringList{"PN7,44,46,2,1,12,PASS,0,0,40,NA,60,NA,"});
        QCOMPARE(station.verdicts, QStringList{"PASS通过 log1"});
        QCOMPARE(station.rawLogs["log1"], first + last);
        QCOMPARE(station.sentences.size(), 10);
        QVERIFY(station.sentences.first().startsWith("$GNGGA,120000.00") &&
                station.sentences.last().endsWith("*7B"));
    }

    void UnitsAreJudged_data()
    {
        QTest::addColumn<QString>("needed");
        QTest::addColumn<QByteArray>("said");
        QTest::addColumn<QString>("verdict");
        QTest::addColumn<QString>("row"); // from the first C/N0 to the result
        QTest::newRow("reaching") << "gps" << Unit(40, 0) << "1PASS通过"
                                  << "40,0,2,0,10,PASS,0,0,40,NA,";
        QTest::newRow("both") << "gps others" << Unit(40, 41) << "1PASS通过"
                              << "40,41,2,1,10,PASS,0,0,40,41,";
        QTest::newRow("gps first") << "gps others" << Unit(39, 1) << "2" + weakGps
                                   << "39,1,2,1,10,FAILED,0,0,40,41,";
        QTest::newRow("others") << "gps others" << Unit(40, 40) << "3非" + weakGps
                                << "40,40,2,1,10,FAILED,0,0,40,41,";
        QTest::newRow("others alone") << "others" << Unit(0, 40) << "3非" + weakGps
                                      << "3,40,1,1,10,FAILED,0,0,NA,41,";
        QTest::newRow("nothing needed") << "" << Gga("1.00", 1) + Gga("2.00", 1) << "1PASS通过"
                                        << "0,0,0,0,10,PASS,0,0,NA,NA,";
        QTest::newRow("the signals go") << "gps" << Signals(44, 46) + Gga("1.00", 1) + Gga("2.00", 1)
                                        << "2" + weakGps << "0,0,0,0,10,FAILED,0,0,40,NA,";
        // Those that are not judged run into no timeout either.
        QTest::newRow("one time twice") << "" << Gga("1.00", 1) + Gga("1.00", 1) << ""
                                        << "";
        QTest::newRow("midnight") << "" << Gga("235959.00", 1) + Gga("000000.00", 1) + Gga("000001.00", 1) << ""
                                  << "";
        QTest::newRow("the fix goes") << "" << Gga("1.00", 1) + Gga("2.00", 0) << ""
                                      << "";
    }

    void UnitsAreJudged()
    {
        QFETCH(QString, needed);
        QFETCH(QByteArray, said);
        QFETCH(QString, verdict);
        QFETCH(QString, row);
        SimulatedStation station;
        station.form.needGps = needed.contains("gps");
        station.form.needNonGps = needed.contains("others");
        station.form.nonGpsThreshold = 41;
        station.sequencer->StartClicked();
        station.Pass(9990);
        station.Say(said);
        station.Pass(3600000);
        QCOMPARE(station.rows.value(0), row.isEmpty() ? row : "PN7," + row + "60,NA,");
        QCOMPARE(station.verdicts.value(0), row.isEmpty() ? row : verdict.mid(1) + " log1");
        QCOMPARE(station.done.contains(verdict), !verdict.isEmpty());
        QCOMPARE(station.State(), QString(row.isEmpty() ? "running read taken open" : "idle"));
    }

    void WithoutAFixInTimeAUnitFails()
    {
        const QMap<QByteArray, QString> units = {{"", "0,0,0,0"},
                                                 {"$" + QByteArray(200000, 'x'), "0,0,0,0"},
                                                 {Gga("1.00", 0) + Signals(44, 46) + Gga("2.00", 0), "44,46,2,1"}};
        for (const QByteArray& said : units.keys()) {
            SimulatedStation station;
            station.sequencer->StartClicked();
            station.Say(said);
            station.Pass(59980);
            QCOMPARE(station.State(), QString("running timeout 60100 read taken open"));
            station.done.clear();
            station.Pass(10);
            QCOMPARE(station.Done(), "4FAILED不通过" + toTheEnd + " 0/1 shown path row report");
            QCOMPARE(station.State(), QString("idle"));
            QCOMPARE(station.rows, QStringList{"PN7," + units[said] + ",NA,FAILED,0,0,40,NA,60,NA,"});
            QCOMPARE(station.verdicts, QStringList{"FAILED不通过 log1"});
        }
    }

    void ADelayGoesOnRecording()
    {
        SimulatedStation station;
        station.form.delayed = true;
        station.form.delaySeconds = 5;
        station.sequencer->StartClicked();
        station.Say(Unit(44, 46));
        QCOMPARE(station.Done(), toTheStart + " raw epoch epoch 1PASS通过 1/1 shown path row");
        QCOMPARE(station.State(), QString("running delay 5110 read taken open"));
        // Weak signals now have no part in the verdict.
        station.Say(Signals(1, 1) + Gga("120003.00", 1) + Signals(1, 1) + Gga("120004.00", 1));
        station.Pass(4970);
        QCOMPARE(station.Done(), QString("raw epoch epoch"));
        station.Pass(20);
        QCOMPARE(station.Done(), toTheEnd.trimmed() + " report");
        QCOMPARE(station.State(), QString("idle"));
        QCOMPARE(station.rows, QStringList{"PN7,44,46,2,1,0,PASS,0,0,40,NA,60,5,"});
        QVERIFY(station.rawLogs["log1"].contains("120004.00"));

        // A unit that fails has no delay.
        station.sequencer->StartClicked();
        station.Say(Unit(1, 1));
        QCOMPARE(station.State(), QString("idle"));
        QCOMPARE(station.verdicts, (QStringList{"PASS通过 log1", weakGps + " log2"}));
    }

    void SettingsOfTheStartJudgeAndTicksOfTheVerdict()
    {
        SimulatedStation station;
        station.form.nonGpsThreshold = 46;
        station.sequencer->StartClicked();
        UnitRecord& form = station.form;
        form.productNumber = "PN8";
        form.needNonGps = true;
        form.gpsThreshold = form.nonGpsThreshold = 60;
        form.timeoutSeconds = form.delaySeconds = 7;
        form.delayed = true;
        station.Say(Unit(40, 46));
        QCOMPARE(station.rows, QStringList{"PN7,40,46,2,1,0,PASS,0,0,60,60,7,7,"});
        QCOMPARE(station.State(), QString("running delay 110 read taken open"));
    }

    void UnitsFollowEachOther()
    {
        SimulatedStation station;
        const auto next = [&](const QByteArray& said) {
            station.sequencer->StartClicked();
            station.done.clear();
            station.Say(said);
            return station.Done();
        };
        QCOMPARE(next(Unit(44, 46)), "raw epoch epoch 1PASS通过 1/1 shown path row" + toTheEnd + " report");
        QCOMPARE(next(Unit(1, 1)), "raw epoch epoch 2" + weakGps + " 1/2 shown row" + toTheEnd + " report");
        // 70 s do not fit the time as it is kept.
        station.form.timeoutSeconds = 100;
        station.sequencer->StartClicked();
        station.Pass(69990);
        station.Say(Unit(44, 46));
        QVERIFY(station.done.contains("2/3") && station.rows.last().startsWith("PN7,44,46,2,1,4,PASS,"));
        next({});
        station.Pass(100000);
        QVERIFY(station.done.contains("2/4") && station.rows.last().contains(",NA,FAILED,0,0,"));
        // A report that cannot be opened is told, and changes nothing else.
        station.reports = false;
        QVERIFY(next(Unit(44, 46))
                    .endsWith(" 3/5 shown row" + toTheEnd +
                              " report Production test report generation failed: An exception occurred when "
                              "opening the report file"));
        QCOMPARE(station.State(), QString("idle"));
        QCOMPARE(station.rows.size(), 5);
    }

    void AStopInEachState()
    {
        SimulatedStation station;
        station.form.delayed = true;
        station.form.delaySeconds = 5;
        station.sequencer->StopClicked();
        QCOMPARE(station.Done(), QString());
        // Before the test runs it does nothing.
        station.inLoad = station.inWait = [&] { station.sequencer->StopClicked(); };
        station.sequencer->StartClicked();
        QCOMPARE(station.Done(), toTheStart);
        station.inLoad = station.inWait = [] {};

        for (const QByteArray& said : {QByteArray(), Gga("120001.00", 1) + Signals(44, 46), Unit(44, 46)}) {
            station.Say(said);
            QVERIFY(station.sequencer->TestRunning());
            station.done.clear();
            station.sequencer->StopClicked();
            QCOMPARE(station.Done(), toTheEnd.trimmed());
            QCOMPARE(station.State(), QString("idle"));
            station.Pass(100000);
            QCOMPARE(station.Done(), QString());
            station.sequencer->StartClicked();
        }
        // The row was the verdict's own.
        QCOMPARE(station.rows.size(), 1);
        QVERIFY(station.verdicts.isEmpty());
        // What a stop has left behind is not the next unit's: its first fix judges nothing.
        station.Say(Gga("120009.00", 1));
        QVERIFY(station.State().startsWith("running read"));
    }

    void AUnitThatCannotBeStartedIsNotTested()
    {
        SimulatedStation station;
        station.loads = false;
        station.sequencer->StartClicked();
        QCOMPARE(station.Done(), QString("0 clear log1 load"));
        station.loads = true;
        station.opens = false;
        station.sequencer->StartClicked();
        QCOMPARE(station.Done(), QString("0 clear log2 load box"));
        station.Pass(100000);
        QCOMPARE(station.State(), QString("idle"));
        QCOMPARE(station.Done(), QString());
        station.opens = true;
        station.sequencer->StartClicked();
        station.Say(Unit(44, 46));
        QCOMPARE(station.verdicts, QStringList{"PASS通过 log3"});
    }

    void ASecondStartInsideTheFirst()
    {
        // The load that fails is the outer one, whose port the inner test has closed, or the inner one.
        const QString later = " 0 clear log2 load";
        const QMap<bool, QString> starts = {{true, "0 clear log1 load" + later + " open start taken wait100"},
                                            {false, toTheStart + later}};
        for (const bool load : starts.keys()) {
            SimulatedStation station;
            bool first = true;
            (load ? station.inLoad : station.inWait) = [&] {
                if (std::exchange(first, false)) {
                    station.loads = load;
                    station.sequencer->StartClicked();
                    station.loads = !load;
                }
            };
            station.sequencer->StartClicked();
            QCOMPARE(station.Done(), starts[load]);
            // The test runs on a closed port, and its stop opens that.
            QCOMPARE(station.State(), QString("running timeout 60100 read taken"));
            station.Say(Unit(44, 46));
            station.Pass(59990);
            QCOMPARE(station.Done(), "4FAILED不通过 open" + toTheEnd + " 0/1 shown path row report");
            QCOMPARE(station.verdicts, QStringList{"FAILED不通过 log2"});
        }
    }

    void ALineThatIsGoneAtTheStop()
    {
        SimulatedStation station;
        station.sequencer->StartClicked();
        station.portOpen = station.opens = false;
        station.done.clear();
        // Nothing ticks inside the box.
        station.inBox = [&] { station.Pass(100000); };
        station.Pass(60000);
        QCOMPARE(station.Done(), QString("4FAILED不通过 box offered close 0/1 shown path row report"));
        QCOMPARE(station.State(), QString("idle"));
    }

    void TheTestMayGoAtAnyTime()
    {
        // In the first start, or in the box of a stop whose port is closed: what was done, and the rows.
        const auto rest = [](const char* where, const QByteArray& said,
                             const std::function<void(UnitSequencer&)>& stop) {
            SimulatedStation station;
            station.form.delayed = true; // of no time at all
            const QMap<QString, std::function<void()>*> places = {
                {"load", &station.inLoad}, {"wait", &station.inWait}, {"box", &station.inBox}};
            *places[where] = [&station] { station.sequencer.reset(); };
            station.sequencer->StartClicked();
            if (station.sequencer) {
                station.Say(said);
                station.portOpen = station.opens = false;
                station.done.clear();
                stop(*station.sequencer);
            }
            station.Pass(100000);
            return station.sequencer ? "still there" : station.Done() + '|' + station.rows.join('|');
        };
        const auto wait = [](UnitSequencer&) {};
        QCOMPARE(rest("load", "", wait), QString("0 clear log1 load|"));
        QCOMPARE(rest("wait", "", wait), toTheStart + '|');
        QCOMPARE(rest("box", "", [](UnitSequencer& sequencer) { sequencer.StopClicked(); }), QString("box|"));
        // What the unit has come to is written all the same, and only once.
        QCOMPARE(rest("box", "", wait), "4FAILED不通过 box row report|PN7,0,0,0,0,NA,FAILED,0,0,40,NA,60,0,");
        QCOMPARE(rest("box", Unit(44, 46), wait), "box report|PN7,44,46,2,1,0,PASS,0,0,40,NA,60,0,");
        const auto judge = [](UnitSequencer& sequencer) {
            sequencer.OnBytes(Gga("120002.00", 1) + Gga("120003.00", 1));
        };
        QCOMPARE(rest("box", Gga("120001.00", 1) + Signals(1, 1), judge),
                 "raw epoch 2" + weakGps + " 0/1 shown path row box report|PN7,3,1,2,1,0,FAILED,0,0,40,NA,60,0,");
    }
};

QTEST_GUILESS_MAIN(TestUnitSequencer)
#include "tst_sequencer.moc"
