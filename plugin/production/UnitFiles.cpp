// SPDX-License-Identifier: MIT
#include "production/UnitFiles.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QTextStream>

namespace {

const char kFailure[] = "Production test report generation failed: ";

QString UnitFolder()
{
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1String("/ProductTest");
    if (!QDir(folder).exists()) {
        QDir().mkpath(folder);
    }
    return folder + QLatin1Char('/');
}

void WriteLines(QTextStream& stream, const QStringList& lines)
{
    for (const QString& line : lines) {
        stream << line << '\n';
    }
}

/// The sentences of the raw log. It is read as bytes: a text stream would take its first two for a byte order
/// mark.
void CopySentences(QTextStream& stream, const QString& rawLogPath)
{
    QFile raw(rawLogPath);
    if (!raw.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug().noquote() << QLatin1String(kFailure) + QLatin1String("NMEA file could not be opened");
        return;
    }
    while (!raw.atEnd()) {
        QByteArray line = raw.readLine();
        if (line.endsWith('\n')) {
            line.chop(1);
        }
        const QByteArray copied = ReportLine(line);
        if (!copied.isEmpty()) {
            stream << QString::fromLatin1(copied) << '\n';
        }
    }
}

} // namespace

QString NewResultPath(const QDateTime& time)
{
    const QString folder = UnitFolder();
    QDateTime named = time;
    // Two windows may finish their first units in one millisecond.
    while (QFile::exists(folder + UnitReport::CsvName(named))) {
        named = named.addMSecs(1);
    }
    return folder + UnitReport::CsvName(named);
}

bool AppendResultRow(const QString& path, const UnitRecord& unit, bool withHeader)
{
    QFile file(path);
    // Unbuffered: what a full disk does not take would be tried again, and keep the file from being cut back.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text | QIODevice::Unbuffered)) {
        qDebug().noquote() << "Production test result file could not be opened";
        return false;
    }
    const qint64 before = file.size();
    const QByteArray text =
        ((withHeader ? UnitReport::CsvHeader() : QString()) + UnitReport::CsvRow(unit)).toUtf8();
    if (file.write(text) != text.size()) {
        // Half a row would spoil the one that follows it.
        file.resize(before);
        qDebug().noquote() << "Production test result file could not be written";
        return false;
    }
    return true;
}

QString NewReportPath(const UnitRecord& unit, const QDateTime& time)
{
    return UnitFolder() + UnitReport::ReportName(unit, time);
}

QString ReportFailureText()
{
    return QLatin1String(kFailure) + QLatin1String("An exception occurred when opening the report file");
}

bool WriteUnitReport(const QString& path, const UnitRecord& unit, const QString& rawLogPath, const QDateTime& time)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.close();
    }
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        qDebug().noquote() << ReportFailureText();
        return false;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    WriteLines(stream, UnitReport::Head(unit, time));
    CopySentences(stream, rawLogPath);
    WriteLines(stream, UnitReport::Tail(unit, QDateTime::currentDateTime()));
    return true;
}
