// SPDX-License-Identifier: MIT
#include "host/app/HeadlessRun.h"

#include "host/app/DebugLog.h"
#include "host/app/NmeaCounter.h"

#include <QApplication>
#include <QDebug>
#include <QDialog>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kBoxMilliseconds = 200;
constexpr qint64 kChunk = qint64{256} * 1024;

QStringList Files(const QString& folder, const QString& pattern, bool deep)
{
    QStringList files;
    QDirIterator it(folder, {pattern}, QDir::Files,
                    deep ? QDirIterator::Subdirectories : QDirIterator::NoIteratorFlags);
    while (it.hasNext()) {
        files << QFileInfo(it.next()).canonicalFilePath();
    }
    files.sort();
    return files;
}

/// The raw captures lie under the application directory, the working logs under the current one.
QStringList AllCaptures()
{
    QStringList files = Files(QCoreApplication::applicationDirPath() + QStringLiteral("/GnssData"),
                              QStringLiteral("*.bin"), false);
    files += Files(QDir::currentPath() + QStringLiteral("/GnssData"), QStringLiteral("*.bin"), false);
    files.removeDuplicates();
    return files;
}

QStringList AllLogs()
{
    return Files(QDir::currentPath() + QStringLiteral("/GnssData/logs"), QStringLiteral("*"), true);
}

} // namespace

HeadlessRun::HeadlessRun(int seconds, const QString& folder, QWidget* window)
    : m_seconds(seconds), m_folder(folder), m_window(window)
{
    if (m_folder.isEmpty()) {
        m_folder = QStringLiteral("headless_%1")
                       .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmsszzz")));
    }
    m_folder = QFileInfo(m_folder).absoluteFilePath();
    for (const QString& file : AllCaptures() + AllLogs()) {
        m_oldFiles.insert(file);
    }
    m_clock.setSingleShot(true);
    connect(&m_clock, &QTimer::timeout, this, &HeadlessRun::End);
    connect(&m_boxTimer, &QTimer::timeout, this, &HeadlessRun::CloseBoxes);
    // From the beginning: the plug-in may open one while its window is built.
    m_boxTimer.start(kBoxMilliseconds);
}

void HeadlessRun::Start()
{
    if (!m_clock.isActive()) {
        m_clock.start(m_seconds * 1000);
    }
}

void HeadlessRun::AddPort(const QString& port)
{
    m_prefixes << QFileInfo(port).fileName() + QLatin1Char('_');
}

/// Another host may write into the same folder at the same time.
bool HeadlessRun::IsOurs(const QString& capture) const
{
    const QString name = QFileInfo(capture).fileName();
    return std::any_of(m_prefixes.cbegin(), m_prefixes.cend(),
                       [&name](const QString& prefix) { return name.startsWith(prefix); });
}

QStringList HeadlessRun::NewCaptures() const
{
    QStringList files;
    for (const QString& file : AllCaptures()) {
        if (!m_oldFiles.contains(file) && IsOurs(file)) {
            files << file;
        }
    }
    return files;
}

QStringList HeadlessRun::NewLogs() const
{
    QStringList files;
    for (const QString& file : AllLogs()) {
        if (!m_oldFiles.contains(file)) {
            files << file;
        }
    }
    return files;
}

void HeadlessRun::CloseBoxes()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal) {
        return;
    }
    const auto* box = qobject_cast<QMessageBox*>(modal);
    qWarning().noquote() << "box closed:" << modal->windowTitle() << (box ? box->text() : QString());
    if (auto* dialog = qobject_cast<QDialog*>(modal)) {
        dialog->reject();
    } else {
        modal->close();
    }
}

bool HeadlessRun::Write(const QString& name, const QByteArray& bytes)
{
    QFile file(m_folder + QLatin1Char('/') + name);
    const bool good = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    if (!good) {
        qWarning().noquote() << file.fileName() << "cannot be written:" << file.errorString();
        m_failed = true;
    }
    return good;
}

void HeadlessRun::Copy(const QStringList& files, const QString& subfolder)
{
    if (files.isEmpty()) {
        return;
    }
    const QString target = m_folder + QLatin1Char('/') + subfolder;
    QDir().mkpath(target);
    for (const QString& file : files) {
        // Working logs of different views may have one name: their folder's name goes in front.
        const QFileInfo info(file);
        const QString folder = info.dir().dirName();
        const QString name =
            subfolder == QLatin1String("logs") ? folder + QLatin1Char('_') + info.fileName() : info.fileName();
        if (!QFile::copy(file, target + QLatin1Char('/') + name)) {
            qWarning().noquote() << file << "cannot be copied to" << target;
            m_failed = true;
        }
    }
}

void HeadlessRun::End()
{
    m_boxTimer.stop();
    if (!QDir().mkpath(m_folder)) {
        qCritical().noquote() << "no folder" << m_folder;
        emit Finished(1);
        return;
    }
    const QString picture = m_folder + QStringLiteral("/screenshot.png");
    if (!m_window->grab().save(picture)) {
        qWarning().noquote() << picture << "cannot be written";
        m_failed = true;
    }

    NmeaCounter counter;
    const QStringList captures = NewCaptures();
    QByteArray chunk;
    for (const QString& name : captures) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        while (!(chunk = file.read(kChunk)).isEmpty()) {
            counter.Feed(chunk.constData(), chunk.size());
        }
    }
    Copy(captures, QStringLiteral("captures"));
    Copy(NewLogs(), QStringLiteral("logs"));

    // Nothing is counted behind this point, so the summary tells of all that the debug log holds.
    const int errors = DebugLog::Instance().ErrorCount();
    Write(QStringLiteral("debug.log"), DebugLog::Instance().Text().toUtf8());
    const QString summary =
        QStringLiteral(
            "bytes: %1\nsentences: %2\nfixes: %3\nsatellites: %4\nerrors: %5\nreceiver: %6\nfolder: %7\n")
            .arg(QString::number(counter.Bytes()), QString::number(counter.Sentences()),
                 QString::number(counter.Fixes()), QString::number(counter.Satellites()), QString::number(errors),
                 m_receiverState ? m_receiverState() : QString(), m_folder);
    Write(QStringLiteral("summary.txt"), summary.toUtf8());
    std::fputs(summary.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
    emit Finished(counter.Bytes() > 0 && counter.Sentences() > 0 && !m_failed ? 0 : 1);
}
