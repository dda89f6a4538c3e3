// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QMutex>
#include <QString>
#include <QStringList>

#include <deque>

class QObject;

/// The debug log of the process: everything that goes through Qt's debug stream, newest lines only.
///
/// It is never destroyed, so that messages of other threads, of itself, and of the time after the windows (and
/// after main) find a place to go.
class DebugLog {
public:
    static constexpr int kMaxLines = 20000;

    static DebugLog& Instance();

    /// Installs the message handler. Warnings and worse go on to the standard error stream too.
    void Install();

    /// Adds one message; callable from every thread. A message raised inside this call is dropped.
    void Add(QtMsgType type, const QString& category, const QString& text);

    /// The one object that gets an event of type NewLinesEvent() when there are new lines; null for none.
    void SetListener(QObject* listener);
    static QEvent::Type NewLinesEvent();

    /// The lines with a number of `next` and above that are still held; moves `next` behind them.
    QStringList LinesFrom(quint64& next);

    /// All lines that are held.
    QString Text();
    void Clear();

    /// Warnings and worse since the start.
    int ErrorCount();

private:
    DebugLog() = default;

    QMutex m_mutex;
    std::deque<QString> m_lines;
    quint64 m_firstNumber = 0; // number of m_lines.front()
    int m_errors = 0;
    QObject* m_listener = nullptr;
    bool m_eventPosted = false;
};
