// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Collects the debug log while it lives.
class LogCatcher {
public:
    LogCatcher() : m_previous(qInstallMessageHandler(Handle)) { Lines().clear(); }
    ~LogCatcher() { qInstallMessageHandler(m_previous); }
    LogCatcher(const LogCatcher&) = delete;
    LogCatcher& operator=(const LogCatcher&) = delete;

    static QStringList& Lines()
    {
        static QStringList lines;
        return lines;
    }

private:
    static void Handle(QtMsgType, const QMessageLogContext&, const QString& text) { Lines().append(text); }

    QtMessageHandler m_previous;
};
