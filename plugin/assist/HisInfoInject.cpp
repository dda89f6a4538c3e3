// SPDX-License-Identifier: MIT
#include "assist/HisInfoInject.h"

#include "assist/AssistRecords.h"
#include "base/AckWait.h"
#include "base/CommandTexts.h"
#include "base/FileDialogs.h"
#include "base/MessageBoxes.h"
#include "base/ReadyCommand.h"
#include "base/StatusLog.h"
#include "bridge/CommandFrame.h"
#include "protocol/LinkFrame.h"

#include "host/support/ImageManager.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int reportTimeoutMs = 5000;
constexpr int ackLimitMs = 1000;
constexpr QSize pushButtonSize(80, 21);

/// Logs a failure, in red.
void AppendFailure(const QString& text)
{
    AppendStatus(text);
    HighlightStatus();
}

} // namespace

HisInfoInject::HisInfoInject(QWidget* parent) : ClosingWidget(parent)
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
    const QString chosen =
        AskFileToOpen(this, tr("选择文件"), QFileInfo(m_filePath).path(), QStringLiteral("Bin file(*.bin)"));
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
    const CommandFrame frame(ClassGnss::passThroughId, ReadyFrameBytes(protocol::ReadyFrame::ReadHistory));
    if (!frame.IsEncoded()) {
        return;
    }
    const QPointer<HisInfoInject> guard(this);
    emit SendMsg(frame.Data(), frame.Length());
    if (!guard.isNull()) {
        m_reportTimer->start(reportTimeoutMs);
    }
}

void HisInfoInject::SlotRptHisInfoTimeout()
{
    m_reportTimer->stop();
    AppendFailure(tr("历史信息获取失败，请重新获取"));
}

void HisInfoInject::OnHisInfo(const void* record, int length)
{
    if (record == nullptr || length <= 0) {
        return;
    }
    m_reportTimer->stop();
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) {
        AppendFailure(tr("打开") + m_filePath + tr("失败！"));
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
        AppendFailure(tr("UTC注入失败，不再继续注入历史信息"));
        return;
    }
    InjectFile();
}

HisInfoInject::Step HisInfoInject::InjectUtcTime()
{
    const CommandFrame frame(protocol::CmdUtcTime, UtcTimeRecord(QDateTime::currentDateTimeUtc()));
    if (!frame.IsEncoded()) {
        qDebug().nospace().noquote() << "UTC time retLen err: " << frame.Length();
        AppendFailure(tr("历史信息注入UTC时间 组包失败！"));
        return Step::Failed;
    }
    QString answer;
    const Step step = SendAndWait(frame, tr("历史信息注入UTC时间"), &answer);
    if (step != Step::Done) {
        return step;
    }
    // The words decide: the exact words of the accepted command, in whatever language they are shown.
    return answer == CommandText(protocol::CmdUtcTime, 0) + AckStatusText(AckStateAccepted) ? Step::Done
                                                                                            : Step::Failed;
}

HisInfoInject::Step HisInfoInject::InjectFile()
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly)) {
        AppendFailure(tr("历史信息数据文件 打开失败！"));
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
    const CommandFrame frame(protocol::CmdInjectHistory, content);
    if (!frame.IsEncoded()) {
        AppendFailure(tr("注入历史信息 组包失败！"));
        return Step::Failed;
    }
    QString answer;
    return SendAndWait(frame, tr("注入历史信息数据"), &answer);
}

HisInfoInject::Step HisInfoInject::SendAndWait(const CommandFrame& frame, const QString& name, QString* answer)
{
    const QPointer<QObject> guard(this);
    const AckWait wait;
    emit SendMsg(frame.Data(), frame.Length());
    const AckResult result = wait.Run(guard, ackLimitMs);
    if (result.outcome == AckOutcome::SenderGone) {
        return Step::Gone;
    }
    if (result.outcome == AckOutcome::Answered) {
        *answer = result.message;
        AppendStatus(result.message + QLatin1String(": ") + QString::number(frame.Length()) +
                     QLatin1String(" bytes"));
    } else {
        AppendStatus(name + tr(" ACK超时"));
    }
    HighlightStatus();
    AckWait::Finish();
    return result.outcome == AckOutcome::Answered ? Step::Done : Step::Failed;
}
