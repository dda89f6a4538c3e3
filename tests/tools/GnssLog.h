// SPDX-License-Identifier: MIT
#pragma once

#include "Files.h"
#include "Sentence.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTime>

/// Runs a program to its end; the code is -1 when it is not there or crashes.
struct ProgramRun {
    ProgramRun(const QString& program, const QStringList& arguments, const QByteArray& input = QByteArray())
    {
        QProcess process;
        process.start(program, arguments);
        process.write(input);
        process.closeWriteChannel();
        code = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit ? process.exitCode()
                                                                                              : -1;
        output = process.readAllStandardOutput();
        errors = QString::fromUtf8(process.readAllStandardError());
    }

    int code;
    QByteArray output;
    QString errors;
};

inline ProgramRun GnssLog(const QStringList& arguments, const QByteArray& input = QByteArray())
{
    return ProgramRun(QStringLiteral(GNSS_BUILD_BIN "/gnss-log"), arguments, input);
}

/// The sentences of an epoch `ms` after midnight, with a fix in mode `mode` or without one in mode 0. Each
/// lies a little further north.
inline QByteArray Epoch(int ms, int mode = 1)
{
    const QByteArray time = QTime::fromMSecsSinceStartOfDay(ms).toString("hhmmss.zzz").toLatin1();
    const QByteArray place = mode == 0
                                 ? QByteArray(",,,")
                                 : "4700." + QByteArray::number(ms).rightJustified(8, '0') + ",N,00830.000000,E";
    return Sentence("GNRMC," + time + (mode == 0 ? ",V," : ",A,") + place + ",1.0,90.0,140326,,") +
           Sentence("GNGGA," + time + ',' + place + ',' + QByteArray::number(mode) +
                    (mode == 0 ? ",0,,,,,,," : ",09,0.8,408.5,M,47.0,M,,"));
}
