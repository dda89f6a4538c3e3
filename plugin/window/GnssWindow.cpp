// SPDX-License-Identifier: MIT
#include "window/GnssWindow.h"

#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "base/TrackState.h"
#include "bridge/CallbackRouting.h"
#include "bridge/ClassGnss.h"
#include "line/PortList.h"
#include "production/ProductTest.h"
#include "views/DisplayTimeZone.h"
#include "widgets/CustomBaudRateWin.h"
#include "widgets/SerialSetting.h"

#include "host/support/CProductVersion.h"

#include <QCoreApplication>
#include <QDebug>
#include <QMdiArea>
#include <QSerialPort>
#include <QSettings>
#include <QTimer>

GnssWindow::GnssWindow(const QString& title, int number, QWidget* parent) : QMainWindow(parent)
{
    Q_UNUSED(number)
    if (parent != nullptr) {
        // A main window stays a window of its own when a layout adds it to the parent that it already has.
        setWindowFlags(Qt::Widget);
    }
    setContextMenuPolicy(Qt::NoContextMenu);
    Global::ResetForNewWindow();
    TrackState::Reset();
    ResetTimeZone();
    serialPort = new QSerialPort;
    WatchOwnPort(serialPort);
    setWindowTitle(title);

    const QSettings settings(QStringLiteral("./Source-Datas/bin/config/language.ini"), QSettings::IniFormat);
    Global::language = settings.value(QStringLiteral("LanguageSetting/Language")).toInt();

    ScanPortNames();
    Global::currentPortName = portNames.value(0);

    BuildWorkspace(parent);
    BuildToolBar();

    ClassGnss::InitGnssUtils();
    if (const int version = ClassGnss::GetLibVersion(); ClassGnss::CodecLoaded()) {
        qDebug() << "GnssUtils.dll version is:" << version;
    }

    PublishRecordTarget(this);
    mdiArea = InstallMdiArea();

    connect(this, &GnssWindow::SendMsg, this, &GnssWindow::SlotSendPackets, Qt::DirectConnection);
    connect(this, &GnssWindow::ChangeStartFlagSignal, this, &GnssWindow::SlotChangeSwitchImage);
    ConnectToolWindows();
    BuildTimers();

    RegisterCallbacks();
    OpenDefaultViews();
    ClassGnss::SetChipType(static_cast<quint32>(CProductVersion::GetVersion()));

    lastDirectory = QCoreApplication::applicationDirPath();
    productTestCount = 1;
}

GnssWindow::~GnssWindow()
{
    // The views die with the base class, after this part of the object: nothing may tick or call back by then.
    recvTimer->stop();
    noDataTimer->stop();
    replayTimer->stop();
    Global::replayRunning = false;

    ClassGnss::UnloadCodec();
    if (PublishedRecordTarget() == this) {
        PublishRecordTarget(nullptr);
    }
    if (serialPort->isOpen()) {
        serialPort->close();
    }
    Global::serialOpen = false;
    Global::positioningStarted = false;
    SetStatusEdit(nullptr);
    emit closeGnssSignal();
    const QList<ProductTest*> tests = productTests.values();
    productTests.clear();
    qDeleteAll(tests);
    delete customBaudWin;
    delete serialSetting;
    delete serialPort;
}

void GnssWindow::BuildTimers()
{
    replayTimer = new QTimer(this);
    connect(replayTimer, &QTimer::timeout, this, &GnssWindow::SlotSendReplayData);
    recvTimer = new QTimer(this);
    recvTimer->setTimerType(Qt::PreciseTimer);
    connect(recvTimer, &QTimer::timeout, this, &GnssWindow::SlotRecivePostMsg);
    // Nothing starts it; the silence probe stands ready.
    noDataTimer = new QTimer(this);
    connect(noDataTimer, &QTimer::timeout, this, &GnssWindow::SlotProcSerialNoData);
}
