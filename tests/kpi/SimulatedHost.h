#pragma once

#include "production/KpiSequencer.h"

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
    bool gone = false;                         ///< the window goes at the next pump
    std::function<void()> atEveryStep = [] {}; ///< what else happens as time passes
    std::function<void(KpiFrame)> toTheReceiver = [](KpiFrame) {};

    qint64 now = 0; ///< milliseconds
    KpiSequencer sequencer{*this};

    void Pass(qint64 milliseconds)
    {
        for (const qint64 end = now + milliseconds; now < end;) {
            now += stepMs;
            atEveryStep();
            for (const KpiTimer timer : timers.keys()) {
                if (timers.contains(timer) && timers.value(timer) <= now) {
                    Fire(timer);
                }
            }
        }
    }

    /// Lets time pass until the run is over; false when it isn't after so many seconds.
    bool RunToTheEnd(qint64 seconds)
    {
        const qint64 limit = now + seconds * 1000;
        while (sequencer.TestRunning() && now < limit) {
            Pass(stepMs);
        }
        return !sequencer.TestRunning();
    }

    QString Row(const char* kind, int row) const
    {
        QStringList texts;
        for (int column = 0; column < 4; ++column) {
            texts.append(cells.value(QStringLiteral("%1 %2 %3").arg(QLatin1String(kind)).arg(row).arg(column)));
        }
        return texts.join(' ').trimmed();
    }

    /// Takes what was done so far.
    QString Done()
    {
        const QString text = done.join(' ');
        done.clear();
        return text;
    }

    KpiTestConfig Config() const override { return config; }
    bool ColdTicked() const override { return cold; }
    bool HotTicked() const override { return hot; }
    KpiPlace Reference() const override { return reference; }
    bool PositioningStarted() const override { return positioningStarted; }
    QDateTime Now() const override { return QDateTime::fromMSecsSinceEpoch(1800000000000 + now); }
    KpiSend Send(KpiFrame frame) override
    {
        if (!encodes) {
            return KpiSend::NotEncoded;
        }
        static const QStringList names = {"start", "stop", "cold", "hot", "nmea"};
        done.append(names.at(static_cast<int>(frame)));
        toTheReceiver(frame);
        return gone ? KpiSend::Gone : KpiSend::Sent;
    }
    void WakeUp() override { done.append("wake"); }
    bool Wait(int milliseconds) override
    {
        Pass(milliseconds);
        return !gone;
    }
    bool Warn(KpiWarning warning) override
    {
        done.append(warning == KpiWarning::AlreadyStarted ? "already-started" : "nothing-ticked");
        return !gone;
    }
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
    void Fire(KpiTimer timer)
    {
        timers[timer] += m_periods.value(timer);
        switch (timer) {
        case KpiTimer::Timeout:
            return sequencer.OnTimeout();
        case KpiTimer::Track:
            return sequencer.OnTrackingOver();
        case KpiTimer::Delay:
            return sequencer.OnIntervalOver();
        }
    }

    QMap<KpiTimer, int> m_periods;
};
