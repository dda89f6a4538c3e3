// SPDX-License-Identifier: MIT
#include "assist/AssistOnline.h"

#include "ui_AssistOnline.h"

#include "assist/AgnssReply.h"
#include "assist/AssistDeployment.h"
#include "assist/AssistRecords.h"
#include "assist/PositionInjection.h"
#include "base/MessageBoxes.h"
#include "base/ProcessState.h"
#include "base/StatusLog.h"
#include "protocol/AgnssTags.h"
#include "protocol/LinkFrame.h"

#include "host/support/ImageManager.h"

#include <QIcon>
#include <QNetworkAccessManager>
#include <QNetworkReply>

namespace {

constexpr char requestPath[] = "/lumat/v1/xgnss/agnss";
constexpr int pauseAfterRequestMs = 1500;

quint32 BitWhen(const QAbstractButton* box, quint32 bit)
{
    return box->isChecked() ? bit : 0U;
}

} // namespace

AssistOnline::AssistOnline(QWidget* parent) : ClosingWidget(parent), ui(std::make_unique<Ui::AssistOnline>())
{
    ui->setupUi(this);
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/online_link.png"))));
    m_manager = new QNetworkAccessManager(this);
    connect(ui->Agnss_ReqAndInject, &QPushButton::clicked, this, &AssistOnline::SlotReqAndInject);
    connect(ui->Agnss_InjectLoc, &QPushButton::clicked, this, &AssistOnline::SlotInjectLoc);
}

AssistOnline::~AssistOnline() = default;

AgnssRequestPara AssistOnline::RequestPara() const
{
    AgnssRequestPara para;
    using protocol::AgnssBit;
    using protocol::Constellation;
    using protocol::DataTypeBit;
    para.constellation = BitWhen(ui->Agnss_Gps, AgnssBit(Constellation::Gps)) |
                         BitWhen(ui->Agnss_Glo, AgnssBit(Constellation::Glonass)) |
                         BitWhen(ui->Agnss_Bds, AgnssBit(Constellation::Beidou)) |
                         BitWhen(ui->Agnss_Gal, AgnssBit(Constellation::Galileo));
    para.datatype = BitWhen(ui->Agnss_Eph, DataTypeBit(protocol::AgnssEph)) |
                    BitWhen(ui->Agnss_Utc, DataTypeBit(protocol::AgnssUtc)) |
                    BitWhen(ui->Agnss_Ion, DataTypeBit(protocol::AgnssIon)) |
                    BitWhen(ui->Agnss_Rti, DataTypeBit(protocol::AgnssRti)) |
                    BitWhen(ui->Agnss_Aux, DataTypeBit(protocol::AgnssAux));
    return para;
}

void AssistOnline::SlotReqAndInject()
{
    const ServerInfo server = DeployedServer(requestPath);
    const AuthInfo auth = DeployedAuth(QDateTime::currentDateTime());
    const AgnssRequestPara para = RequestPara();
    if (!IsValid(para)) {
        return;
    }
    SendAgnssRequest(server, auth, para);
    // The reply, and with it a whole injection, may run in here.
    PumpDelay(pauseAfterRequestMs);
}

void AssistOnline::SendAgnssRequest(const ServerInfo& server, const AuthInfo& auth, const AgnssRequestPara& para)
{
    char query[kQuerySize] = {};
    if (FormatAgnssReqStr(query, sizeof(query), para) != AssistDone) {
        return;
    }
    const QNetworkReply* reply = SendSignedRequest(m_manager, server, auth, query, AgnssUrlQuery(para));
    if (reply != nullptr) {
        connect(reply, &QNetworkReply::finished, this, &AssistOnline::AgnssDataFetched);
    }
}

void AssistOnline::AgnssDataFetched()
{
    auto* reply = qobject_cast<QNetworkReply*>(sender());
    if (reply == nullptr) {
        return;
    }
    // A reply with an error may have a body as well; only the body counts. The reply stays with the manager.
    const QByteArray body = reply->readAll();
    if (body.isEmpty()) {
        AppendStatus(tr("在线辅助数据下载失败!"));
        HighlightStatus();
        return;
    }
    AppendStatus(tr("在线辅助数据下载成功(%1KB)，准备注入").arg(body.size() / 1024));
    InjectReply(body);
}

Injector AssistOnline::MakeInjector()
{
    return {this, [this](uint8_t* buffer, int length) { emit SendMsg(buffer, length); }, &m_counters};
}

void AssistOnline::InjectReply(const QByteArray& body)
{
    if (!Global::serialOpen) {
        ShowCriticalBox(this, tr("提示"), tr("请先打开串口"));
        return;
    }
    Injector injector = MakeInjector();
    injector.NeedOpenPort();
    InjectItem time;
    time.commandId = protocol::CmdUtcTime;
    time.payload = UtcTimeRecord(QDateTime::currentDateTimeUtc());
    time.encodeDebug = "UTC time retLen err: ";
    time.encodeStatus = tr("AGNSS注入UTC时间组包失败！");
    time.resultInStatus = true;
    time.timeoutStatus = tr("AGNSS注入UTC时间 ACK超时");
    time.answerPrefix = tr(":AGNSS");
    injector.Run(time);
    if (injector.Ended()) {
        return;
    }

    AgnssWalk walk(body);
    AgnssRecord record;
    AgnssWalk::Step step;
    while ((step = walk.Next(record)) == AgnssWalk::Step::Record) {
        InjectAgnssRecord(injector, record);
        if (injector.Ended()) {
            return;
        }
    }
    if (step == AgnssWalk::Step::Broken) {
        // Without a word, and the counts go into the next summary; it is meant so.
        return;
    }
    AppendStatus(m_counters.successCount == m_counters.totalCount
                     ? tr("AGNSS所有辅助数据注入成功")
                     : tr("AGNSS辅助数据注入成功 %1/%2!").arg(m_counters.successCount).arg(m_counters.totalCount));
    m_counters = {};
}

void AssistOnline::SlotInjectLoc()
{
    InjectPosition(this, MakeInjector(), ui->Agnss_Lon->text(), ui->Agnss_Lat->text(), ui->Agnss_Alt->text(),
                   {"memcpy agnssRefLoc failed", tr("AGNSS注入位置 ACK超时")});
}
