// SPDX-License-Identifier: MIT
#include "assist/PositionInjection.h"

#include "base/BoundsChecked.h"
#include "base/MessageBoxes.h"
#include "protocol/LinkFrame.h"

#include <QCoreApplication>
#include <QDebug>
#include <QRegExp>

#include <cmath>

namespace {

constexpr double maxLongitude = 180.0;
constexpr double maxLatitude = 90.0;

/// Translation context of the boxes.
class PositionInjection {
    Q_DECLARE_TR_FUNCTIONS(PositionInjection)
};

bool LooksLikeNumber(const QString& text)
{
    // The dot stands for any character; it is meant so.
    return QRegExp(QStringLiteral("^[-+]?[0-9]*.?[0-9]+([eE][-+]?[0-9]+)?$")).exactMatch(text);
}

} // namespace

PositionCheck ReadPosition(const QString& longitude, const QString& latitude, const QString& altitude,
                           ReferencePosition& position)
{
    if (!LooksLikeNumber(longitude)) {
        return PositionCheck::LongitudeText;
    }
    position.longitude = longitude.toDouble();
    if (std::fabs(position.longitude) > maxLongitude) {
        return PositionCheck::LongitudeRange;
    }
    if (!LooksLikeNumber(latitude)) {
        return PositionCheck::LatitudeText;
    }
    position.latitude = latitude.toDouble();
    if (std::fabs(position.latitude) > maxLatitude) {
        return PositionCheck::LatitudeRange;
    }
    if (!LooksLikeNumber(altitude)) {
        return PositionCheck::AltitudeText;
    }
    position.altitude = altitude.toDouble();
    return PositionCheck::Good;
}

QString PositionCheckText(PositionCheck check)
{
    switch (check) {
    case PositionCheck::LongitudeText:
        return PositionInjection::tr("请输入正确的经度数字");
    case PositionCheck::LongitudeRange:
        return PositionInjection::tr("经度范围应为-180° - 180°");
    case PositionCheck::LatitudeText:
        return PositionInjection::tr("请输入正确的纬度数字");
    case PositionCheck::LatitudeRange:
        return PositionInjection::tr("纬度范围应为-90° - 90°");
    case PositionCheck::AltitudeText:
        return PositionInjection::tr("请输入正确的高度数字");
    case PositionCheck::Good:
        break;
    }
    return {};
}

void InjectPosition(QWidget* window, const Injector& injector, const QString& longitude, const QString& latitude,
                    const QString& altitude, const PositionWords& words)
{
    ReferencePosition position;
    const PositionCheck check = ReadPosition(longitude, latitude, altitude, position);
    if (check != PositionCheck::Good) {
        ShowCriticalBox(window, PositionInjection::tr("提示"), PositionCheckText(check));
        return;
    }
    const QByteArray record = ReferencePositionRecord(position);
    const auto size = static_cast<std::size_t>(record.size());
    InjectItem item;
    item.payload = QByteArray(record.size(), Qt::Uninitialized);
    if (memcpy_s(item.payload.data(), size, record.constData(), size) != 0) {
        qDebug().noquote() << words.copyDebug;
        return;
    }
    item.commandId = protocol::CmdAgnssPosition;
    item.timeoutStatus = words.timeoutStatus;
    injector.Run(item);
}
