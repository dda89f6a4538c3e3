// SPDX-License-Identifier: MIT
#include "production/UnitSequencer.h"

#include "production/UnitFiles.h"

#include <QDebug>

#include <utility>

namespace {

constexpr int startWaitMs = 100;
constexpr int pollPeriodMs = 10;
constexpr int msPerSecond = 1000;
constexpr std::size_t longestShownSentence = 128;
constexpr std::size_t lineEndSize = 2;

} // namespace

UnitSequencer::UnitSequencer(UnitTestHost& host, UnitViews& views, std::shared_ptr<UnitPapers> papers)
    : m_host(host), m_views(views), m_papers(std::move(papers))
{
}

void UnitSequencer::StartClicked()
{
    if (testRunning) {
        return;
    }
    ShowResult(UnitVerdict::None, QString());
    firstFixUtc = 0.0;
    ttffMs = 0;
    ttffPending = true;
    delayRunning = false;
    m_views.ClearSentences();
    ReadSettings();
    rawLogPath = m_host.NewRawLog();
    // A second click during the load begins a second start, which is meant so.
    if (!m_host.LoadFirmware() || m_host.OpenPort() != UnitPort::Open) {
        return;
    }
    m_host.Send(UnitFrame::Start);
    m_views.OfferStart(false);
    if (!m_host.Wait(startWaitMs)) {
        return;
    }
    m_host.StartTimer(UnitTimer::Timeout, timeoutMs);
    m_host.StartTimer(UnitTimer::Read, pollPeriodMs);
    testStartTime = m_host.Now();
    testRunning = true;
}

void UnitSequencer::ReadSettings()
{
    const UnitRecord form = m_host.Form();
    productNumber = form.productNumber;
    timeoutMs = form.timeoutSeconds * msPerSecond;
    delayMs = form.delaySeconds * msPerSecond;
    gpsCn0Threshold = static_cast<quint16>(form.gpsThreshold);
    nonGpsCn0Threshold = static_cast<quint16>(form.nonGpsThreshold);
}

bool UnitSequencer::Stop()
{
    if (!testRunning) {
        return true;
    }
    testRunning = false;
    // Before the box that may come: none of them may report inside it.
    for (const UnitTimer timer : {UnitTimer::Read, UnitTimer::Timeout, UnitTimer::Delay}) {
        m_host.StopTimer(timer);
    }
    const UnitPort port = m_host.OpenPort();
    if (port == UnitPort::Gone) {
        return false;
    }
    if (port == UnitPort::Open) {
        m_host.Send(UnitFrame::Stop);
    }
    m_views.OfferStart(true);
    m_host.ClosePort();
    return true;
}

void UnitSequencer::OnBytes(const QByteArray& bytes)
{
    m_host.KeepRaw(rawLogPath, bytes);
    QStringList shown;
    const char* position = bytes.constData();
    const char* const end = position + bytes.size();
    protocol::NmeaSentence sentence;
    while (protocol::NextNmeaSentence(m_scanBuffer, position, end, protocol::EndsInLine, sentence)) {
        if (!TakeSentence(sentence, shown)) {
            return;
        }
    }
    // In one go: a view of many lines costs by the call.
    if (!shown.isEmpty()) {
        m_views.ShowSentences(shown);
    }
}

bool UnitSequencer::TakeSentence(const protocol::NmeaSentence& sentence, QStringList& shown)
{
    const std::string_view text(sentence.text, sentence.length);
    if (HoldsGga(text)) {
        CloseEpoch();
    }
    if (sentence.length > longestShownSentence) {
        qDebug().noquote() << "Error: exceeds the nmea max len.";
    } else {
        shown.append(QString::fromLatin1(sentence.text, static_cast<int>(sentence.length - lineEndSize)));
    }
    if (!testRunning) {
        return true;
    }
    switch (KindOf(text)) {
    case SentenceKind::Gsv:
        TakeGsv(m_epoch, text);
        break;
    case SentenceKind::Gsa:
        TakeGsa(m_epoch, text);
        break;
    case SentenceKind::Gga:
        TakeGga(m_epoch, text);
        return TakeFix();
    case SentenceKind::Other:
        break;
    }
    return true;
}

void UnitSequencer::CloseEpoch()
{
    bool anyBlock = false;
    const std::vector<SatEntry> satellites = SatellitesOf(m_epoch, anyBlock);
    if (!satellites.empty() || !anyBlock) {
        m_signals = SumUp(satellites);
        m_views.ShowEpoch(m_signals);
    }
    m_epoch = EpochStore();
}

bool UnitSequencer::TakeFix()
{
    const GgaFields& gga = m_epoch.gga;
    if (gga.quality == 0) {
        return true;
    }
    if (ttffPending) {
        m_host.StopTimer(UnitTimer::Timeout);
        ttffMs = KeptTtff(testStartTime.msecsTo(m_host.Now()));
        ttffPending = false;
        firstFixUtc = gga.utc;
    }
    return !IsLaterFix(gga.utc, firstFixUtc) || delayRunning || JudgeNow();
}

bool UnitSequencer::JudgeNow()
{
    const UnitRecord form = m_host.Form();
    const UnitThresholds thresholds = {form.needGps, gpsCn0Threshold, form.needNonGps, nonGpsCn0Threshold};
    const UnitVerdict verdict = JudgeUnit(thresholds, m_signals.gps.strongest, m_signals.nonGps.strongest);
    passed = verdict == UnitVerdict::Passed;
    if (passed) {
        ++passCount;
        ShowResult(verdict, tr("PASS通过"));
    } else {
        ShowResult(verdict,
                   verdict == UnitVerdict::WeakGps ? tr("GPS载噪比小于门限值") : tr("非GPS载噪比小于门限值"));
    }
    CountUnit();
    if (passed && form.delayed) {
        m_host.StartTimer(UnitTimer::Delay, delayMs);
        delayRunning = true;
        return true;
    }
    return StopAndReport();
}

/// The stop may show a box that the window does not outlive; the report is written then all the same.
bool UnitSequencer::StopAndReport()
{
    const UnitRecord unit = Record();
    const QString rawLog = rawLogPath;
    const std::shared_ptr<UnitPapers> papers = m_papers;
    if (!Stop()) {
        papers->WriteReport(unit, rawLog);
        return false;
    }
    WriteReport();
    return true;
}

void UnitSequencer::OnDelayOver()
{
    m_host.StopTimer(UnitTimer::Delay);
    StopAndReport();
}

void UnitSequencer::OnTimeout()
{
    m_host.StopTimer(UnitTimer::Timeout);
    ttffMs = 0;
    passed = false;
    ShowResult(UnitVerdict::TimedOut, tr("FAILED不通过"));
    const UnitRecord unit = Record();
    const QString rawLog = rawLogPath;
    const std::shared_ptr<UnitPapers> papers = m_papers;
    if (!Stop()) {
        papers->AddRow(unit);
        papers->WriteReport(unit, rawLog);
        return;
    }
    CountUnit();
    WriteReport();
}

void UnitSequencer::ShowResult(UnitVerdict verdict, const QString& text)
{
    resultText = text;
    m_views.ShowResult(verdict, text);
}

void UnitSequencer::CountUnit()
{
    ++testCount;
    m_views.ShowCounts(testCount, passCount);
    const UnitRecord unit = Record();
    m_views.ShowRow(unit);
    if (!resultFileOpen) {
        m_views.ShowResultPath(m_papers->ResultPath());
        resultFileOpen = true;
    }
    m_papers->AddRow(unit);
}

UnitRecord UnitSequencer::Record() const
{
    UnitRecord unit = m_host.Form();
    unit.productNumber = productNumber;
    unit.resultText = resultText;
    unit.passed = passed;
    unit.ttffMs = ttffMs;
    unit.gpsMaxCn0 = m_signals.gps.strongest;
    unit.nonGpsMaxCn0 = m_signals.nonGps.strongest;
    unit.gpsSvCount = m_signals.gps.count;
    unit.nonGpsSvCount = m_signals.nonGps.count;
    return unit;
}

void UnitSequencer::WriteReport()
{
    if (!m_papers->WriteReport(Record(), rawLogPath)) {
        m_views.Log(ReportFailureText());
    }
}
