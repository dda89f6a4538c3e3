// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <functional>

class QWidget;

/// A run without a user: lets the window work for its time, then leaves a picture of it, the debug log, the logs
/// and captures of this run and a summary in a folder.
class HeadlessRun : public QObject {
    Q_OBJECT

public:
    /// An empty `folder` means one in the current directory that is named by the time.
    HeadlessRun(int seconds, const QString& folder, QWidget* window);

    void SetReceiverState(std::function<QString()> text) { m_receiverState = std::move(text); }

    /// Names a port that this run opens: raw captures bear the last component of its path.
    void AddPort(const QString& port);

    /// Starts the clock; a second call changes nothing.
    void Start();

    /// The raw captures of this run's ports, and the working logs, that did not exist when the run was made.
    QStringList NewCaptures() const;
    QStringList NewLogs() const;

Q_SIGNALS:
    /// `status` is 0 when data came through, else 1.
    void Finished(int status);

private:
    bool IsOurs(const QString& capture) const;
    void CloseBoxes();
    void End();
    bool Write(const QString& name, const QByteArray& bytes);
    void Copy(const QStringList& files, const QString& subfolder);

    int m_seconds;
    QString m_folder;
    QWidget* m_window;
    std::function<QString()> m_receiverState;
    QTimer m_clock;
    QTimer m_boxTimer;
    QStringList m_prefixes;
    QSet<QString> m_oldFiles;
    bool m_failed = false;
};
