// SPDX-License-Identifier: MIT
#include "production/UnitReport.h"

#include <algorithm>

namespace {

constexpr int kStars = 53;
constexpr int kFewestSentenceCharacters = 4;
constexpr int kMostSentenceCharacters = 256;
constexpr int kMostChecksumCharacters = 2;

const char kNotAvailable[] = "NA";

QString NumberOrNa(bool given, int value)
{
    return given ? QString::number(value) : QString::fromLatin1(kNotAvailable);
}

QString ProductOrNa(const UnitRecord& unit)
{
    return unit.productNumber.isEmpty() ? QString::fromLatin1(kNotAvailable) : unit.productNumber;
}

/// Whole seconds with two decimals that are always zero, which is meant so.
QString TtffText(const UnitRecord& unit)
{
    const auto seconds = unit.ttffMs / 1000;
    return QString::number(static_cast<double>(seconds), 'f', 2);
}

QString ReportTime(const QDateTime& time)
{
    return time.toString(QStringLiteral("yyyy/MM/dd hh:mm:ss.zzz"));
}

QString TrueOrFalse(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

bool IsAlphanumeric(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsSentenceCharacter(char c)
{
    return IsAlphanumeric(c) || c == '.' || c == ',' || c == '-';
}

bool IsPrintable(char c)
{
    return c >= 0x20 && c <= 0x7E;
}

/// Where the sentence "$...*hh" with which `text` ends begins, or -1.
int SentenceAtEnd(const QByteArray& text)
{
    int star = text.size();
    int checksum = 0;
    while (star > 0 && checksum < kMostChecksumCharacters && IsAlphanumeric(text.at(star - 1))) {
        --star;
        ++checksum;
    }
    --star;
    if (checksum == 0 || star < 0 || text.at(star) != '*') {
        return -1;
    }
    int start = star;
    while (start > 0 && IsSentenceCharacter(text.at(start - 1))) {
        --start;
    }
    const int length = star - start;
    --start;
    if (start < 0 || text.at(start) != '$' || length < kFewestSentenceCharacters ||
        length > kMostSentenceCharacters) {
        return -1;
    }
    return start;
}

} // namespace

QByteArray ReportLine(const QByteArray& line)
{
    int letter = line.indexOf('G');
    if (letter < 0) {
        letter = line.indexOf('P');
    }
    // At the beginning of a line it has no byte before it.
    if (letter < 1) {
        return {};
    }
    const int from = letter - 1;
    const int nul = line.indexOf('\0', from);
    const QByteArray part = line.mid(from, nul < 0 ? -1 : nul - from);
    const int start = SentenceAtEnd(part);
    if (start < 0) {
        return {};
    }
    const bool plain = nul < 0 && std::all_of(line.begin(), line.begin() + from + start, IsPrintable);
    return plain ? line : part.mid(start);
}

QStringList UnitReport::TableHeaders()
{
    return {QStringLiteral("PN"),       QStringLiteral("Cn0(GPS)"),   QStringLiteral("Cn0(NoGPS)"),
            QStringLiteral("SVs(GPS)"), QStringLiteral("SVs(NoGPS)"), QStringLiteral("TTFF(s)"),
            QStringLiteral("Result"),   QStringLiteral("MES"),        QStringLiteral("Log")};
}

QStringList UnitReport::TableRow(const UnitRecord& unit)
{
    return {unit.productNumber,
            QString::number(unit.gpsMaxCn0),
            QString::number(unit.nonGpsMaxCn0),
            NumberOrNa(unit.needGps, unit.gpsSvCount),
            NumberOrNa(unit.needNonGps, unit.nonGpsSvCount),
            unit.ttffMs == 0 ? QString::fromLatin1(kNotAvailable) : TtffText(unit),
            unit.passed ? tr("PASS") : tr("FAILED"),
            QString::number(unit.spareMes),
            QString::number(unit.spareLog)};
}

QString UnitReport::CsvHeader()
{
    return QStringLiteral("PN, Cn0(GPS), Cn0(NonGPS), SVs(GPS), SVs(NonGPS), TTFF,Result, MES, Log, GpsCn0(Th), "
                          "NonGpsCn0(Th), TTFF(Th), Delay\n");
}

QString UnitReport::CsvRow(const UnitRecord& unit)
{
    const QStringList fields = {unit.productNumber,
                                QString::number(unit.gpsMaxCn0),
                                QString::number(unit.nonGpsMaxCn0),
                                QString::number(unit.gpsSvCount),
                                QString::number(unit.nonGpsSvCount),
                                NumberOrNa(unit.ttffMs != 0, unit.ttffMs / 1000),
                                unit.passed ? QStringLiteral("PASS") : QStringLiteral("FAILED"),
                                QString::number(unit.spareMes),
                                QString::number(unit.spareLog),
                                NumberOrNa(unit.needGps, unit.gpsThreshold),
                                NumberOrNa(unit.needNonGps, unit.nonGpsThreshold),
                                QString::number(unit.timeoutSeconds),
                                NumberOrNa(unit.delayed, unit.delaySeconds)};
    return fields.join(QLatin1Char(',')) + QLatin1String(",\n");
}

QString UnitReport::CsvName(const QDateTime& time)
{
    return QLatin1String("ProductTestRslt_") + time.toString(QStringLiteral("yyyyMMddhhmmsszzz")) +
           QLatin1String(".csv");
}

QString UnitReport::ReportName(const UnitRecord& unit, const QDateTime& time)
{
    return ProductOrNa(unit) + QLatin1Char('[') + time.toString(QStringLiteral("yyyy-MM-dd-hh-mm-ss-zzz")) +
           QLatin1String("][") + unit.resultText + QLatin1Char(']') + unit.windowTitle + QLatin1String(".txt");
}

QStringList UnitReport::Head(const UnitRecord& unit, const QDateTime& time)
{
    // The second sentence prints the GPS threshold once more, which is meant so.
    return {
        ReportTime(time),
        tr("当前系统配置的GPS CN0载造比允收值(dB)设定为：%1，且GPS通道测试配置为%2；BDS/GLONASS CN0载造比允收值"
           "(dB)设定为：%3； 且BDS/GLONASS通道测试配置为%4")
            .arg(QString::number(unit.gpsThreshold), TrueOrFalse(unit.needGps), QString::number(unit.gpsThreshold),
                 TrueOrFalse(unit.needNonGps)),
        tr("测试定位的时间设置为：") + QString::number(unit.timeoutSeconds) + tr(" 秒。"),
        tr("如下是产品编号 ") + ProductOrNa(unit) + tr("的测试数据。"), QString(kStars, QLatin1Char('*'))};
}

QStringList UnitReport::Tail(const UnitRecord& unit, const QDateTime& time)
{
    return {tr("经测试，产品的定位时间 TTFF = ") + TtffText(unit) + tr(" 秒"),
            tr("在当前信号输入环境和测试阈值的设置下，软件部分的测试结论为： ") + unit.resultText,
            ReportTime(time)};
}
