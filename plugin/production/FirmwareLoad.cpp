// SPDX-License-Identifier: MIT
#include "production/FirmwareLoad.h"

#include "production/FirmwareAnswer.h"
#include "production/StationPort.h"
#include "protocol/FirmwareImage.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QSerialPort>

namespace {

constexpr int narrowCounterMask = 0xFF;

/// Counted with the others, but not part of what is shown.
constexpr int uncountedRecords = 2;

protocol::ImageSource SourceOf(QFile& file)
{
    return [&file](char* out, std::size_t size) {
        const qint64 got = file.read(out, static_cast<qint64>(size));
        return got > 0 ? static_cast<std::size_t>(got) : std::size_t{0};
    };
}

} // namespace

FirmwareLoad::FirmwareLoad(const QPointer<QObject>& owner, QSerialPort& port, const FirmwareLoadRules& rules)
    : pump(StationWait), m_owner(owner), m_port(port), m_rules(rules)
{
}

FirmwareLoadOutcome FirmwareLoad::Run(const QString& imagePath)
{
    m_total = 0;
    m_done = 0;
    QFile file(imagePath);
    // Opening a pipe would wait for its writer, and a device never ends.
    if (!QFileInfo(imagePath).isFile() || !file.open(QIODevice::ReadOnly)) {
        return FirmwareLoadOutcome::NoFile;
    }
    if (!protocol::FirmwareImage(SourceOf(file)).ReadHeader()) {
        log(tr("读取版本号失败，请确认固件选择是否正确"));
        return FirmwareLoadOutcome::Failed;
    }
    CountRecords(file);
    switch (Replay(file)) {
    case Pass::OwnerGone:
        return FirmwareLoadOutcome::OwnerGone;
    case Pass::Failed:
        log(tr("固件加载失败，完成%1/%2条").arg(m_done).arg(m_total - uncountedRecords));
        return FirmwareLoadOutcome::Failed;
    case Pass::Done:
        break;
    }
    log(QString());
    log(tr("固件加载成功"));
    pump(versionWaitMs);
    if (m_owner.isNull()) {
        return FirmwareLoadOutcome::OwnerGone;
    }
    const QString version = ReadVersion();
    if (version.isEmpty()) {
        return m_rules.needsVersion ? FirmwareLoadOutcome::Failed : FirmwareLoadOutcome::Loaded;
    }
    const QString line = tr("当前固件版本：") + version;
    log(line);
    if (m_rules.versionToDebugLog) {
        qDebug().noquote() << line;
    }
    return FirmwareLoadOutcome::Loaded;
}

int FirmwareLoad::Counted(int value) const
{
    return m_rules.narrowCounters ? value & narrowCounterMask : value;
}

void FirmwareLoad::CountRecords(QFile& file)
{
    protocol::FirmwareImage image(SourceOf(file));
    protocol::FirmwareRecord record;
    while (image.Next(record)) {
        m_total = Counted(m_total + 1);
    }
}

FirmwareLoad::Pass FirmwareLoad::Replay(QFile& file)
{
    file.seek(0);
    protocol::FirmwareImage image(SourceOf(file));
    if (!image.ReadHeader()) {
        log(tr("读取版本号失败"));
        return Pass::Failed;
    }
    protocol::FirmwareRecord record;
    while (image.Next(record)) {
        if (record.skipped) {
            continue;
        }
        if (!SendMessage(record.message)) {
            return Pass::OwnerGone;
        }
        if (record.Terminates()) {
            return Pass::Done;
        }
        if (!TakeAnswer()) {
            log(tr("ACK处理异常"));
            return Pass::Failed;
        }
        m_done = Counted(m_done + 1);
        ShowProgress();
    }
    return Pass::Done;
}

/// False when the owner is gone.
bool FirmwareLoad::SendMessage(const std::string& message)
{
    // A second load may have closed the port under this one.
    if (m_port.isOpen() && !message.empty()) {
        m_port.write(message.data(), static_cast<qint64>(message.size()));
        m_port.flush();
    }
    pump(messageWaitMs);
    return !m_owner.isNull();
}

bool FirmwareLoad::TakeAnswer()
{
    QByteArray answer;
    if (m_port.isOpen()) {
        // The wait may say no although bytes are there: what is read decides.
        if (m_port.bytesAvailable() == 0) {
            m_port.waitForReadyRead(answerWaitMs);
        }
        answer = m_port.readAll();
    }
    if (answer.isEmpty()) {
        log(tr("串口读取ACK数据失败"));
        return false;
    }
    if (!IsAcceptedAnswer(answer)) {
        log(tr("固件加载失败，ACK值为") + AnswerAsHex(answer));
        return false;
    }
    return true;
}

void FirmwareLoad::ShowProgress() const
{
    const qint64 shown = m_total - uncountedRecords;
    // With two records the first one answered is all there is.
    progress(shown == 0 ? 100 : static_cast<int>(qint64{m_done} * 100 / shown));
}

QString FirmwareLoad::ReadVersion()
{
    const QByteArray reply = m_port.isOpen() ? m_port.readAll() : QByteArray();
    if (reply.size() > kLongestVersionReply) {
        log(tr("获取版本号长度异常，长度为") + QString::number(reply.size()));
        return {};
    }
    return VersionText(reply);
}
