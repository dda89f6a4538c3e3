// SPDX-License-Identifier: MIT
#include "performance/KpiFixTexts.h"

namespace {

QString Angle(double degrees, QChar positive, QChar negative)
{
    QString text = QString::asprintf("%.8f", degrees);
    if (degrees < 0) {
        return text.remove(QLatin1Char('-')) + negative;
    }
    return text + positive;
}

} // namespace

KpiFixTexts KpiTextsOf(const protocol::KpiFixRecord& fix)
{
    KpiFixTexts texts;
    texts.date = QStringLiteral("%1-%2-%3").arg(fix.year).arg(fix.month).arg(fix.day);
    texts.time = QStringLiteral("%1:%2:%3").arg(fix.hour).arg(fix.minute).arg(fix.second);
    texts.hdop = QStringLiteral("%1").arg(static_cast<double>(fix.heading));
    texts.latitude = Angle(fix.latitude, QLatin1Char('N'), QLatin1Char('S'));
    texts.longitude = Angle(fix.longitude, QLatin1Char('E'), QLatin1Char('W'));
    texts.altitude = QString::asprintf("%.2fm", fix.altitude);
    texts.speed = QString::asprintf("%.2fm/s", static_cast<double>(fix.speed));
    return texts;
}
