#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

/// A run of gnss-log and what came of it.
struct GnssLog {
    explicit GnssLog(const QStringList& arguments, const QByteArray& input = QByteArray())
    {
        QProcess process;
        process.start(QStringLiteral(GNSS_BUILD_BIN "/gnss-log"), arguments);
        process.waitForStarted();
        process.write(input);
        process.closeWriteChannel();
        process.waitForFinished(60000);
        output = process.readAllStandardOutput();
        errors = QString::fromUtf8(process.readAllStandardError());
        code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    int code = -1;
    QByteArray output;
    QString errors;
};

inline void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

inline QByteArray FileContent(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

/// A sentence with its checksum and line end.
inline QByteArray Sentence(const QByteArray& body)
{
    quint8 sum = 0;
    for (const char c : body) {
        sum = quint8(sum ^ quint8(c));
    }
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + "\r\n";
}

/// The sentences of an epoch `ms` after midnight, with a fix in mode `mode` or without one in mode 0. Each
/// lies a little further north.
inline QByteArray Epoch(int ms, int mode = 1)
{
    const QByteArray time = QStringLiteral("%1%2%3.%4")
                                .arg(ms / 3600000, 2, 10, QLatin1Char('0'))
                                .arg(ms / 60000 % 60, 2, 10, QLatin1Char('0'))
                                .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'))
                                .arg(ms % 1000, 3, 10, QLatin1Char('0'))
                                .toLatin1();
    const QByteArray place = mode == 0
                                 ? QByteArray(",,,")
                                 : "4700." + QByteArray::number(ms).rightJustified(8, '0') + ",N,00830.000000,E";
    return Sentence("GNRMC," + time + (mode == 0 ? ",V," : ",A,") + place + ",1.0,90.0,140326,,") +
           Sentence("GNGGA," + time + ',' + place + ',' + QByteArray::number(mode) +
                    (mode == 0 ? ",0,,,,,,," : ",09,0.8,408.5,M,47.0,M,,"));
}
