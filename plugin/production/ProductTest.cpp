// SPDX-License-Identifier: MIT
#include "production/ProductTest.h"

#include "base/FileDialogs.h"
#include "base/FixedFont.h"
#include "base/ReadyCommand.h"
#include "line/PortList.h"
#include "line/RawCapture.h"
#include "line/SerialLine.h"
#include "production/FirmwareLoad.h"
#include "production/StationPort.h"
#include "production/UnitFiles.h"

#include "ui_ProductTest.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QDebug>
#include <QFileInfo>
#include <QIcon>
#include <QPointer>
#include <QSerialPort>
#include <QStandardItemModel>
#include <QTime>
#include <QTimer>

namespace {

constexpr char passColour[] = "green";
constexpr char failColour[] = "red";

constexpr int startWaitMs = 100;
constexpr int pollPeriodMs = 10;
constexpr int usualBaudRate = 115200;
constexpr std::size_t longestShownSentence = 128;
constexpr std::size_t lineEndSize = 2;
/// A station runs for days; the raw logs keep everything.
constexpr int mostShownSentences = 50000;
constexpr int productNumberWidth = 230;

QString GroupText(const SignalGroup& group)
{
    return QString::number(group.count) + QLatin1Char('/') + QString::number(group.strongest);
}

const SignalGroup& GroupOf(const EpochSignals& sums, char letter)
{
    return sums.each[protocol::PlaceIn(kEpochOrder, letter)];
}

} // namespace

ProductTest::ProductTest(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::ProductTest>()), m_serialPort(std::make_unique<QSerialPort>()),
      m_lastDir(QCoreApplication::applicationDirPath()), timeoutTimer(new QTimer(this)),
      delayTimer(new QTimer(this)), readTimer(new QTimer(this)), m_rows(new QStandardItemModel(this))
{
    ui->setupUi(this);
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/ProductTestOn.png")));
    WatchOwnPort(m_serialPort.get());
    readTimer->setTimerType(Qt::PreciseTimer);
    ui->baudRateCbx->setCurrentText(QString::number(usualBaudRate));
    ui->showNmea->setMaximumBlockCount(mostShownSentences);
    ui->showNmea->setFont(FixedFont());
    m_rows->setHorizontalHeaderLabels(UnitReport::TableHeaders());
    ui->testRltTable->setModel(m_rows);
    ui->testRltTable->setColumnWidth(0, productNumberWidth);
    ShowEpoch(EpochSignals());

    connect(ui->clearPNBtn, &QPushButton::clicked, this, &ProductTest::SlotClearPN);
    connect(ui->selectVersionFile, &QPushButton::clicked, this, &ProductTest::SlotSelectFile);
    connect(ui->lockCfgRtn, &QAbstractButton::toggled, this, &ProductTest::SlotLockTestCfg);
    connect(ui->startTestBtn, &QPushButton::clicked, this, &ProductTest::SlotStartTest);
    connect(ui->stopTestBtn, &QPushButton::clicked, this, &ProductTest::SlotStopTest);
    connect(ui->serialCbx, qOverload<int>(&QComboBox::activated), this, &ProductTest::SlotChangeComboBoxText);
    connect(readTimer, &QTimer::timeout, this, &ProductTest::SlotReadSerialData);
    connect(delayTimer, &QTimer::timeout, this, &ProductTest::SlotDelayProc);
    connect(timeoutTimer, &QTimer::timeout, this, &ProductTest::SlotTimeoutProc);

    ui->serialCbx->installEventFilter(this);
    UpdatePortInfo();
}

ProductTest::~ProductTest()
{
    // Nothing may tick while the members go.
    for (QTimer* timer : {readTimer, delayTimer, timeoutTimer}) {
        timer->stop();
    }
    m_serialPort->close();
}

bool ProductTest::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->serialCbx && event->type() == QEvent::MouseButtonPress) {
        UpdatePortInfo();
    }
    return QWidget::eventFilter(watched, event);
}

void ProductTest::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal(windowTitle());
}

void ProductTest::UpdatePortInfo()
{
    m_portName = FreePortNames();
    if (ui->serialCbx == nullptr) {
        qDebug().noquote() << "ProductTest->m_portName pointer does not exist";
        return;
    }
    OfferPorts(*ui->serialCbx, m_portName);
}

void ProductTest::SlotChangeComboBoxText(int index)
{
    ui->serialCbx->setCurrentIndex(index);
}

void ProductTest::SlotClearPN()
{
    ui->PNNodeLdt->clear();
}

void ProductTest::SlotLockTestCfg()
{
    cfgLocked = !cfgLocked;
    const QList<QWidget*> settings = {ui->serialCbx,       ui->baudRateCbx, ui->testTimeout,
                                      ui->testDelayChkBox, ui->testDelay,   ui->gpsCn0Thresh,
                                      ui->nonGpsCn0Thresh, ui->isNeedGps,   ui->isNeedNonGps};
    for (QWidget* setting : settings) {
        setting->setEnabled(!cfgLocked);
    }
}

void ProductTest::SlotSelectFile()
{
    const QPointer<ProductTest> guard(this);
    const QString chosen = AskFileToOpen(this, tr("选择文件"), m_lastDir, QStringLiteral("Bin file(*.bin)"));
    if (guard.isNull()) {
        return;
    }
    if (!chosen.isEmpty()) {
        m_firmwarePath = chosen;
        m_lastDir = QFileInfo(chosen).path();
    }
    if (!m_firmwarePath.isEmpty()) {
        ui->versionFilePath->setText(m_firmwarePath);
    }
}

void ProductTest::Log(const QString& text)
{
    ui->SysStatus->appendPlainText(QLatin1Char('[') + QTime::currentTime().toString(QStringLiteral("hh:mm:ss")) +
                                   QLatin1String("] ") + text);
}

void ProductTest::ReadSettings()
{
    productNumber = ui->PNNodeLdt->text();
    timeoutMs = ui->testTimeout->value() * 1000;
    delayMs = ui->testDelay->value() * 1000;
    gpsCn0Threshold = static_cast<quint16>(ui->gpsCn0Thresh->value());
    nonGpsCn0Threshold = static_cast<quint16>(ui->nonGpsCn0Thresh->value());
}

void ProductTest::CreateRawLog()
{
    rawLogPath = RawCapturePath(QString(), ui->serialCbx->currentText(), QDateTime::currentDateTime());
    CreateRawCapture(rawLogPath);
}

bool ProductTest::OpenPort()
{
    return OpenStationPort(this, *m_serialPort, ui->serialCbx->currentText(),
                           ui->baudRateCbx->currentText().toInt());
}

bool ProductTest::LoadUnitFirmware()
{
    FirmwareLoad load(this, *m_serialPort, kStationLoadRules);
    load.log = [this](const QString& line) { Log(line); };
    return LoadFirmware(this, *m_serialPort, ui->serialCbx->currentText(), ui->baudRateCbx->currentText().toInt(),
                        ui->versionFilePath->text(), load);
}

void ProductTest::SlotStartTest()
{
    if (testRunning) {
        return;
    }
    ShowResult(QString(), nullptr);
    firstFixUtc = 0.0;
    ttffMs = 0;
    ttffPending = true;
    delayRunning = false;
    if (ui->clearHisNmeaLog->isChecked()) {
        ui->showNmea->clear();
    }
    ReadSettings();
    CreateRawLog();
    // A second click during the load begins a second start, which is meant so.
    const QPointer<ProductTest> guard(this);
    if (!LoadUnitFirmware()) {
        return;
    }
    if (!m_serialPort->isOpen() && !OpenPort()) {
        return;
    }
    m_serialPort->write(ReadyFrameBytes(protocol::ReadyFrame::Start));
    m_serialPort->flush();
    ui->startTestBtn->setEnabled(false);
    StationWait(startWaitMs);
    if (guard.isNull()) {
        return;
    }
    timeoutTimer->start(timeoutMs);
    readTimer->start(pollPeriodMs);
    testStartTime = QDateTime::currentDateTimeUtc();
    testRunning = true;
}

void ProductTest::SlotStopTest()
{
    if (!testRunning) {
        return;
    }
    testRunning = false;
    // Before the box that may come: none of them may report inside it.
    for (QTimer* timer : {readTimer, timeoutTimer, delayTimer}) {
        timer->stop();
    }
    const QPointer<ProductTest> guard(this);
    const bool open = m_serialPort->isOpen() || OpenPort();
    if (guard.isNull()) {
        return;
    }
    if (open) {
        // What is still queued when the port closes would be lost.
        WriteThrough(*m_serialPort, ReadyFrameBytes(protocol::ReadyFrame::Stop));
    }
    ui->startTestBtn->setEnabled(true);
    if (m_serialPort->isOpen()) {
        m_serialPort->close();
    }
}

void ProductTest::SlotReadSerialData()
{
    if (!m_serialPort->isOpen()) {
        return;
    }
    const QByteArray bytes = m_serialPort->readAll();
    SilenceDeadLine(*m_serialPort);
    if (bytes.isEmpty()) {
        return;
    }
    AppendRawCapture(rawLogPath, bytes);
    Scan(bytes);
}

void ProductTest::Scan(const QByteArray& bytes)
{
    const QPointer<ProductTest> guard(this);
    QStringList shown;
    const char* position = bytes.constData();
    const char* const end = position + bytes.size();
    protocol::NmeaSentence sentence;
    while (protocol::NextNmeaSentence(m_scanBuffer, position, end, protocol::EndsInLine, sentence)) {
        HandleSentence(sentence, shown);
        if (guard.isNull()) {
            return;
        }
    }
    // In one go: a view of many lines costs by the call.
    if (!shown.isEmpty()) {
        ui->showNmea->appendPlainText(shown.join(QLatin1Char('\n')));
    }
}

void ProductTest::HandleSentence(const protocol::NmeaSentence& sentence, QStringList& shown)
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
        return;
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
        TakeFix();
        break;
    case SentenceKind::Other:
        break;
    }
}

void ProductTest::CloseEpoch()
{
    bool anyBlock = false;
    const std::vector<SatEntry> satellites = SatellitesOf(m_epoch, anyBlock);
    if (!satellites.empty() || !anyBlock) {
        ShowEpoch(SumUp(satellites));
    }
    m_epoch = EpochStore();
}

void ProductTest::ShowEpoch(const EpochSignals& sums)
{
    m_signals = sums;
    maxCn0 = std::max(sums.gps.strongest, sums.nonGps.strongest);
    ui->cn0PaintWidget->SetBars(sums.bars);
    ui->totalSatInfo->setText(GroupText({sums.total.count, maxCn0}));
    ui->gpsSatInfo->setText(GroupText(sums.gps));
    ui->bdsSatInfo->setText(GroupText(GroupOf(sums, 'C')));
    ui->gloSatInfo->setText(GroupText(GroupOf(sums, 'R')));
    ui->galSatInfo->setText(GroupText(GroupOf(sums, 'E')));
    ui->qzsSatInfo->setText(GroupText(GroupOf(sums, 'J')));
}

void ProductTest::TakeFix()
{
    const GgaFields& gga = m_epoch.gga;
    if (gga.quality == 0) {
        return;
    }
    if (testRunning && ttffPending) {
        timeoutTimer->stop();
        firstFixTime = QDateTime::currentDateTimeUtc();
        ttffMs = KeptTtff(testStartTime.msecsTo(firstFixTime));
        ttffPending = false;
        firstFixUtc = gga.utc;
    }
    if (IsLaterFix(gga.utc, firstFixUtc) && !delayRunning) {
        JudgeNow();
    }
}

void ProductTest::JudgeNow()
{
    const UnitThresholds thresholds = {ui->isNeedGps->isChecked(), gpsCn0Threshold, ui->isNeedNonGps->isChecked(),
                                       nonGpsCn0Threshold};
    const UnitVerdict verdict = JudgeUnit(thresholds, m_signals.gps.strongest, m_signals.nonGps.strongest);
    passed = verdict == UnitVerdict::Passed;
    if (passed) {
        ++passCount;
        ShowResult(tr("PASS通过"), passColour);
    } else {
        ShowResult(verdict == UnitVerdict::WeakGps ? tr("GPS载噪比小于门限值") : tr("非GPS载噪比小于门限值"),
                   failColour);
    }
    UpdateCounters();
    if (passed && ui->testDelayChkBox->isChecked()) {
        if (!delayTimer->isActive()) {
            delayTimer->start(delayMs);
            delayRunning = true;
        }
        return;
    }
    StopAndReport();
}

/// The stop may show a box that the window does not outlive; the report is written then all the same.
void ProductTest::StopAndReport()
{
    const QPointer<ProductTest> guard(this);
    const UnitRecord unit = Record();
    const QString rawLog = rawLogPath;
    SlotStopTest();
    if (guard.isNull()) {
        const QDateTime now = QDateTime::currentDateTime();
        WriteUnitReport(NewReportPath(unit, now), unit, rawLog, now);
        return;
    }
    WriteReport();
}

void ProductTest::SlotDelayProc()
{
    delayTimer->stop();
    StopAndReport();
}

void ProductTest::SlotTimeoutProc()
{
    timeoutTimer->stop();
    ttffMs = 0;
    passed = false;
    ShowResult(tr("FAILED不通过"), failColour);
    const QPointer<ProductTest> guard(this);
    const UnitRecord unit = Record();
    const QString rawLog = rawLogPath;
    const QString results = csvPath;
    const bool withHeader = csvHeaderPending;
    SlotStopTest();
    if (guard.isNull()) {
        const QDateTime now = QDateTime::currentDateTime();
        AppendResultRow(results.isEmpty() ? NewResultPath(now) : results, unit, withHeader);
        WriteUnitReport(NewReportPath(unit, now), unit, rawLog, now);
        return;
    }
    UpdateCounters();
    WriteReport();
}

void ProductTest::ShowResult(const QString& text, const char* colour)
{
    resultText = text;
    ui->signalTestRltLbl->setStyleSheet(
        colour == nullptr ? QString() : QStringLiteral("QLabel { color: %1; }").arg(QLatin1String(colour)));
    ui->signalTestRltLbl->setText(resultText);
}

void ProductTest::UpdateCounters()
{
    ++testCount;
    ui->testNum->setText(QString::number(testCount) + tr("次"));
    ui->passNum->setText(QString::number(passCount) + tr("次"));
    ui->passNumRatio->setText(QString::number(passCount * 100.0 / testCount, 'f', 2) + QLatin1Char('%'));

    const UnitRecord unit = Record();
    QList<QStandardItem*> row;
    const QStringList texts = UnitReport::TableRow(unit);
    for (const QString& text : texts) {
        row.append(new QStandardItem(text));
    }
    m_rows->appendRow(row);
    ui->testRltTable->scrollToBottom();

    if (!resultFileOpen) {
        csvPath = NewResultPath(QDateTime::currentDateTime());
        ui->TestRsltPath->setText(csvPath);
        resultFileOpen = true;
    }
    if (AppendResultRow(csvPath, unit, csvHeaderPending)) {
        csvHeaderPending = false;
    }
}

UnitRecord ProductTest::Record() const
{
    UnitRecord unit;
    unit.productNumber = productNumber;
    unit.windowTitle = windowTitle();
    unit.resultText = resultText;
    unit.passed = passed;
    unit.ttffMs = ttffMs;
    unit.gpsMaxCn0 = m_signals.gps.strongest;
    unit.nonGpsMaxCn0 = m_signals.nonGps.strongest;
    unit.gpsSvCount = m_signals.gps.count;
    unit.nonGpsSvCount = m_signals.nonGps.count;
    unit.needGps = ui->isNeedGps->isChecked();
    unit.gpsThreshold = ui->gpsCn0Thresh->value();
    unit.needNonGps = ui->isNeedNonGps->isChecked();
    unit.nonGpsThreshold = ui->nonGpsCn0Thresh->value();
    unit.timeoutSeconds = ui->testTimeout->value();
    unit.delayed = ui->testDelayChkBox->isChecked();
    unit.delaySeconds = ui->testDelay->value();
    return unit;
}

void ProductTest::WriteReport()
{
    const QDateTime now = QDateTime::currentDateTime();
    const UnitRecord unit = Record();
    reportPath = NewReportPath(unit, now);
    if (!WriteUnitReport(reportPath, unit, rawLogPath, now)) {
        Log(ReportFailureText());
    }
}
