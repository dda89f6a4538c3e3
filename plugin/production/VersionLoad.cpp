// SPDX-License-Identifier: MIT
#include "production/VersionLoad.h"

#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "line/PortList.h"
#include "production/FirmwareLoad.h"
#include "production/StationPort.h"

#include "host/support/ImageManager.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDebug>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSerialPort>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

constexpr qint32 loadBaudRate = 115200;
constexpr QSize windowSize(400, 400);
constexpr QSize buttonSize(75, 21);
constexpr int labelSpacing = 20;

} // namespace

VersionLoad::VersionLoad(QWidget* parent)
    : ClosingWidget(parent), m_serialPort(std::make_unique<QSerialPort>()),
      lastDir(QCoreApplication::applicationDirPath())
{
    WatchOwnPort(m_serialPort.get());
    BuildWindow();
    SlotUpdatePortInfo();
    Prepare();
}

VersionLoad::~VersionLoad() = default;

void VersionLoad::BuildWindow()
{
    setWindowTitle(tr("固件加载"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/versionLoading.png")));
    setFixedSize(windowSize);
    setWindowModality(Qt::ApplicationModal);

    m_pathEdit = new QLineEdit(this);
    m_startBtn = new QPushButton(tr("开始烧录"), this);
    m_selectBtn = new QPushButton(tr("选择固件"), this);
    for (QPushButton* button : {m_startBtn, m_selectBtn}) {
        button->setFixedSize(buttonSize);
    }
    m_log = new QTextEdit(this);
    m_log->setReadOnly(true);
    m_log->setUndoRedoEnabled(false);
    m_portBox = new QComboBox(this);
    m_portBox->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_portBox->setMinimumContentsLength(1);
    m_portBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_portBox->installEventFilter(this);
    m_progress = new QLabel(this);

    auto* portRow = new QHBoxLayout;
    portRow->addWidget(m_portBox);
    portRow->addWidget(m_startBtn);
    auto* pathRow = new QHBoxLayout;
    pathRow->addWidget(m_pathEdit);
    pathRow->addWidget(m_selectBtn);
    auto* stateRow = new QHBoxLayout;
    stateRow->setSpacing(labelSpacing);
    stateRow->addWidget(new QLabel(tr("烧录状态"), this));
    stateRow->addWidget(m_progress);
    stateRow->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addLayout(portRow);
    column->addLayout(pathRow);
    column->addLayout(stateRow);
    column->addWidget(m_log);

    connect(m_startBtn, &QPushButton::clicked, this, &VersionLoad::SlotStartLoadVersion);
    connect(m_selectBtn, &QPushButton::clicked, this, &VersionLoad::SlotSelectVersionPath);
    connect(m_portBox, qOverload<int>(&QComboBox::activated), this, &VersionLoad::SlotChangeComboBoxText);
}

void VersionLoad::Prepare()
{
    m_progress->setText(tr("加载进度：") + QLatin1String("0%"));
    m_log->setPlainText(QString());
}

void VersionLoad::Log(const QString& line)
{
    // Not append(), which reads markup.
    m_log->moveCursor(QTextCursor::End);
    if (!m_log->document()->isEmpty()) {
        m_log->textCursor().insertBlock();
    }
    m_log->insertPlainText(line);
    m_log->ensureCursorVisible();
}

bool VersionLoad::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_portBox && event->type() == QEvent::MouseButtonPress) {
        SlotUpdatePortInfo();
    }
    return QWidget::eventFilter(watched, event);
}

void VersionLoad::SlotUpdatePortInfo()
{
    m_portName = FreePortNames();
    if (m_portBox == nullptr) {
        qDebug().noquote() << "VersionLoad->m_portName pointer does not exist";
        return;
    }
    OfferPorts(*m_portBox, m_portName);
}

void VersionLoad::SlotChangeComboBoxText(int index)
{
    m_portBox->setCurrentIndex(index);
}

void VersionLoad::SlotChangePort(const QString& portName)
{
    if (portName == Global::loaderPortName) {
        return;
    }
    Global::loaderPortName = portName;
    if (m_serialPort->isOpen()) {
        m_serialPort->close();
        m_serialPort->setPortName(portName);
        m_serialPort->setBaudRate(loadBaudRate, QSerialPort::AllDirections);
        m_serialPort->open(QIODevice::ReadWrite);
    }
}

void VersionLoad::SlotSelectVersionPath()
{
    const QPointer<VersionLoad> guard(this);
    const QString chosen = AskFileToOpen(this, tr("选择文件"), lastDir, QStringLiteral("Bin file(*.bin)"));
    if (guard.isNull()) {
        return;
    }
    if (chosen.isEmpty()) {
        ShowCriticalBox(nullptr, tr("提示"), tr("选择路径不存在"));
        return;
    }
    firmwarePath = chosen;
    lastDir = QFileInfo(chosen).path();
    m_pathEdit->setText(chosen);
}

void VersionLoad::SlotStartLoadVersion()
{
    FirmwareLoad load(this, *m_serialPort, kDialogLoadRules);
    load.log = [this](const QString& line) { Log(line); };
    load.progress = [this](int percent) {
        m_progress->setText(tr("加载进度：") + QString::number(percent) + QLatin1Char('%'));
    };
    LoadFirmware(this, *m_serialPort, m_portBox->currentText(), loadBaudRate, m_pathEdit->text(), load);
}
