// SPDX-License-Identifier: MIT
#include "performance/KpiViewWin.h"

#include "ui_KpiViewWin.h"

#include "base/AckWait.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/ReadyCommand.h"
#include "bridge/CommandFrame.h"
#include "bridge/RecordCopy.h"
#include "performance/KpiFixTexts.h"
#include "performance/KpiResultFile.h"
#include "performance/RefLocWin.h"
#include "protocol/Records.h"

#include <QPointer>
#include <QStringListModel>
#include <QTimer>

#include <cstring>

namespace {

constexpr char buttonStyle[] =
    "QPushButton{background-color:rgb(202, 251, 255); color: black;border-radius: 10px; border: 2px groove gray; "
    "border-style: outset;}QPushButton:pressed{background-color:rgb(85, 170, 255); border-style: inset;}";
constexpr char labelStyle[] =
    "QLabel{background-color:rgb(170, 255, 0); color: black; border: 0px groove black; }";

// Rows of the latest fix and of the satellites that hold values.
enum LatestRow { LatestRowTime = 2, LatestRowPlace = 4 };
enum SatRow { SatRowTracked = 2, SatRowUsed = 3, SatRowTop5 = 4 };
constexpr int latestInUseColumn = 3;
constexpr int satTotalColumn = 1;
constexpr int satFirstColumn = 2; ///< of the constellations

/// Puts a new, centred cell into the place of the old one.
void SetCell(QTableWidget* table, int row, int column, const QString& text)
{
    auto* cell = new QTableWidgetItem(text);
    cell->setTextAlignment(Qt::AlignCenter);
    table->setItem(row, column, cell);
}

/// Takes the cells of a row out, so that they are missing and not empty.
void RemoveCells(QTableWidget* table, int row, int first, int last)
{
    for (int column = first; column <= last; ++column) {
        delete table->takeItem(row, column);
    }
}

void StyleTable(QTableWidget* table)
{
    table->resizeColumnsToContents();
    for (QHeaderView* header : {table->horizontalHeader(), table->verticalHeader()}) {
        header->setSectionResizeMode(QHeaderView::Stretch);
        header->setMinimumSectionSize(1);
        header->setVisible(false);
    }
    table->setSpan(0, 0, 1, table->columnCount());
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < table->columnCount(); ++column) {
            if (QTableWidgetItem* cell = table->item(row, column)) {
                cell->setTextAlignment(Qt::AlignCenter);
            }
        }
    }
}

} // namespace

KpiViewWin::KpiViewWin(QWidget* parent)
    : ClosingWidget(parent), ui(std::make_unique<Ui::KpiViewWin>()), m_sequencer(*this)
{
    ui->setupUi(this);
    m_listModel = new QStringListModel(QStringList(tr("Kpi测试")), this);
    ui->listView->setModel(m_listModel);
    refLocWin = new RefLocWin(this);
    refLocWin->setObjectName(QStringLiteral("refLocWin"));
    StyleForm();

    KpiConfigTexts texts;
    if (LoadKpiConfig(texts)) {
        ShowConfig(texts);
    }
    LoadReferences();

    testTimeoutTimer = new QTimer(this);
    testTrackTimer = new QTimer(this);
    testDelayTimer = new QTimer(this);
    ConnectControls();
    for (QCheckBox* box :
         {ui->checkBox_coldAgnss, ui->checkBox_coldPgnss, ui->checkBox_hotAgnss, ui->checkBox_hotPgnss}) {
        box->setEnabled(false);
    }
}

KpiViewWin::~KpiViewWin()
{
    for (QTimer* timer : {testTimeoutTimer, testTrackTimer, testDelayTimer}) {
        timer->stop();
    }
    // When the whole main window goes, the codec is unloaded already and nothing is sent.
    if (m_sequencer.TestRunning()) {
        SlotEditStopBtnClicked();
    }
}

void KpiViewWin::StyleForm()
{
    const QList<QPushButton*> buttons = ui->stackedWidget->findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        button->setStyleSheet(QLatin1String(buttonStyle));
    }
    const QList<QTableWidget*> tables = ui->stackedWidget->findChildren<QTableWidget*>();
    for (QTableWidget* table : tables) {
        StyleTable(table);
    }
    ui->label->setStyleSheet(QLatin1String(labelStyle));
    ui->label_2->setStyleSheet(QLatin1String(labelStyle));
}

void KpiViewWin::ConnectControls()
{
    connect(ui->listView, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& index) { ui->stackedWidget->setCurrentIndex(index.row()); });
    connect(ui->pushButton_2, &QPushButton::clicked, this, [this] { m_sequencer.StartStopClicked(); });
    connect(ui->saveTestCfg, &QPushButton::clicked, this, &KpiViewWin::SaveTestCfg2IniFile);
    connect(ui->saveTestResult, &QPushButton::clicked, this, &KpiViewWin::SaveTestRes2CsvFile);
    connect(ui->AddRefLoc, &QPushButton::clicked, refLocWin, &QWidget::show);
    connect(refLocWin, &RefLocWin::RefLocSaved, this, &KpiViewWin::AddReference);
    connect(ui->comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &KpiViewWin::ChangeRefLocWhileCbxIdxChange);
    connect(testTimeoutTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestTimeout);
    connect(testTrackTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestCompleteTrk);
    connect(testDelayTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestCompleteDelay);
}

// --- the sequencer's surroundings ---------------------------------------------------------------------------

KpiTestConfig KpiViewWin::Config() const
{
    return ParseKpiConfig(ConfigTexts());
}

bool KpiViewWin::ColdTicked() const
{
    return ui->checkBox_coldStart->isChecked();
}

bool KpiViewWin::HotTicked() const
{
    return ui->checkBox_hotStart->isChecked();
}

KpiPlace KpiViewWin::Reference() const
{
    return {ui->refPosLat->text().toDouble(), ui->refPosLon->text().toDouble(), ui->refPosAlt->text().toDouble()};
}

bool KpiViewWin::PositioningStarted() const
{
    return Global::positioningStarted;
}

QDateTime KpiViewWin::Now() const
{
    return QDateTime::currentDateTime();
}

KpiSend KpiViewWin::Send(protocol::ReadyFrame frame)
{
    const CommandFrame encoded(ClassGnss::passThroughId, ReadyFrameBytes(frame));
    if (!encoded.IsEncoded()) {
        return KpiSend::NotEncoded;
    }
    // A box about a closed port may outlive the window.
    const QPointer<KpiViewWin> guard(this);
    emit SendMsg(encoded.Data(), encoded.Length());
    return guard.isNull() ? KpiSend::Gone : KpiSend::Sent;
}

void KpiViewWin::WakeUp()
{
    emit SendWakeUpCmd();
}

bool KpiViewWin::Wait(int milliseconds)
{
    const QPointer<KpiViewWin> guard(this);
    PumpDelay(milliseconds);
    return !guard.isNull();
}

bool KpiViewWin::Warn(KpiWarning warning)
{
    const QPointer<KpiViewWin> guard(this);
    const QString text =
        warning == KpiWarning::AlreadyStarted ? tr("当前已经启动，请勿重复操作") : tr("请勾选要执行的测试");
    ShowWarningBox(this, tr("错误"), text);
    return !guard.isNull();
}

QTimer* KpiViewWin::TimerOf(KpiTimer timer) const
{
    switch (timer) {
    case KpiTimer::Timeout:
        return testTimeoutTimer;
    case KpiTimer::Track:
        return testTrackTimer;
    case KpiTimer::Delay:
        break;
    }
    return testDelayTimer;
}

void KpiViewWin::StartTimer(KpiTimer timer, int milliseconds)
{
    TimerOf(timer)->start(milliseconds);
}

void KpiViewWin::StopTimer(KpiTimer timer)
{
    TimerOf(timer)->stop();
}

void KpiViewWin::ShowRunning(bool running)
{
    ui->pushButton_2->setText(running ? tr("停止测试") : tr("开始测试"));
}

void KpiViewWin::LockControls(bool lock)
{
    const QList<QLineEdit*> edits = ui->stackedWidget->findChildren<QLineEdit*>();
    for (QLineEdit* edit : edits) {
        edit->setReadOnly(lock);
    }
    // Unlocking takes in the boxes that the constructor disabled: it is meant so.
    const QList<QCheckBox*> boxes = ui->stackedWidget->findChildren<QCheckBox*>();
    for (QCheckBox* box : boxes) {
        box->setEnabled(!lock);
    }
    ui->AddRefLoc->setEnabled(!lock);
}

QTableWidget* KpiViewWin::ResultTable(KpiTestMode mode) const
{
    return mode == KpiTestMode::Cold ? ui->coldTestResult : ui->hotTestResult;
}

void KpiViewWin::ClearResults()
{
    for (QTableWidget* table : {ui->coldTestResult, ui->hotTestResult}) {
        for (const int row : {KpiRowCounts, KpiRowTtff, KpiRowCep}) {
            RemoveCells(table, row, 0, 3);
        }
    }
    for (const int row : {LatestRowTime, LatestRowPlace}) {
        RemoveCells(ui->latestData, row, 0, 3);
    }
    for (const int row : {SatRowTracked, SatRowUsed, SatRowTop5}) {
        RemoveCells(ui->satData, row, 1, 6);
    }
    m_satellites.ClearShown();
}

void KpiViewWin::ShowResult(KpiTestMode mode, int row, int column, const QString& text)
{
    SetCell(ResultTable(mode), row, column, text);
}

// --- slots --------------------------------------------------------------------------------------------------

bool KpiViewWin::SlotEditStartBtnClicked()
{
    return m_sequencer.SendStart();
}

void KpiViewWin::SlotEditStopBtnClicked()
{
    Send(protocol::ReadyFrame::Stop);
}

void KpiViewWin::SlotSendColdStart()
{
    Send(protocol::ReadyFrame::ColdStart);
}

void KpiViewWin::SlotSendHotStart()
{
    Send(protocol::ReadyFrame::HotStart);
}

void KpiViewWin::SlotSendAllNmeaRpt()
{
    Send(protocol::ReadyFrame::NmeaMask);
}

void KpiViewWin::SlotTestTimeout()
{
    m_sequencer.OnTimeout();
}

void KpiViewWin::SlotTestCompleteTrk()
{
    m_sequencer.OnTrackingOver();
}

void KpiViewWin::SlotTestCompleteDelay()
{
    m_sequencer.OnIntervalOver();
}

void KpiViewWin::SaveTestRes2CsvFile()
{
    SaveKpiResult([this](KpiTestMode mode, int row, int column) {
        const QTableWidgetItem* cell = ResultTable(mode)->item(row, column);
        return cell != nullptr ? cell->text() : QString();
    });
    // Told also when the file could not be written: it is meant so.
    ShowInformationBox(this, tr("提示"), tr("测试结果保存成功"));
}

void KpiViewWin::SaveTestCfg2IniFile()
{
    SaveKpiConfig(ConfigTexts());
    // Told also when the file could not be written: it is meant so.
    ShowInformationBox(this, tr("提示"), tr("测试配置保存成功"));
}

// --- configuration and reference places ---------------------------------------------------------------------

KpiConfigTexts KpiViewWin::ConfigTexts() const
{
    const auto tick = [](const QCheckBox* box) {
        return box->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
    };
    return {tick(ui->checkBox_coldStart), tick(ui->checkBox_coldAgnss), tick(ui->checkBox_coldPgnss),
            ui->coldTestNum->text(),      ui->coldTestTimeout->text(),  ui->coldTestInr->text(),
            ui->coldTestTrkTime->text(),  tick(ui->checkBox_hotStart),  tick(ui->checkBox_hotAgnss),
            tick(ui->checkBox_hotPgnss),  ui->hotTestNum->text(),       ui->hotTestTimeout->text(),
            ui->hotTestInr->text(),       ui->hotTestTrkTime->text()};
}

void KpiViewWin::ShowConfig(const KpiConfigTexts& texts)
{
    const auto tick = [&texts](QCheckBox* box, KpiConfigEntry entry) {
        if (texts[entry] == QLatin1String("true")) {
            box->setChecked(true);
        }
    };
    tick(ui->checkBox_coldStart, KpiColdStart);
    tick(ui->checkBox_coldAgnss, KpiColdAgnss);
    tick(ui->checkBox_coldPgnss, KpiColdPgnss);
    tick(ui->checkBox_hotStart, KpiHotStart);
    tick(ui->checkBox_hotAgnss, KpiHotAgnss);
    tick(ui->checkBox_hotPgnss, KpiHotPgnss);
    ui->coldTestNum->setText(texts[KpiColdNum]);
    ui->coldTestTimeout->setText(texts[KpiColdTimeout]);
    ui->coldTestInr->setText(texts[KpiColdInr]);
    ui->coldTestTrkTime->setText(texts[KpiColdTrkTime]);
    ui->hotTestNum->setText(texts[KpiHotNum]);
    ui->hotTestTimeout->setText(texts[KpiHotTimeout]);
    ui->hotTestInr->setText(texts[KpiHotInr]);
    ui->hotTestTrkTime->setText(texts[KpiHotTrkTime]);
}

void KpiViewWin::ShowReference(const std::array<QString, 3>& place)
{
    ui->refPosLon->setText(place[0]);
    ui->refPosLat->setText(place[1]);
    ui->refPosAlt->setText(place[2]);
}

void KpiViewWin::LoadReferences()
{
    // The combo box stays on the first point while the edits show the last one: it is meant so.
    const QVector<RefLocation> locations = ReadRefLocations();
    for (const RefLocation& location : locations) {
        const std::array<QString, 3> place = {location.longitude, location.latitude, location.altitude};
        ui->comboBox->addItem(location.name);
        ShowReference(place);
        refLocMap.insert(refLocMap.size(), place);
    }
}

void KpiViewWin::AddReference(const RefLocation& location)
{
    const int index = ui->comboBox->count();
    const std::array<QString, 3> place = {location.longitude, location.latitude, location.altitude};
    refLocMap.insert(index, place);
    ui->comboBox->addItem(location.name);
    ui->comboBox->setCurrentIndex(index);
    ShowReference(place);
}

void KpiViewWin::ChangeRefLocWhileCbxIdxChange(int index)
{
    ui->comboBox->setCurrentIndex(index);
    ShowReference(refLocMap[index]);
}

// --- records ------------------------------------------------------------------------------------------------

void KpiViewWin::OnKpiFix(const void* buffer, int length)
{
    if (!m_sequencer.Accepts()) {
        return;
    }
    const RecordCopy record(buffer, length, sizeof(protocol::KpiFixRecord), "KpiViewWin");
    if (record.IsDropped()) {
        return;
    }
    // A shorter record reads zeros behind its end.
    protocol::KpiFixRecord fix = {};
    std::memcpy(&fix, record.Data(), record.Size());
    m_sequencer.OnPosition(fix.second, {fix.latitude, fix.longitude, fix.altitude});

    const KpiFixTexts texts = KpiTextsOf(fix);
    SetCell(ui->latestData, LatestRowTime, 0, texts.date);
    SetCell(ui->latestData, LatestRowTime, 1, texts.time);
    SetCell(ui->latestData, LatestRowTime, 2, texts.hdop);
    SetCell(ui->latestData, LatestRowPlace, 0, texts.latitude);
    SetCell(ui->latestData, LatestRowPlace, 1, texts.longitude);
    SetCell(ui->latestData, LatestRowPlace, 2, texts.altitude);
    SetCell(ui->latestData, LatestRowPlace, 3, texts.speed);
}

void KpiViewWin::OnKpiCn0(const void* buffer, int length)
{
    if (!m_sequencer.Accepts()) {
        return;
    }
    const RecordCopy record(buffer, length, KpiSatellites::largestRecord, "KpiViewWin");
    if (record.IsDropped()) {
        return;
    }
    const bool summedUp = m_satellites.Take(record.Data(), record.Size());
    for (int i = 0; i < KpiSatellites::constellations; ++i) {
        const KpiSatellites::Column& column = m_satellites.ColumnOf(i);
        if (column.shown) {
            SetCell(ui->satData, SatRowTracked, satFirstColumn + i, QString::number(column.tracked));
            SetCell(ui->satData, SatRowUsed, satFirstColumn + i, QString::number(column.stat.used));
            SetCell(ui->satData, SatRowTop5, satFirstColumn + i, QString::number(column.stat.top5));
        }
    }
    if (summedUp) {
        const QString used = QString::number(m_satellites.UsedCount());
        SetCell(ui->satData, SatRowTracked, satTotalColumn, QString::number(m_satellites.Count()));
        SetCell(ui->satData, SatRowUsed, satTotalColumn, used);
        SetCell(ui->latestData, LatestRowTime, latestInUseColumn, used);
        SetCell(ui->satData, SatRowTop5, satTotalColumn, QString::number(m_satellites.Top5(), 'g', 6));
        update();
    }
}
