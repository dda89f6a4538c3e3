// SPDX-License-Identifier: MIT
#include "base/ClockText.h"

#include <QDateTime>

QString ClockText()
{
    static qint64 shownSecond = -1;
    static QString text;
    const qint64 second = QDateTime::currentSecsSinceEpoch();
    if (second != shownSecond) {
        shownSecond = second;
        text = QDateTime::fromSecsSinceEpoch(second).toString("hh:mm:ss");
    }
    return text;
}
