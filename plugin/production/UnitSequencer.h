// SPDX-License-Identifier: MIT
#pragma once

#include "production/UnitTestHost.h"
#include "protocol/NmeaScan.h"

#include <memory>

/// The course of a unit's production test: load, start, wait for fixes, judge, stop, report; and the counts of the
/// units of a station. It has no clock, no timer and no widget; its host has them.
class UnitSequencer {
    // The verdicts stand in the catalogue under the window that shows them.
    Q_DECLARE_TR_FUNCTIONS(ProductTest)

public:
    UnitSequencer(UnitTestHost& host, UnitViews& views, std::shared_ptr<UnitPapers> papers);

    // Events.
    void StartClicked();
    void StopClicked() { Stop(); }
    void OnTimeout();
    void OnDelayOver();
    /// What the line has brought, in pieces of any size.
    void OnBytes(const QByteArray& bytes);

    bool TestRunning() const { return testRunning; }

private:
    // Those with a bool tell whether the test is still there.
    void ReadSettings();
    bool Stop();
    bool StopAndReport();
    void WriteReport();

    bool TakeSentence(const protocol::NmeaSentence& sentence, QStringList& shown);
    void CloseEpoch();
    bool TakeFix();
    bool JudgeNow();

    void ShowResult(UnitVerdict verdict, const QString& text);
    void CountUnit();
    UnitRecord Record() const;

    UnitTestHost& m_host;
    UnitViews& m_views;
    std::shared_ptr<UnitPapers> m_papers;

    // Settings of the test, read at its start
    QString productNumber;
    int timeoutMs = 0;
    int delayMs = 0;
    quint16 gpsCn0Threshold = 0;
    quint16 nonGpsCn0Threshold = 0;

    protocol::NmeaBuff m_scanBuffer = {};
    EpochStore m_epoch;
    EpochSignals m_signals; ///< of the last epoch that was shown

    quint32 testCount = 0;
    quint32 passCount = 0;
    QDateTime testStartTime;
    bool testRunning = false;
    bool resultFileOpen = false; ///< the path of the result file is shown
    quint16 ttffMs = 0;
    bool passed = false;
    double firstFixUtc = 0.0;
    bool ttffPending = true; ///< until the first fix of a test
    bool delayRunning = false;
    QString resultText;
    QString rawLogPath;
};
