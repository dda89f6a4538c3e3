// SPDX-License-Identifier: MIT
#pragma once

#include "production/UnitSequencer.h"

#include <QMap>

#include <functional>
#include <utility>

/// A sequencer with a clock, timers, line, views and files of the test's own: time passes when the test says so,
/// or when the sequencer waits. The sequencer may be destroyed in a load, a wait or a box.
class SimulatedStation : public UnitTestHost, public UnitViews {
public:
    static constexpr int stepMs = 10;

    UnitRecord form;
    bool loads = true;
    bool opens = true;
    bool reports = true; ///< whether reports can be opened
    std::function<void()> inLoad = [] {};
    std::function<void()> inWait = [] {};
    std::function<void()> inBox = [] {}; ///< the one about a port that cannot be opened

    QStringList done;
    QMap<UnitTimer, qint64> timers; ///< those that run, with their next time
    bool offered = true;
    bool portOpen = false;
    QMap<QString, QByteArray> rawLogs;
    QStringList sentences;
    QStringList rows;
    QStringList verdicts; ///< of the reports, with their raw log

    qint64 now = 0; ///< milliseconds
    std::unique_ptr<UnitSequencer> sequencer =
        std::make_unique<UnitSequencer>(*this, *this, std::make_shared<Papers>(*this));

    SimulatedStation()
    {
        form.productNumber = "PN7";
        form.gpsThreshold = 40;
        form.timeoutSeconds = 60;
    }

    void Pass(qint64 milliseconds)
    {
        for (const qint64 end = now + milliseconds; now < end;) {
            now += stepMs;
            for (const UnitTimer timer : timers.keys()) {
                if (sequencer && timers.value(timer, now + 1) <= now) {
                    Fire(timer);
                }
            }
        }
    }

    /// The unit says this, and has it read.
    void Say(const QByteArray& bytes)
    {
        m_line += bytes;
        Pass(stepMs);
    }

    /// Takes what was done so far.
    QString Done() { return std::exchange(done, {}).join(' '); }

    QString State() const
    {
        QString text = sequencer->TestRunning() ? "running" : "idle";
        for (const UnitTimer timer : timers.keys()) {
            text += QStringList{" timeout ", " delay ", " read"}.at(int(timer));
            text += timer == UnitTimer::Read ? QString() : QString::number(timers[timer]);
        }
        return text + (offered ? "" : " taken") + (portOpen ? " open" : "");
    }

    // UnitTestHost
    UnitRecord Form() const override { return form; }
    QDateTime Now() const override { return QDateTime::fromMSecsSinceEpoch(1800000000000 + now); }
    QString NewRawLog() override
    {
        done << "log" + QString::number(rawLogs.size() + 1);
        rawLogs[done.last()] = QByteArray();
        return done.last();
    }
    void KeepRaw(const QString& rawLogPath, const QByteArray& bytes) override
    {
        rawLogs[rawLogPath] += bytes;
        done << "raw";
    }
    bool LoadFirmware() override
    {
        done << "load";
        inLoad();
        portOpen = false;
        return sequencer && loads;
    }
    UnitPort OpenPort() override
    {
        if (!portOpen) {
            done << (opens ? "open" : "box");
            portOpen = opens;
            (opens ? [] {} : inBox)();
        }
        return portOpen ? UnitPort::Open : sequencer ? UnitPort::Closed : UnitPort::Gone;
    }
    void ClosePort() override
    {
        done << "close";
        portOpen = false;
    }
    void Send(UnitFrame frame) override { done << (frame == UnitFrame::Start ? "start" : "stop"); }
    bool Wait(int milliseconds) override
    {
        done << "wait" + QString::number(milliseconds);
        inWait();
        Pass(milliseconds);
        return sequencer != nullptr;
    }
    void StartTimer(UnitTimer timer, int milliseconds) override { timers[timer] = now + milliseconds; }
    void StopTimer(UnitTimer timer) override { timers.remove(timer); }

    // UnitViews
    void OfferStart(bool on) override
    {
        offered = on;
        done << (on ? "offered" : "taken");
    }
    void ClearSentences() override { done << "clear"; }
    void ShowSentences(const QStringList& shown) override { sentences << shown; }
    void ShowEpoch(const EpochSignals&) override { done << "epoch"; }
    void ShowResult(UnitVerdict verdict, const QString& text) override
    {
        done << QString::number(int(verdict)) + text;
    }
    void ShowCounts(quint32 tests, quint32 passes) override { done << QString("%1/%2").arg(passes).arg(tests); }
    void ShowRow(const UnitRecord&) override { done << "shown"; }
    void ShowResultPath(const QString& path) override { done << path; }
    void Log(const QString& text) override { done << text; }

private:
    /// Only the sequencer keeps them alive.
    struct Papers : UnitPapers {
        explicit Papers(SimulatedStation& owner) : station(owner) {}
        QString ResultPath() override { return path; }
        void AddRow(const UnitRecord& unit) override
        {
            station.done << "row";
            station.rows << UnitReport::CsvRow(unit).trimmed();
        }
        bool WriteReport(const UnitRecord& unit, const QString& rawLogPath) override
        {
            station.done << "report";
            station.verdicts << unit.resultText + ' ' + rawLogPath;
            return station.reports;
        }
        SimulatedStation& station;
        QString path = "path";
    };

    void Fire(UnitTimer timer)
    {
        if (timer == UnitTimer::Timeout) {
            sequencer->OnTimeout();
        } else if (timer == UnitTimer::Delay) {
            sequencer->OnDelayOver();
        } else if (portOpen && !m_line.isEmpty()) {
            sequencer->OnBytes(std::exchange(m_line, {}));
        }
    }

    QByteArray m_line; ///< what nobody has read yet
};
