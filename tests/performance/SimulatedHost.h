// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiSequencer.h"

#include <QMap>
#include <QStringList>

#include <functional>

/// A sequencer with a clock, timers and tables of the test's own: time passes when the test says so, or when
/// the sequencer waits.
class SimulatedHost : public KpiTestHost {
public:
    static constexpr int stepMs = 10;

    // The form.
    KpiTestConfig config;
    bool cold = false;
    bool hot = false;
    KpiPlace reference;
    bool positioningStarted = false;

    // What the sequencer did.
    QStringList done;              ///< frames, wake-ups and warnings
    QMap<QString, QString> cells;  ///< "Hot 2 0" and so on
    QMap<KpiTimer, qint64> timers; ///< those that run, with their next time
    bool running = false;
    bool locked = false;

    bool encodes = true;
    std::function<void()> atEveryStep = [] {}; ///< what else happens as time passes
    std::function<void(protocol::ReadyFrame)> toTheReceiver = [](protocol::ReadyFrame) {};

    qint64 now = 0; ///< milliseconds
    KpiSequencer sequencer{*this};

    void Start(bool coldTicked, bool hotTicked)
    {
        cold = coldTicked;
        hot = hotTicked;
        sequencer.StartStopClicked();
    }

    void Pass(qint64 milliseconds)
    {
        for (const qint64 end = now + milliseconds; now < end;) {
            now += stepMs;
            atEveryStep();
            for (const KpiTimer timer : timers.keys()) {
                if (timers.contains(timer) && timers.value(timer) <= now) {
                    timers[timer] += m_periods.value(timer);
                    timer == KpiTimer::Timeout ? sequencer.OnTimeout()
                    : timer == KpiTimer::Track ? sequencer.OnTrackingOver()
                                               : sequencer.OnIntervalOver();
                }
            }
        }
    }

    /// Lets time pass until the run is over; false when it isn't after so many seconds.
    bool RunToTheEnd(qint64 seconds)
    {
        for (const qint64 limit = now + seconds * 1000; sequencer.TestRunning() && now < limit;) {
            Pass(stepMs);
        }
        return !sequencer.TestRunning();
    }

    QString Row(const QString& kind, int row) const
    {
        QString texts;
        for (int column = 0; column < 4; ++column) {
            texts += cells.value(QStringLiteral("%1 %2 %3").arg(kind).arg(row).arg(column)) + ' ';
        }
        return texts.trimmed();
    }

    /// Takes what was done so far.
    QString Done()
    {
        QString text = done.join(' ');
        done.clear();
        return text;
    }

    KpiTestConfig Config() const override { return config; }
    bool ColdTicked() const override { return cold; }
    bool HotTicked() const override { return hot; }
    KpiPlace Reference() const override { return reference; }
    bool PositioningStarted() const override { return positioningStarted; }
    QDateTime Now() const override { return QDateTime::fromMSecsSinceEpoch(1800000000000 + now); }
    KpiSend Send(protocol::ReadyFrame frame) override
    {
        if (!encodes) {
            return KpiSend::NotEncoded;
        }
        using protocol::ReadyFrame;
        const QMap<ReadyFrame, QString> names = {{ReadyFrame::Start, "start"},
                                                 {ReadyFrame::Stop, "stop"},
                                                 {ReadyFrame::ColdStart, "cold"},
                                                 {ReadyFrame::HotStart, "hot"},
                                                 {ReadyFrame::NmeaMask, "nmea"}};
        done.append(names.value(frame, "another frame"));
        toTheReceiver(frame);
        return KpiSend::Sent;
    }
    void WakeUp() override { done.append("wake"); }
    bool Wait(int milliseconds) override
    {
        Pass(milliseconds);
        return true;
    }
    bool Warn(KpiWarning) override { return true; }
    void StartTimer(KpiTimer timer, int milliseconds) override
    {
        m_periods[timer] = milliseconds;
        timers[timer] = now + milliseconds;
    }
    void StopTimer(KpiTimer timer) override { timers.remove(timer); }
    void ShowRunning(bool on) override { running = on; }
    void LockControls(bool lock) override { locked = lock; }
    void ClearResults() override { cells.clear(); }
    void ShowResult(KpiTestMode mode, int row, int column, const QString& text) override
    {
        const char* kind = mode == KpiTestMode::Cold ? "Cold" : "Hot";
        cells[QStringLiteral("%1 %2 %3").arg(QLatin1String(kind)).arg(row).arg(column)] = text;
    }

private:
    QMap<KpiTimer, int> m_periods;
};
