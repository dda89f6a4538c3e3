#include "HisInfoInject.h"

#include "AssistRecords.h"
#include "codec/ClassGnss.h"
#include "codec/Protocol.h"
#include "main/AckWait.h"
#include "main/CommandTexts.h"
#include "main/MessageBoxes.h"
#include "main/StatusLog.h"

#include "ImageManager.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

#include <vector>

namespace {

const char readHistoryFrame[] = "7e 04 0d 00 02 01 00 00 01 00 00 00 7e";

constexpr int reportTimeoutMs = 5000;
constexpr int ackLimitMs = 1000;
constexpr QSize pushButtonSize(80, 21);

int Encode(quint32 id, const QByteArray& payload, std::vector<uint8_t>& out)
{
    out.resize(ClassGnss::maxFrameLength);
    return ClassGnss::GnssEncode(id, payload.constData(), static_cast<quint32>(payload.size()), out.data(),
                                 ClassGnss::maxFrameLength);
}

} // namespace

HisInfoInject::HisInfoInject(QWidget* parent) : QWidget(parent)
{
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1String("/HisInfo");
    m_filePath = folder + QLatin1String("/HisInfo.bin");
    m_reportTimer = new QTimer(this);
    connect(m_reportTimer, &QTimer::timeout, this, &HisInfoInject::SlotRptHisInfoTimeout);
    BuildForm();
    if (!QDir().mkpath(folder)) {
        ShowCriticalBox(this, QStringLiteral("ERROR"), QStringLiteral("Create historyInfo filePath failed!"));
    }
}

void HisInfoInject::BuildForm()
{
    setWindowTitle(tr("历史信息"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(QStringLiteral(":/images/images/gnss/hisOpened.png"))));
    setWindowModality(Qt::ApplicationModal);

    auto button = [this](const QString& text) {
        auto* made = new QPushButton(text, this);
        made->setFixedHeight(pushButtonSize.height());
        made->setMinimumWidth(pushButtonSize.width());
        return made;
    };
    m_pathEdit = new QLineEdit(this);
    QPushButton* select = button(tr("选择文件"));
    QPushButton* save = button(tr("保存历史信息"));
    QPushButton* inject = button(tr("注入历史信息"));
    connect(select, &QPushButton::clicked, this, &HisInfoInject::SlotSelectHisInfoFilePath);
    connect(save, &QPushButton::clicked, this, &HisInfoInject::SlotSendRptHisInfoCmd);
    connect(inject, &QPushButton::clicked, this, &HisInfoInject::SlotInjectHisInfo);

    auto* help = new QTextEdit(this);
    help->setReadOnly(true);
    // The button names stand in angle brackets, which must not be taken for tags.
    QString text = tr(
        "1.历史信息保存路径：工具安装路径根目录/HisInfo<br>2.历史信息保存：持续跟踪一段时间，点击<保存历史信息>按"
        "钮<br>3.历史信息注入：非冷启动模式下，启动定位前点击<注入历史信息>按钮<br>");
    text = text.toHtmlEscaped().replace(QLatin1String("&lt;br&gt;"), QLatin1String("<br>"));
    help->setHtml(text);

    auto* fileRow = new QHBoxLayout;
    fileRow->addWidget(m_pathEdit);
    fileRow->addWidget(select);
    auto* buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addWidget(save);
    buttonRow->addSpacing(qMax(20, 150 - 2 * qMax(0, save->sizeHint().width() - pushButtonSize.width())));
    buttonRow->addWidget(inject);
    buttonRow->addStretch();
    auto* column = new QVBoxLayout(this);
    column->addLayout(fileRow);
    column->addLayout(buttonRow);
    column->addWidget(help);
    setFixedWidth(400);
}

void HisInfoInject::ShowFilePath()
{
    m_pathEdit->setText(m_filePath);
}

void HisInfoInject::SlotSelectHisInfoFilePath()
{
    const QPointer<HisInfoInject> guard(this);
    const QString chosen = QFileDialog::getOpenFileName(this, tr("选择文件"), QFileInfo(m_filePath).path(),
                                                        QStringLiteral("Bin file(*.bin)"));
    if (guard.isNull()) {
        return;
    }
    if (!chosen.isEmpty()) {
        m_filePath = chosen;
    }
    if (!m_filePath.isEmpty()) {
        m_pathEdit->setText(m_filePath);
    }
}

void HisInfoInject::SlotSendRptHisInfoCmd()
{
    std::vector<uint8_t> out;
    const int length = Encode(ClassGnss::passThroughId, QByteArray::fromHex(readHistoryFrame), out);
    if (length < 0) {
        return;
    }
    const QPointer<HisInfoInject> guard(this);
    emit SendMsg(out.data(), length);
    if (!guard.isNull()) {
        m_reportTimer->start(reportTimeoutMs);
    }
}

void HisInfoInject::SlotRptHisInfoTimeout()
{
    m_reportTimer->stop();
    AppendStatus(tr("历史信息获取失败，请重新获取"));
}

void HisInfoInject::OnHisInfo(const void* record, int length)
{
    if (record == nullptr || length <= 0) {
        return;
    }
    m_reportTimer->stop();
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        AppendStatus(tr("打开") + m_filePath + tr("失败！"));
        return;
    }
    qint64 written = file.write(static_cast<const char*>(record), length);
    if (!file.flush()) {
        written = 0;
    }
    file.close();
    AppendStatus(tr("历史信息保存成功: ") + QString::number(written) + QLatin1Char('/') + QString::number(length) +
                 QLatin1String(" bytes"));
    AppendStatus(tr("历史信息保存路径：") + m_filePath);
    m_pathEdit->setText(m_filePath);
}

void HisInfoInject::SlotInjectHisInfo()
{
    if (!QFileInfo::exists(m_filePath)) {
        AppendStatus(m_filePath + tr("不存在!"));
        return;
    }
    const Step utc = InjectUtcTime();
    if (utc == Step::Gone) {
        return;
    }
    if (utc == Step::Failed) {
        AppendStatus(tr("UTC注入失败，不再继续注入历史信息"));
        return;
    }
    InjectFile();
}

HisInfoInject::Step HisInfoInject::InjectUtcTime()
{
    std::vector<uint8_t> out;
    const int length = Encode(gnss::CmdUtcTime, UtcTimeRecord(QDateTime::currentDateTimeUtc()), out);
    if (length < 0) {
        qDebug().nospace().noquote() << "UTC time retLen err: " << length;
        AppendStatus(tr("历史信息注入UTC时间 组包失败！"));
        return Step::Failed;
    }
    QString answer;
    const Step step = SendAndWait(out.data(), length, tr("历史信息注入UTC时间"), &answer);
    if (step != Step::Done) {
        return step;
    }
    // The words decide: the exact words of the accepted command, in whatever language they are shown.
    return answer == CommandText(gnss::CmdUtcTime, 0) + AckStatusText(AckStateAccepted) ? Step::Done
                                                                                        : Step::Failed;
}

HisInfoInject::Step HisInfoInject::InjectFile()
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        AppendStatus(tr("历史信息数据文件 打开失败！"));
        return Step::Failed;
    }
    // One byte more than any frame holds tells that a file is too long; the encoder then refuses it.
    const QByteArray content = file.read(ClassGnss::maxFrameLength + 1);
    const qint64 size = qMax<qint64>(content.size(), file.size());
    file.close();
    if (content.isEmpty()) {
        ShowCriticalBox(this, tr("提示"), tr("文件内容为空，请检查文件是否正确"));
        return Step::Failed;
    }
    AppendStatus(tr("读取历史文件成功：") + QString::number(size) + QLatin1String(" bytes"));
    std::vector<uint8_t> out;
    const int length = Encode(gnss::CmdInjectHistory, content, out);
    if (length < 0) {
        AppendStatus(tr("注入历史信息 组包失败！"));
        HighlightStatus();
        return Step::Failed;
    }
    QString answer;
    return SendAndWait(out.data(), length, tr("注入历史信息数据"), &answer);
}

HisInfoInject::Step HisInfoInject::SendAndWait(uint8_t* frame, int length, const QString& name, QString* answer)
{
    const QPointer<HisInfoInject> guard(this);
    const AckWait wait;
    emit SendMsg(frame, length);
    const AckResult result =
        guard.isNull() ? AckResult{AckOutcome::SenderGone, 0, {}} : wait.Run(this, ackLimitMs);
    if (result.outcome == AckOutcome::SenderGone) {
        AckWait::Finish();
        return Step::Gone;
    }
    if (result.outcome == AckOutcome::Answered) {
        *answer = result.message;
        AppendStatus(result.message + QLatin1String(": ") + QString::number(length) + QLatin1String(" bytes"));
    } else {
        AppendStatus(name + tr(" ACK超时"));
    }
    HighlightStatus();
    AckWait::Finish();
    return result.outcome == AckOutcome::Answered ? Step::Done : Step::Failed;
}

void HisInfoInject::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
