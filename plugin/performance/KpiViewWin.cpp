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

} // namespace

KpiViewWin::KpiViewWin(QWidget* parent)
    : ClosingWidget(parent), ui(std::make_unique<Ui::KpiViewWin>()), m_form(*ui), m_tables(*ui), m_sequencer(*this)
{
    ui->setupUi(this);
    m_listModel = new QStringListModel(QStringList(tr("Kpi测试")), this);
    ui->listView->setModel(m_listModel);
    refLocWin = new RefLocWin(this);
    refLocWin->setObjectName(QStringLiteral("refLocWin"));
    StyleForm();

    KpiConfigTexts texts;
    if (LoadKpiConfig(texts)) {
        m_form.ShowConfig(texts);
    }
    m_form.LoadReferences();

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
    m_tables.Style();
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
    connect(refLocWin, &RefLocWin::RefLocSaved, this,
            [this](const RefLocation& location) { m_form.AddReference(location); });
    connect(ui->comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &KpiViewWin::ChangeRefLocWhileCbxIdxChange);
    connect(testTimeoutTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestTimeout);
    connect(testTrackTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestCompleteTrk);
    connect(testDelayTimer, &QTimer::timeout, this, &KpiViewWin::SlotTestCompleteDelay);
}

// --- the sequencer's surroundings ---------------------------------------------------------------------------

KpiTestConfig KpiViewWin::Config() const
{
    return ParseKpiConfig(m_form.Config());
}

bool KpiViewWin::ColdTicked() const
{
    return m_form.ColdTicked();
}

bool KpiViewWin::HotTicked() const
{
    return m_form.HotTicked();
}

KpiPlace KpiViewWin::Reference() const
{
    return m_form.Reference();
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
    m_form.Lock(lock);
}

void KpiViewWin::ClearResults()
{
    m_tables.Clear();
    m_satellites.ClearShown();
}

void KpiViewWin::ShowResult(KpiTestMode mode, int row, int column, const QString& text)
{
    m_tables.ShowResult(mode, row, column, text);
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
    SaveKpiResult([this](KpiTestMode mode, int row, int column) { return m_tables.Result(mode, row, column); });
    // Told also when the file could not be written: it is meant so.
    ShowInformationBox(this, tr("提示"), tr("测试结果保存成功"));
}

void KpiViewWin::SaveTestCfg2IniFile()
{
    SaveKpiConfig(m_form.Config());
    // Told also when the file could not be written: it is meant so.
    ShowInformationBox(this, tr("提示"), tr("测试配置保存成功"));
}

void KpiViewWin::ChangeRefLocWhileCbxIdxChange(int index)
{
    m_form.ChooseReference(index);
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
    m_tables.ShowFix(KpiTextsOf(fix));
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
    m_tables.ShowSatellites(m_satellites, summedUp);
    if (summedUp) {
        update();
    }
}
