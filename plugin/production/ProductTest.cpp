// SPDX-License-Identifier: MIT
#include "production/ProductTest.h"

#include "base/FileDialogs.h"
#include "base/ReadyCommand.h"
#include "line/PortList.h"
#include "line/RawCapture.h"
#include "line/SerialLine.h"
#include "production/FirmwareLoad.h"
#include "production/StationPapers.h"
#include "production/StationPort.h"

#include "ui_ProductTest.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QDebug>
#include <QFileInfo>
#include <QIcon>
#include <QPointer>
#include <QSerialPort>
#include <QTimer>

namespace {

constexpr int usualBaudRate = 115200;

} // namespace

ProductTest::ProductTest(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::ProductTest>()), m_serialPort(std::make_unique<QSerialPort>()),
      m_lastDir(QCoreApplication::applicationDirPath()), timeoutTimer(new QTimer(this)),
      delayTimer(new QTimer(this)), readTimer(new QTimer(this)), m_views(*ui),
      m_sequencer(*this, m_views, std::make_shared<StationPapers>())
{
    ui->setupUi(this);
    m_views.SetUp(this);
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/ProductTestOn.png")));
    WatchOwnPort(m_serialPort.get());
    readTimer->setTimerType(Qt::PreciseTimer);
    ui->baudRateCbx->setCurrentText(QString::number(usualBaudRate));
    ConnectControls();
    ui->serialCbx->installEventFilter(this);
    UpdatePortInfo();
}

void ProductTest::ConnectControls()
{
    connect(ui->clearPNBtn, &QPushButton::clicked, this, &ProductTest::SlotClearPN);
    connect(ui->selectVersionFile, &QPushButton::clicked, this, &ProductTest::SlotSelectFile);
    connect(ui->lockCfgRtn, &QAbstractButton::toggled, this, &ProductTest::SlotLockTestCfg);
    connect(ui->startTestBtn, &QPushButton::clicked, this, &ProductTest::SlotStartTest);
    connect(ui->stopTestBtn, &QPushButton::clicked, this, &ProductTest::SlotStopTest);
    connect(ui->serialCbx, qOverload<int>(&QComboBox::activated), this, &ProductTest::SlotChangeComboBoxText);
    connect(readTimer, &QTimer::timeout, this, &ProductTest::SlotReadSerialData);
    connect(delayTimer, &QTimer::timeout, this, &ProductTest::SlotDelayProc);
    connect(timeoutTimer, &QTimer::timeout, this, &ProductTest::SlotTimeoutProc);
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

void ProductTest::SlotStartTest()
{
    m_sequencer.StartClicked();
}

void ProductTest::SlotStopTest()
{
    m_sequencer.StopClicked();
}

void ProductTest::SlotDelayProc()
{
    m_sequencer.OnDelayOver();
}

void ProductTest::SlotTimeoutProc()
{
    m_sequencer.OnTimeout();
}

void ProductTest::SlotReadSerialData()
{
    if (!m_serialPort->isOpen()) {
        return;
    }
    const QByteArray bytes = m_serialPort->readAll();
    SilenceDeadLine(*m_serialPort);
    if (!bytes.isEmpty()) {
        m_sequencer.OnBytes(bytes);
    }
}

UnitRecord ProductTest::Form() const
{
    UnitRecord form;
    form.productNumber = ui->PNNodeLdt->text();
    form.windowTitle = windowTitle();
    form.needGps = ui->isNeedGps->isChecked();
    form.gpsThreshold = ui->gpsCn0Thresh->value();
    form.needNonGps = ui->isNeedNonGps->isChecked();
    form.nonGpsThreshold = ui->nonGpsCn0Thresh->value();
    form.timeoutSeconds = ui->testTimeout->value();
    form.delayed = ui->testDelayChkBox->isChecked();
    form.delaySeconds = ui->testDelay->value();
    return form;
}

QDateTime ProductTest::Now() const
{
    return QDateTime::currentDateTimeUtc();
}

QString ProductTest::NewRawLog()
{
    const QString path = RawCapturePath(QString(), ui->serialCbx->currentText(), QDateTime::currentDateTime());
    CreateRawCapture(path);
    return path;
}

void ProductTest::KeepRaw(const QString& rawLogPath, const QByteArray& bytes)
{
    AppendRawCapture(rawLogPath, bytes);
}

qint32 ProductTest::BaudRate() const
{
    return ui->baudRateCbx->currentText().toInt();
}

bool ProductTest::LoadFirmware()
{
    FirmwareLoad load(this, *m_serialPort, kStationLoadRules);
    load.log = [this](const QString& line) { m_views.Log(line); };
    return ::LoadFirmware(this, *m_serialPort, ui->serialCbx->currentText(), BaudRate(),
                          ui->versionFilePath->text(), load);
}

UnitPort ProductTest::OpenPort()
{
    const QPointer<ProductTest> guard(this);
    if (m_serialPort->isOpen() || OpenStationPort(this, *m_serialPort, ui->serialCbx->currentText(), BaudRate())) {
        return UnitPort::Open;
    }
    return guard.isNull() ? UnitPort::Gone : UnitPort::Closed;
}

void ProductTest::ClosePort()
{
    if (m_serialPort->isOpen()) {
        m_serialPort->close();
    }
}

void ProductTest::Send(UnitFrame frame)
{
    switch (frame) {
    case UnitFrame::Start:
        m_serialPort->write(ReadyFrameBytes(protocol::ReadyFrame::Start));
        m_serialPort->flush();
        break;
    case UnitFrame::Stop:
        // What is still queued when the port closes would be lost.
        WriteThrough(*m_serialPort, ReadyFrameBytes(protocol::ReadyFrame::Stop));
        break;
    }
}

bool ProductTest::Wait(int milliseconds)
{
    const QPointer<ProductTest> guard(this);
    StationWait(milliseconds);
    return !guard.isNull();
}

QTimer* ProductTest::TimerOf(UnitTimer timer) const
{
    switch (timer) {
    case UnitTimer::Timeout:
        return timeoutTimer;
    case UnitTimer::Delay:
        return delayTimer;
    case UnitTimer::Read:
        break;
    }
    return readTimer;
}

void ProductTest::StartTimer(UnitTimer timer, int milliseconds)
{
    TimerOf(timer)->start(milliseconds);
}

void ProductTest::StopTimer(UnitTimer timer)
{
    TimerOf(timer)->stop();
}
