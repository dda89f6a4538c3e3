// SPDX-License-Identifier: MIT
#include "performance/KpiSequencer.h"

#include <QDebug>

#include <cmath>

namespace {

constexpr int waitAfterRestartMs = 100;
constexpr int waitAfterWakeUpMs = 50;
constexpr int msPerSecond = 1000;
constexpr double sameSeconds = 1e-15;

} // namespace

void KpiSequencer::StartStopClicked()
{
    if (m_host.PositioningStarted()) {
        if (m_host.Warn(KpiWarning::AlreadyStarted)) {
            // Nothing starts, but the form is locked until the next run ends: it is meant so.
            m_host.LockControls(!testRunning);
        }
        return;
    }
    if (testRunning) {
        StopRun();
    } else {
        BeginRun();
    }
}

void KpiSequencer::StopRun()
{
    m_host.ShowRunning(false);
    m_host.LockControls(false);
    testRunning = false;
    for (const KpiTimer timer : {KpiTimer::Timeout, KpiTimer::Track, KpiTimer::Delay}) {
        m_host.StopTimer(timer);
    }
    if (m_host.Send(protocol::ReadyFrame::Stop) != KpiSend::Gone) {
        testState = KpiTestState::Idle;
    }
}

void KpiSequencer::BeginRun()
{
    m_host.ClearResults();
    m_host.ShowRunning(true);
    m_host.LockControls(true);
    if (m_host.Send(protocol::ReadyFrame::NmeaMask) == KpiSend::Gone) {
        return;
    }
    testRunning = true;
    const Kinds ticked = Ticked();
    if (!ticked.cold && !ticked.hot) {
        if (m_host.Warn(KpiWarning::NothingTicked)) {
            m_host.ShowRunning(false);
            m_host.LockControls(false);
            testRunning = false;
            testState = KpiTestState::Idle;
        }
        return;
    }
    m_statistics.Clear();
    if (ticked.cold) {
        coldTestCount = 0;
        coldFixedCount = 0;
    }
    if (ticked.hot) {
        hotTestCount = 0;
        hotFixedCount = 0;
    }
    testMode = ticked.hot ? KpiTestMode::Hot : KpiTestMode::Cold;
    BeginTest();
}

/// Decides which kind of test comes next; false when none is left.
bool KpiSequencer::ChooseNext(const KpiTestConfig& config)
{
    const Kinds ticked = Ticked();
    const bool coldLeft = ticked.cold && coldTestCount < config.coldNum;
    const bool hotLeft = ticked.hot && hotTestCount < config.hotNum;
    if (ticked.cold && ticked.hot) {
        testMode = hotLeft ? KpiTestMode::Hot : coldLeft ? KpiTestMode::Cold : KpiTestMode::Done;
    }
    return coldLeft || hotLeft;
}

void KpiSequencer::BeginTest()
{
    if (!testRunning) {
        return;
    }
    testState = KpiTestState::WaitFix;
    const KpiTestConfig config = m_host.Config();
    if (!ChooseNext(config)) {
        EndRun();
        return;
    }
    const bool cold = IsCold();
    quint32& count = cold ? coldTestCount : hotTestCount;
    ++count;
    m_host.ShowResult(testMode, KpiRowCounts, KpiColumnTests, QString::number(count));

    // After a stop inside the waits this start ends at its start frame; when another test has begun inside them,
    // at once. The state is already waiting and the start time still the old one: a record in between counts as
    // the fix.
    const quint32 test = ++m_tests;
    if (m_host.Send(cold ? protocol::ReadyFrame::ColdStart : protocol::ReadyFrame::HotStart) == KpiSend::Gone ||
        !m_host.Wait(waitAfterRestartMs) || m_tests != test) {
        return;
    }
    m_host.WakeUp();
    if (!m_host.Wait(waitAfterWakeUpMs) || m_tests != test || !SendStart()) {
        return;
    }
    m_host.StartTimer(KpiTimer::Timeout, (cold ? config.coldTimeout : config.hotTimeout) * msPerSecond);
    testStartTime = m_host.Now();
}

bool KpiSequencer::SendStart()
{
    if (!testRunning || m_host.Send(protocol::ReadyFrame::Start) != KpiSend::Sent) {
        return false;
    }
    return testRunning;
}

void KpiSequencer::EndRun()
{
    m_host.ShowRunning(false);
    m_host.LockControls(false);
    testRunning = false;
    testState = KpiTestState::Idle;
    qDebug("already do all test");
}

void KpiSequencer::OnPosition(double seconds, const KpiPlace& place)
{
    // What is not a number counts as new.
    const bool isNew = !(std::fabs(seconds - lastFixSeconds) < sameSeconds);
    if (isNew && testState == KpiTestState::WaitFix) {
        fixSeen = true;
        m_host.StopTimer(KpiTimer::Timeout);
        testState = KpiTestState::Tracking;
        fixTime = m_host.Now();
        TakeSamples(place);
        const KpiTestConfig config = m_host.Config();
        m_host.StartTimer(KpiTimer::Track, (IsCold() ? config.coldTrkTime : config.hotTrkTime) * msPerSecond);
    }
    lastFixSeconds = seconds;
}

void KpiSequencer::TakeSamples(const KpiPlace& place)
{
    if (m_statistics.AddTtff(testMode, KpiTtffSeconds(testStartTime, fixTime))) {
        ShowStatistics(KpiRowTtff, m_statistics.Ttff(testMode));
    }
    m_statistics.AddCep(testMode, KpiHorizontalError(m_host.Reference(), place));
    ShowStatistics(KpiRowCep, m_statistics.Cep(testMode));
}

void KpiSequencer::ShowStatistics(int row, const std::vector<double>& samples)
{
    const auto summary = KpiSummary(samples);
    for (int column = 0; column < kpiStatisticColumns; ++column) {
        m_host.ShowResult(testMode, row, column, KpiStatisticText(summary[static_cast<std::size_t>(column)]));
    }
}

void KpiSequencer::OnTrackingOver()
{
    const KpiTestConfig config = m_host.Config();
    m_host.StopTimer(KpiTimer::Track);
    testState = KpiTestState::Gap;
    if (m_host.Send(protocol::ReadyFrame::Stop) == KpiSend::Gone) {
        return;
    }
    quint32& fixed = IsCold() ? coldFixedCount : hotFixedCount;
    ++fixed;
    m_host.ShowResult(testMode, KpiRowCounts, KpiColumnFixed, QString::number(fixed));
    ShowRate('f', 2);
    StartDelay(config);
}

void KpiSequencer::OnTimeout()
{
    const KpiTestConfig config = m_host.Config();
    m_host.StopTimer(KpiTimer::Timeout);
    testState = KpiTestState::TimedOut;
    if (m_host.Send(protocol::ReadyFrame::Stop) == KpiSend::Gone) {
        return;
    }
    // Another format of the rate than after a fix: it is meant so.
    ShowRate('g', 6);
    StartDelay(config);
}

void KpiSequencer::ShowRate(char format, int precision)
{
    const double fixed = IsCold() ? coldFixedCount : hotFixedCount;
    const double tests = IsCold() ? coldTestCount : hotTestCount;
    m_host.ShowResult(testMode, KpiRowCounts, KpiColumnRate,
                      QString::number(fixed / tests * 100.0, format, precision) + QLatin1Char('%'));
}

void KpiSequencer::StartDelay(const KpiTestConfig& config)
{
    m_host.StartTimer(KpiTimer::Delay, (IsCold() ? config.coldInr : config.hotInr) * msPerSecond);
}

void KpiSequencer::OnIntervalOver()
{
    m_host.StopTimer(KpiTimer::Delay);
    FillZeroResults();
    BeginTest();
}

void KpiSequencer::FillZeroResults()
{
    const Kinds ticked = Ticked();
    if (ticked.hot && hotFixedCount == 0) {
        ShowZeros(KpiTestMode::Hot);
    }
    if (ticked.cold && coldFixedCount == 0 && (!ticked.hot || coldTestCount != 0)) {
        ShowZeros(KpiTestMode::Cold);
    }
}

void KpiSequencer::ShowZeros(KpiTestMode mode)
{
    m_host.ShowResult(mode, KpiRowCounts, KpiColumnFixed, QStringLiteral("0"));
    for (const int row : {KpiRowTtff, KpiRowCep}) {
        for (int column = 0; column < kpiStatisticColumns; ++column) {
            m_host.ShowResult(mode, row, column, QStringLiteral("0.0"));
        }
    }
}
