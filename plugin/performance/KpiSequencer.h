// SPDX-License-Identifier: MIT
#pragma once

#include "performance/KpiStatistics.h"
#include "performance/KpiTestHost.h"
#include "performance/KpiTestTypes.h"

/// The course of a performance test: which start comes next, what is sent, when it counts as fixed, and what
/// the result tables tell of it. It has no clock, no timer and no widget; its host has them.
class KpiSequencer {
public:
    explicit KpiSequencer(KpiTestHost& host) : m_host(host) {}

    // Events.
    void StartStopClicked();
    void OnTimeout();
    void OnTrackingOver();
    void OnIntervalOver();
    /// A position record that Accepts() let in; `seconds` is its seconds field.
    void OnPosition(double seconds, const KpiPlace& place);

    /// Whether records are taken now.
    bool Accepts() const { return testRunning && testState != KpiTestState::TimedOut; }

    /// Sends the start frame while a run is active. False when none is, or the frame couldn't be made, or the
    /// test is gone.
    bool SendStart();

    bool TestRunning() const { return testRunning; }
    KpiTestState State() const { return testState; }
    KpiTestMode Mode() const { return testMode; }
    const KpiStatistics& Statistics() const { return m_statistics; }

private:
    struct Kinds {
        bool cold;
        bool hot;
    };

    Kinds Ticked() const { return {m_host.ColdTicked(), m_host.HotTicked()}; }
    bool IsCold() const { return testMode == KpiTestMode::Cold; }
    void StopRun();
    void BeginRun();
    void BeginTest();
    bool ChooseNext(const KpiTestConfig& config);
    void EndRun();
    void TakeSamples(const KpiPlace& place);
    void ShowStatistics(int row, const std::vector<double>& samples);
    void ShowRate(char format, int precision);
    void StartDelay(const KpiTestConfig& config);
    void FillZeroResults();
    void ShowZeros(KpiTestMode mode);

    KpiTestHost& m_host;
    KpiStatistics m_statistics;
    bool testRunning = false;
    bool fixSeen = false; ///< set at the first fix of a test, read by nothing
    quint32 coldTestCount = 0;
    quint32 coldFixedCount = 0;
    quint32 hotTestCount = 0;
    quint32 hotFixedCount = 0;
    KpiTestState testState = KpiTestState::Idle;
    KpiTestMode testMode = KpiTestMode::Cold;
    QDateTime testStartTime;
    QDateTime fixTime;
    double lastFixSeconds = 0.0;
    quint32 m_tests = 0; ///< tests begun; tells a test's start that another one has come in between
};
