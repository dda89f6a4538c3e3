// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QFile;
class QProcess;

/// Size in bytes above which a working log is closed and a new one begun.
constexpr qint64 kLogRollSize = 0xA00000;

/// Writes the working log of one view: text entries with the time, byte for byte. Nothing is ever reported: an
/// entry that can't be written is lost.
class GnssSaveData : public QObject {
    Q_OBJECT

public:
    explicit GnssSaveData(QObject* parent = nullptr);
    ~GnssSaveData() override;

    /// Folder of the log under GnssData/logs: "nmea", "hex" or "package". Called before OpenLog.
    void SetLogName(const QString& name);

    /// Opens a log named after the current time under the current directory.
    void OpenLog();

    /// Closes the open log and opens another one, whose path it returns.
    QString RollLog();

    /// Appends one entry of `length` bytes; null or no bytes are no entry. A log that has grown above
    /// kLogRollSize is archived, and another one begun.
    void Write(const char* bytes, quint32 length);

    /// Starts the archiver on the folder of the log and doesn't wait for it.
    void CompressLog();

    /// True when a log of this process is open at `path`, whatever form the path has.
    static bool IsOpenLog(const QString& path);

signals:
    /// Another log has been begun: the view empties its display, so that both start together.
    void clearWin();

private:
    void CloseLog();

    QString directory;
    QString filePath;
    QFile* file = nullptr;
    QProcess* compressProcess = nullptr; ///< the latest run; earlier ones are left to themselves
    QString pendingRemovePath;
    QString logName;
    QString m_openPath; ///< the open log's entry in the list of open logs
};
