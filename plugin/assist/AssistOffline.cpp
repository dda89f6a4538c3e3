// SPDX-License-Identifier: MIT
#include "assist/AssistOffline.h"

#include "ui_AssistOffline.h"

#include "assist/AssistDeployment.h"
#include "assist/PgnssItems.h"
#include "assist/PositionInjection.h"
#include "assist/SeedDecoder.h"
#include "assist/SeedInjection.h"
#include "assist/SeedRules.h"
#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"

#include "host/support/ImageManager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>

namespace {

constexpr char requestPath[] = "/lumat/v1/xgnss/pgnss";
constexpr int customTimeSource = 1;

QString DefaultDataDirectory()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/xgnss");
}

QString DownloadPath()
{
    return DefaultDataDirectory() + QLatin1String("/EE.dat");
}

void AppendFailure(const QString& text)
{
    AppendStatus(text);
    HighlightStatus();
}

} // namespace

AssistOffline::AssistOffline(QWidget* parent) : ClosingWidget(parent), ui(std::make_unique<Ui::AssistOffline>())
{
    ui->setupUi(this);
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/offline_link.png"))));
    // What is injected is fixed; the boxes only show it.
    for (QWidget* shown : std::initializer_list<QWidget*>{
             ui->Pgnss_Gps, ui->Pgnss_Bds, ui->Pgnss_Glo, ui->Pgnss_Gal, ui->Pgnss_Rtc, ui->Pgnss_Eph,
             ui->Pgnss_Utc, ui->Pgnss_Ion, ui->Pgnss_Aux, ui->Pgnss_Rti, ui->Pgnss_InjectTime}) {
        shown->setEnabled(false);
    }
    ConnectControls();

    if (!QFileInfo::exists(SeedDecoder::LibraryPath())) {
        SeedDecoder::Unload();
        ShowCriticalBox(this, tr("文件不存在"), tr("dll 文件不存在，请检查路径"));
        return;
    }
    if (!SeedDecoder::Load()) {
        qDebug().noquote() << "load failed.";
    }
    m_manager = new QNetworkAccessManager(this);
    m_dataDirectory = DefaultDataDirectory();
    if (!QDir().mkpath(m_dataDirectory)) {
        ShowCriticalBox(this, QStringLiteral("ERROR"), QStringLiteral("Create xgnss filePath failed!"));
        m_dataDirectory = QCoreApplication::applicationDirPath();
    }
    const QString seed = m_dataDirectory + QLatin1String("/EE.dat");
    ui->Pgnss_EeFilePath->setText(seed);
    ShowSeed(seed);
}

AssistOffline::~AssistOffline() = default;

void AssistOffline::ConnectControls()
{
    connect(ui->Pgnss_Request, &QPushButton::clicked, this, &AssistOffline::SlotRequest);
    connect(ui->Pgnss_Inject, &QPushButton::clicked, this, &AssistOffline::SlotInject);
    connect(ui->Pgnss_OpenEeFile, &QPushButton::clicked, this, &AssistOffline::on_selectPgnssFile_clicked);
    connect(ui->Pgnss_InjectLoc, &QPushButton::clicked, this, &AssistOffline::SlotInjectLoc);
    connect(ui->Pgnss_TimeSource, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AssistOffline::SlotSourceChanged);
}

void AssistOffline::ShowSeed(const QString& path)
{
    ui->Pgnss_EeFileSize->setText(SeedSizeText(QFileInfo(path).size()));

    quint32 validStart = 0;
    quint32 validEnd = 0;
    const std::optional<int> result = SeedDecoder::GetPgnssDataValidTime(path, validStart, validEnd);
    if (!result) {
        // The other entry point's name; it is meant so.
        qDebug().noquote() << "resolve ParsePgnssData failed";
    } else if (*result != 0) {
        AppendFailure(tr("获取文件有效时间失败，错误码：") + QString::number(*result));
    } else {
        ui->Pgnss_EeFileValidTime->setText(SeedSpanText(validStart, validEnd));
    }
}

void AssistOffline::on_selectPgnssFile_clicked()
{
    const QPointer<AssistOffline> guard(this);
    const QString path = AskFileToOpen(this, QStringLiteral("Select File"), QCoreApplication::applicationDirPath(),
                                       QStringLiteral("Dat file(*.dat);;ALL files(*.*)"));
    qDebug().nospace().noquote() << "ee file path: " << path;
    if (guard.isNull()) {
        return;
    }
    if (path.isEmpty()) {
        ShowCriticalBox(this, tr("提示"), tr("选择路径不存在"));
        return;
    }
    if (QFileInfo(path).suffix() != QLatin1String("dat")) {
        ShowCriticalBox(this, tr("提示"), tr("请选择正确的种子文件"));
        return;
    }
    ui->Pgnss_EeFilePath->setText(path);
    ShowSeed(path);
}

void AssistOffline::SlotRequest()
{
    period = ui->Pgnss_Period->currentText().toUInt();
    if (!IsValidPeriod(period)) {
        qDebug().nospace().noquote() << "[xgnss] period is " << period;
        qDebug().noquote() << "[XGNSS] pgnss get PgnssRequestPara fail";
        return;
    }
    SendPgnssRequest(DeployedServer(requestPath), DeployedAuth(QDateTime::currentDateTime()));
}

void AssistOffline::SendPgnssRequest(const ServerInfo& server, const AuthInfo& auth)
{
    char query[kQuerySize] = {};
    if (FormatPgnssReqStr(query, sizeof(query), period) != AssistDone) {
        return;
    }
    const QNetworkReply* reply = SendSignedRequest(m_manager, server, auth, query, PgnssUrlQuery(period));
    if (reply != nullptr) {
        connect(reply, &QNetworkReply::finished, this, &AssistOffline::PgnssDataFetched);
    }
}

void AssistOffline::PgnssDataFetched()
{
    auto* reply = qobject_cast<QNetworkReply*>(sender());
    if (reply == nullptr) {
        return;
    }
    if (reply->error() != QNetworkReply::NoError) {
        AppendFailure(reply->errorString());
        return;
    }
    const QByteArray body = reply->readAll();
    if (body.isEmpty()) {
        AppendFailure(tr("下载离线辅助数据失败！"));
        return;
    }
    reply->deleteLater();
    if (!WriteSeed(body)) {
        AppendFailure(tr("下载离线辅助数据失败！"));
        return;
    }
    AppendStatus(tr("离线辅助数据下载成功(%1KB)").arg(body.size() >> 10));
    ShowSeed(DownloadPath());
}

bool AssistOffline::WriteSeed(const QByteArray& body)
{
    // Always the same file, whatever the path line shows.
    QFile file(DownloadPath());
    if (!file.exists()) {
        qDebug().noquote() << "creat EE.dat failed";
    }
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        return false;
    }
    return file.write(body) == body.size() && file.flush();
}

void AssistOffline::SlotSourceChanged(int index)
{
    utcType = index;
    qDebug().nospace().noquote() << "UtcType: " << utcType;
    if (utcType == customTimeSource) {
        ReadCustomTime();
    }
}

void AssistOffline::ReadCustomTime()
{
    m_customUtcText = ui->Pgnss_UtcTime->text();
    m_customUnixText = ui->Pgnss_UnixTime->text();
    qDebug().nospace().noquote() << "UTC: " << m_customUtcText;
    if (!::ReadCustomTime(m_customUtcText, m_customTime)) {
        ShowCriticalBox(this, tr("提示"), tr("请输入正确的UTC时间, 示例: 2025/03/21 06:00:00"));
        return;
    }
    qDebug().nospace().noquote() << "unix Time:" << m_customTime.toSecsSinceEpoch();
}

QDateTime AssistOffline::InjectedTime() const
{
    return utcType == customTimeSource ? m_customTime : QDateTime::currentDateTimeUtc();
}

Injector AssistOffline::MakeInjector()
{
    return {this, [this](uint8_t* buffer, int length) { emit SendMsg(buffer, length); }, &m_counters};
}

void AssistOffline::SlotInject()
{
    if (!Global::serialOpen) {
        ShowCriticalBox(this, tr("提示"), tr("请先打开串口"));
        return;
    }
    filePath = ui->Pgnss_EeFilePath->text();
    const QString seed = filePath;
    // The absolute path of an empty text would be the current directory.
    const QString folder = seed.isEmpty() ? QString() : QFileInfo(seed).absolutePath();
    if (!DeleteExpandedFiles(folder)) {
        qDebug().nospace().noquote() << "Don't exist " << folder;
    }
    if (!QFileInfo::exists(QDir::toNativeSeparators(seed))) {
        ShowCriticalBox(this, tr("文件不存在"), tr("文件不存在，请检查路径"));
        return;
    }

    Injector injector = MakeInjector();
    injector.NeedOpenPort();
    qDebug().nospace().noquote() << "XgnssSendUtcTime " << utcType;
    injector.Run(PgnssUtcItem(InjectedTime()));
    if (injector.Ended()) {
        return;
    }
    const qint64 time = InjectedTime().toSecsSinceEpoch();
    if (!SeedIsUsable(seed, time)) {
        qDebug().noquote() << "there is some error while check seed time";
        return;
    }
    if (!ExpandSeed(seed, folder, time)) {
        return;
    }
    // A failure ends the chain; the summary comes all the same.
    InjectExpandedSeed(injector, folder, InjectedTime().toSecsSinceEpoch());
    if (injector.Ended()) {
        return;
    }
    AppendStatus(m_counters.successCount == m_counters.totalCount
                     ? tr("PGNSS所有辅助数据注入成功！")
                     : tr("PGNSS辅助数据注入成功 %1/%2!").arg(m_counters.successCount).arg(m_counters.totalCount));
    m_counters = {};
}

bool AssistOffline::SeedIsUsable(const QString& seed, qint64 time)
{
    quint32 validStart = 0;
    quint32 validEnd = 0;
    const std::optional<int> result = SeedDecoder::GetPgnssDataValidTime(seed, validStart, validEnd);
    if (!result) {
        qDebug().noquote() << "resolve GetPgnssDataValidTime failed";
        return false;
    }
    if (*result != 0) {
        qDebug().nospace().noquote() << "get valid time failed" << *result;
        return false;
    }
    if (!SeedCovers(validStart, validEnd, time)) {
        qDebug().noquote() << "EE Data not in the time interval";
        ShowCriticalBox(this, tr("种子无效"), tr("种子文件已失效，请更新"));
        return false;
    }
    return true;
}

bool AssistOffline::ExpandSeed(const QString& seed, const QString& folder, qint64 time)
{
    const std::optional<int> result = SeedDecoder::ParsePgnssData(seed, folder, static_cast<quint32>(time));
    if (!result) {
        qDebug().noquote() << "resolve ParsePgnssData failed";
        return false;
    }
    if (*result != 0) {
        const int code = *result;
        ShowCriticalBox(this, tr("错误"), tr("解析文件异常"));
        qDebug().nospace().noquote() << "error code is " << code;
        return false;
    }
    return true;
}

void AssistOffline::SlotInjectLoc()
{
    InjectPosition(this, MakeInjector(), ui->Pgnss_Lon->text(), ui->Pgnss_Lat->text(), ui->Pgnss_Alt->text(),
                   {"memcpy pgnssRefLoc failed", tr("PGNSS注入位置 ACK超时")});
}
