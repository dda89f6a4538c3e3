// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

/// An empty current directory for one test, and what the working logs in it hold.
class LogFolder {
public:
    LogFolder() : m_before(QDir::currentPath()) { QDir::setCurrent(m_folder.path()); }
    ~LogFolder() { QDir::setCurrent(m_before); }
    LogFolder(const LogFolder&) = delete;
    LogFolder& operator=(const LogFolder&) = delete;

    QString Path(const QString& name) const { return QDir(m_folder.path()).filePath(name); }

    QStringList Files(const QString& folder) const { return QDir(Path(folder)).entryList(QDir::Files); }

    static QByteArray Content(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    bool Put(const QString& name, const QByteArray& content) const
    {
        const QString path = Path(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    /// What the entries of a log hold, when `entry` is all that was written: the content without its times.
    static QByteArray WithoutTimes(QByteArray content)
    {
        for (int at = 0; at < content.size();) {
            if (content.at(at) != '[' || content.mid(at + 9, 2) != "] ") {
                return "an entry without a time";
            }
            content.remove(at, 11);
            const int end = content.indexOf('\n', at);
            if (end < 0) {
                return "an entry without an end";
            }
            // An entry may hold line ends of its own; the next one begins with its time.
            at = end + 1;
            while (at < content.size() && !(content.at(at) == '[' && content.mid(at + 9, 2) == "] ")) {
                const int next = content.indexOf('\n', at);
                if (next < 0) {
                    return "an entry without an end";
                }
                at = next + 1;
            }
        }
        return content;
    }

private:
    QString m_before;
    QTemporaryDir m_folder;
};
