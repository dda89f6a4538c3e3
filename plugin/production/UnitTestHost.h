// SPDX-License-Identifier: MIT
#pragma once

#include "production/EpochSignals.h"
#include "production/UnitJudge.h"
#include "production/UnitReport.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

enum class UnitTimer {
    Timeout, ///< a unit without a fix
    Delay,   ///< recording after a unit has passed
    Read,    ///< what the line has brought
};

enum class UnitFrame { Start, Stop };

enum class UnitPort {
    Open,
    Closed, ///< it cannot be opened; the user was told
    Gone,   ///< whoever runs the test was destroyed while the user was told
};

/// The files that the units of a station leave. They may outlive whoever runs the test.
class UnitPapers {
public:
    virtual ~UnitPapers() = default;

    /// Path of the result file, which has its name from the first call on.
    virtual QString ResultPath() = 0;
    virtual void AddRow(const UnitRecord& unit) = 0;
    /// False when the report cannot be opened.
    virtual bool WriteReport(const UnitRecord& unit, const QString& rawLogPath) = 0;
};

/// What the user sees of a station.
class UnitViews {
public:
    virtual ~UnitViews() = default;

    /// Whether the start button can be clicked.
    virtual void OfferStart(bool offered) = 0;
    /// Empties the view of the sentences if the form asks for it.
    virtual void ClearSentences() = 0;
    virtual void ShowSentences(const QStringList& sentences) = 0;
    virtual void ShowEpoch(const EpochSignals& sums) = 0;
    virtual void ShowResult(UnitVerdict verdict, const QString& text) = 0;
    virtual void ShowCounts(quint32 tests, quint32 passes) = 0;
    virtual void ShowRow(const UnitRecord& unit) = 0;
    virtual void ShowResultPath(const QString& path) = 0;
    virtual void Log(const QString& text) = 0;
};

/// What the sequencer of a production test has around it: form, clock, timers and line.
///
/// An operation that pumps events tells when the test was destroyed inside it; the sequencer then touches
/// nothing more.
class UnitTestHost {
public:
    virtual ~UnitTestHost() = default;

    /// What stands in the form at this moment, and the window's title; nothing of a verdict.
    virtual UnitRecord Form() const = 0;
    virtual QDateTime Now() const = 0;

    /// Creates the raw log of a new test and tells its path.
    virtual QString NewRawLog() = 0;
    virtual void KeepRaw(const QString& rawLogPath, const QByteArray& bytes) = 0;

    /// The whole load, from the opening of the port to its closing. False when it failed or the test is gone.
    virtual bool LoadFirmware() = 0;
    /// Opens the port unless it is open.
    virtual UnitPort OpenPort() = 0;
    virtual void ClosePort() = 0;
    /// To an open port. A stop is on the line when this returns.
    virtual void Send(UnitFrame frame) = 0;
    /// Lets time pass with events coming in; false when the test is gone after it.
    virtual bool Wait(int milliseconds) = 0;

    /// Starts a timer, anew if it runs.
    virtual void StartTimer(UnitTimer timer, int milliseconds) = 0;
    virtual void StopTimer(UnitTimer timer) = 0;
};
