// SPDX-License-Identifier: MIT
#include "assist/SenceReplay.h"

#include "ui_SenceReplay.h"

#include "assist/AssistRecords.h"
#include "assist/PgnssItems.h"
#include "base/BoundsChecked.h"
#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "bridge/ClassGnss.h"
#include "protocol/LinkFrame.h"

#include "host/support/ImageManager.h"

#include <QDateTime>
#include <QDebug>
#include <QFile>
#include <QIcon>
#include <QPointer>

#include <limits>

namespace {

/// Keeps the receiver awake for one item. It may outlive the window.
class SleepSwitch {
public:
    SleepSwitch() { ClassGnss::GnssSleepSwitch(0); }
    ~SleepSwitch() { ClassGnss::GnssSleepSwitch(1); }
    SleepSwitch(const SleepSwitch&) = delete;
    SleepSwitch& operator=(const SleepSwitch&) = delete;
};

/// Copies an item's record with its bound checked and sends it.
InjectOutcome RunRecord(const Injector& injector, InjectItem item, const char* copyDebug)
{
    const SleepSwitch awake;
    const QByteArray record = item.payload;
    const auto size = static_cast<std::size_t>(record.size());
    item.payload = QByteArray(record.size(), Qt::Uninitialized);
    if (memcpy_s(item.payload.data(), size, record.constData(), size) != 0) {
        qDebug().noquote() << copyDebug;
        return InjectOutcome::NotEncoded;
    }
    return injector.Run(item);
}

InjectOutcome RunFile(const Injector& injector, const QString& path, const PgnssFile& file)
{
    const SleepSwitch awake;
    return InjectPgnssFile(injector, path, file);
}

QDateTime UtcOf(quint64 unixSeconds)
{
    constexpr quint64 latest = std::numeric_limits<qint64>::max() / 1000;
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(qMin(unixSeconds, latest)), Qt::UTC);
}

} // namespace

SenceReplay::SenceReplay(QWidget* parent) : QWidget(parent), ui(std::make_unique<Ui::SenceReplay>())
{
    ui->setupUi(this);
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/fetchNmea.png"))));
    connect(ui->m_selectSencePath, &QPushButton::clicked, this, &SenceReplay::SlotSelectSencePath);
    connect(ui->m_senceList, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SenceReplay::SlotChangeSenceName);
    connect(ui->m_injectTime, &QPushButton::clicked, this, &SenceReplay::SlotInjectTime);
    connect(ui->m_injectPos, &QPushButton::clicked, this, &SenceReplay::SlotInjectPos);
    connect(ui->m_injectIon, &QPushButton::clicked, this, &SenceReplay::SlotInjectIon);
    connect(ui->m_injectEph, &QPushButton::clicked, this, &SenceReplay::SlotInjectEph);
}

SenceReplay::~SenceReplay() = default;

void SenceReplay::SlotSelectSencePath()
{
    const QPointer<SenceReplay> guard(this);
    const QString path = AskFolder(this, tr("选择文件路径"));
    if (guard.isNull()) {
        return;
    }
    m_libraryPath = path;
    if (m_libraryPath.isEmpty()) {
        ShowCriticalBox(this, tr("提示"), tr("选择路径不存在!"));
        return;
    }
    ui->m_sencePath->setPlainText(m_libraryPath);
    LoadLibrary();
}

void SenceReplay::LoadLibrary()
{
    QFile file(m_libraryPath + QLatin1String("/sence.json"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        ShowCriticalBox(this, tr("提示"), tr("场景json文件打开失败！"));
        return;
    }
    if (!ReadScenes(file.readAll(), m_scenes)) {
        ShowCriticalBox(this, tr("提示"), tr("场景json文件内容为空！"));
        return;
    }
    // The names of an earlier library stay in the list; it is meant so.
    for (const SceneRecord& scene : qAsConst(m_scenes)) {
        ui->m_senceList->insertItem(ui->m_senceList->count(), scene.name);
    }
    ui->m_senceList->setCurrentIndex(0);
    ShowRecord(m_scenes.value(0));
}

void SenceReplay::SlotChangeSenceName(int index)
{
    ShowRecord(m_scenes.value(index));
}

void SenceReplay::ShowRecord(const SceneRecord& record)
{
    ui->m_posLon->setPlainText(record.longitude);
    ui->m_posLat->setPlainText(record.latitude);
    ui->m_posAlt->setPlainText(record.altitude);
    ui->m_utcTime->setPlainText(record.utcStart);
    ui->m_unixTime->setPlainText(record.unixStart);
}

SceneRecord SenceReplay::CurrentRecord() const
{
    return m_scenes.value(ui->m_senceList->currentIndex());
}

QString SenceReplay::CurrentFolder() const
{
    return m_libraryPath + QLatin1Char('/') + CurrentRecord().name + QLatin1Char('/');
}

Injector SenceReplay::MakeInjector()
{
    return {this, [this](uint8_t* buffer, int length) { emit SendMsg(buffer, length); }, nullptr};
}

void SenceReplay::SlotInjectTime()
{
    const quint64 unixSeconds = CurrentRecord().unixStart.toULongLong();
    const Injector injector = MakeInjector();
    if (RunRecord(injector, PgnssUtcItem(UtcOf(unixSeconds)), "memcpy utcTime failed") == InjectOutcome::Gone) {
        return;
    }
    RunRecord(injector, PgnssTimeItem(static_cast<qint64>(unixSeconds)), "memcpy refGpsTime failed");
}

void SenceReplay::SlotInjectPos()
{
    const SceneRecord record = CurrentRecord();
    InjectItem item;
    item.commandId = protocol::CmdPgnssPosition;
    item.payload = ScenePositionRecord(record.longitude.toDouble(), record.latitude.toDouble());
    item.timeoutStatus = tr("PGNSS注入位置 ACK超时");
    RunRecord(MakeInjector(), item, "memcpy pgnssRefLoc failed");
}

void SenceReplay::SlotInjectIon()
{
    RunFile(MakeInjector(), CurrentFolder() + QLatin1String(kFineIonosphere.name), kFineIonosphere);
}

void SenceReplay::SlotInjectEph()
{
    const QString folder = CurrentFolder();
    const Injector injector = MakeInjector();
    for (const PgnssEphemeris& ephemeris : kEphemerides) {
        if (RunFile(injector, folder + QLatin1String(ephemeris.replayName), ephemeris.file) ==
            InjectOutcome::Gone) {
            return;
        }
    }
}
