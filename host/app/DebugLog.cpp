// SPDX-License-Identifier: MIT
#include "host/app/DebugLog.h"

#include <QCoreApplication>
#include <QMutexLocker>
#include <QTime>

#include <cstdio>

namespace {

thread_local bool insideHandler = false;

QChar LevelLetter(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QLatin1Char('D');
    case QtInfoMsg:
        return QLatin1Char('I');
    case QtWarningMsg:
        return QLatin1Char('W');
    case QtCriticalMsg:
        return QLatin1Char('E');
    case QtFatalMsg:
        return QLatin1Char('F');
    }
    return QLatin1Char('?');
}

/// What the platform says about itself at every start, and Qt's notes on two connections that are asked for and
/// known not to be there; no errors of this program.
bool IsPlatformNoise(const QString& text)
{
    return text.endsWith(QLatin1String("No matching signal for on_selectPgnssFile_clicked()")) ||
           text.endsWith(QLatin1String("No such signal ConfigViewWin::ChangeStartFlagSignal()")) ||
           text.startsWith(QLatin1String("This plugin does not support ")) ||
           text.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"));
}

bool IsError(QtMsgType type)
{
    return type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg;
}

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (IsError(type) && IsPlatformNoise(text)) {
        type = QtInfoMsg;
    }
    DebugLog::Instance().Add(type, QString::fromUtf8(context.category), text);
    if (IsError(type)) {
        const QByteArray bytes = text.toLocal8Bit();
        std::fprintf(stderr, "%s\n", bytes.constData());
    }
}

} // namespace

DebugLog& DebugLog::Instance()
{
    static auto* const log = new DebugLog;
    return *log;
}

void DebugLog::Install()
{
    qInstallMessageHandler(HandleMessage);
}

void DebugLog::Add(QtMsgType type, const QString& category, const QString& text)
{
    if (insideHandler) {
        return;
    }
    insideHandler = true;
    QString line = QTime::currentTime().toString(QStringLiteral("hh:mm:ss.zzz ")) + LevelLetter(type);
    if (!category.isEmpty() && category != QLatin1String("default")) {
        line += QLatin1Char(' ') + category + QLatin1Char(':');
    }
    line += QLatin1Char(' ') + text;
    {
        const QMutexLocker lock(&m_mutex);
        m_lines.push_back(line);
        if (m_lines.size() > kMaxLines) {
            m_lines.pop_front();
            ++m_firstNumber;
        }
        if (IsError(type)) {
            ++m_errors;
        }
        if (m_listener && !m_eventPosted) {
            m_eventPosted = true;
            QCoreApplication::postEvent(m_listener, new QEvent(NewLinesEvent()));
        }
    }
    insideHandler = false;
}

void DebugLog::SetListener(QObject* listener)
{
    const QMutexLocker lock(&m_mutex);
    m_listener = listener;
    m_eventPosted = false;
}

QEvent::Type DebugLog::NewLinesEvent()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

QStringList DebugLog::LinesFrom(quint64& next)
{
    const QMutexLocker lock(&m_mutex);
    m_eventPosted = false;
    QStringList lines;
    const quint64 end = m_firstNumber + m_lines.size();
    for (quint64 number = qMax(next, m_firstNumber); number < end; ++number) {
        lines << m_lines[static_cast<std::size_t>(number - m_firstNumber)];
    }
    next = end;
    return lines;
}

QString DebugLog::Text()
{
    const QMutexLocker lock(&m_mutex);
    QString text;
    for (const QString& line : m_lines) {
        text += line + QLatin1Char('\n');
    }
    return text;
}

void DebugLog::Clear()
{
    const QMutexLocker lock(&m_mutex);
    m_firstNumber += m_lines.size();
    m_lines.clear();
}

int DebugLog::ErrorCount()
{
    const QMutexLocker lock(&m_mutex);
    return m_errors;
}
