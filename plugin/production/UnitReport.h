// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>

/// All that the files of a finished unit say about it.
struct UnitRecord {
    QString productNumber; ///< may be empty
    QString windowTitle;
    QString resultText; ///< the verdict in words
    bool passed = false;
    quint16 ttffMs = 0; ///< 0: none
    int gpsMaxCn0 = 0;
    int nonGpsMaxCn0 = 0;
    int gpsSvCount = 0;
    int nonGpsSvCount = 0;
    int spareMes = 0; ///< two fields without a source
    int spareLog = 0;
    bool needGps = true;
    int gpsThreshold = 0;
    bool needNonGps = false;
    int nonGpsThreshold = 0;
    int timeoutSeconds = 0;
    bool delayed = false;
    int delaySeconds = 0;
};

/// The words and forms of a unit's row and report.
class UnitReport {
    Q_DECLARE_TR_FUNCTIONS(UnitReport)

public:
    static QStringList TableHeaders();
    static QStringList TableRow(const UnitRecord& unit);

    static QString CsvHeader();
    static QString CsvRow(const UnitRecord& unit);

    static QString CsvName(const QDateTime& time);
    static QString ReportName(const UnitRecord& unit, const QDateTime& time);

    /// The report's lines before and behind the copied sentences.
    static QStringList Head(const UnitRecord& unit, const QDateTime& time);
    static QStringList Tail(const UnitRecord& unit, const QDateTime& time);
};

/// What the report takes of a line of the raw log, without its line end: the whole line when it ends in a
/// sentence and all before it is printable, the sentence alone when that is not so, nothing without a sentence.
/// A sentence is looked for from the byte before the line's first 'G' on, or its first 'P' if it has no 'G', and
/// only up to a NUL.
QByteArray ReportLine(const QByteArray& line);
