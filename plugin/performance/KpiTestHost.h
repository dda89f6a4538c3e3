// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiConfig.h"
#include "performance/KpiTestTypes.h"
#include "protocol/CommandFrames.h"

#include <QDateTime>
#include <QString>

enum class KpiTimer {
    Timeout, ///< a test without a fix
    Track,   ///< tracking after the fix
    Delay,   ///< interval to the next test
};

enum class KpiSend {
    Sent,
    NotEncoded, ///< the codec refused; nothing was sent
    Gone,       ///< whoever runs the test was destroyed at the send
};

enum class KpiWarning {
    AlreadyStarted, ///< positioning runs already
    NothingTicked,  ///< neither kind of start is ticked
};

/// What the sequencer of a performance test has around it: form, clock, timers, line and tables.
///
/// An operation that pumps events tells when the test was destroyed inside it; the sequencer then touches
/// nothing more.
class KpiTestHost {
public:
    virtual ~KpiTestHost() = default;

    // What stands in the form at this moment.
    virtual KpiTestConfig Config() const = 0;
    virtual bool ColdTicked() const = 0;
    virtual bool HotTicked() const = 0;
    virtual KpiPlace Reference() const = 0;

    virtual bool PositioningStarted() const = 0;
    virtual QDateTime Now() const = 0;

    virtual KpiSend Send(protocol::ReadyFrame frame) = 0;
    virtual void WakeUp() = 0;
    /// Lets time pass with events coming in; false when the test is gone after it.
    virtual bool Wait(int milliseconds) = 0;
    /// False when the test is gone after it.
    virtual bool Warn(KpiWarning warning) = 0;

    /// Starts a timer, anew if it runs.
    virtual void StartTimer(KpiTimer timer, int milliseconds) = 0;
    virtual void StopTimer(KpiTimer timer) = 0;

    /// Whether the start button offers to stop.
    virtual void ShowRunning(bool running) = 0;
    virtual void LockControls(bool lock) = 0;
    /// Empties the cells of all four tables.
    virtual void ClearResults() = 0;
    /// A cell of the mode's result table.
    virtual void ShowResult(KpiTestMode mode, int row, int column, const QString& text) = 0;
};
