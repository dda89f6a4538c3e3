// SPDX-License-Identifier: MIT
#include "base/GnssSaveData.h"

#include "base/ClockText.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

namespace {

constexpr quint32 kLongestEntry = 0x40000000;

// Bytes of an entry's time and line end.
constexpr int kEntryFrame = 12;

// A path stands here once for each log that is open at it.
QStringList openLogs;

} // namespace

GnssSaveData::GnssSaveData(QObject* parent) : QObject(parent) {}

GnssSaveData::~GnssSaveData()
{
    CloseLog();
}

void GnssSaveData::SetLogName(const QString& name)
{
    logName = name;
}

void GnssSaveData::OpenLog()
{
    CloseLog();
    directory = QDir::currentPath() + "/GnssData/logs/" + logName;
    if (!QDir(directory).exists()) {
        QDir().mkpath(directory);
    }
    filePath = directory + "/log" + QDateTime::currentDateTime().toString("_yyyyMMddhhmmss") + ".txt";
    file = new QFile(filePath);
    // Unbuffered: on a full disk QFile would keep what it can't write, and grow with every entry.
    if (file->open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        m_openPath = QFileInfo(filePath).canonicalFilePath();
        openLogs.append(m_openPath);
    }
}

QString GnssSaveData::RollLog()
{
    CloseLog();
    OpenLog();
    return filePath;
}

void GnssSaveData::Write(const char* bytes, quint32 length)
{
    // What is pending is the folder, which QFile::remove never removes: the rolled logs stay, as they shall.
    if (!pendingRemovePath.isEmpty() && QFileInfo::exists(pendingRemovePath) && QFile::remove(pendingRemovePath)) {
        pendingRemovePath.clear();
    }
    if (bytes == nullptr || length == 0 || length > kLongestEntry) {
        return;
    }
    if (file == nullptr || !file->isOpen()) {
        return;
    }
    // As bytes and not as text, so that any byte reaches the file as it is.
    QByteArray entry;
    entry.reserve(static_cast<int>(length) + kEntryFrame);
    entry += '[';
    entry += ClockText().toLatin1();
    entry += "] ";
    entry.append(bytes, static_cast<int>(length));
    entry += '\n';
    file->write(entry);
    if (file->size() > kLogRollSize) {
        file->close();
        CompressLog();
        RollLog();
        emit clearWin();
    }
}

void GnssSaveData::CompressLog()
{
    pendingRemovePath = directory;
    const QFileInfo folder(directory);
    // The archive is a 7z one in spite of its name.
    const QString archive = folder.absolutePath() + "/" + folder.baseName() + ".zip";
    const QStringList arguments{"a", "-t7z", archive, directory, "-m0=BCJ", "-m1=LZMA:d=21", "-ms", "-mmt"};
    const QString program = QDir::currentPath() + "/Source-Datas/bin/7zr.exe";
    if (!QFileInfo::exists(program)) {
        qDebug().noquote().nospace() << "exe file is not exists: " << program;
    }
    compressProcess = new QProcess;
    // The run may outlive this program, and then must not die of a closed pipe.
    compressProcess->setStandardOutputFile(QProcess::nullDevice());
    compressProcess->setStandardErrorFile(QProcess::nullDevice());
    compressProcess->start(program, arguments, QIODevice::ReadWrite);
}

bool GnssSaveData::IsOpenLog(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return !canonical.isEmpty() && openLogs.contains(canonical);
}

void GnssSaveData::CloseLog()
{
    if (file == nullptr) {
        return;
    }
    delete file;
    file = nullptr;
    if (!m_openPath.isEmpty()) {
        openLogs.removeOne(m_openPath);
    }
    m_openPath.clear();
}
