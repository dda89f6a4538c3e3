// SPDX-License-Identifier: MIT
#pragma once

#include "protocol/Records.h"

#include <QApplication>
#include <QImage>
#include <QLineEdit>
#include <QMouseEvent>
#include <QWidget>

#include <cstring>
#include <vector>

/// What the tests of the painted views share: records as the codec sends them, and a look at the picture.
namespace painted {

inline QImage Picture(QWidget& view)
{
    return view.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

inline QString AgeText(QWidget& view)
{
    return view.findChild<QLineEdit*>("ageEdit")->text();
}

inline void Mouse(QWidget& view, QEvent::Type type, const QPointF& position)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, button, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&view, &event);
}

inline void Click(QWidget& view, const QPointF& position)
{
    Mouse(view, QEvent::MouseButtonPress, position);
    Mouse(view, QEvent::MouseButtonRelease, position);
}

/// A count and the entries behind it, the first of them at `offset`.
template <typename Entry> QByteArray Entries(const std::vector<Entry>& entries, int offset, int count = -1)
{
    QByteArray record(offset + static_cast<int>(entries.size() * sizeof(Entry)), '\0');
    record[0] = static_cast<char>(count < 0 ? static_cast<int>(entries.size()) : count);
    if (!entries.empty()) {
        std::memcpy(record.data() + offset, entries.data(), entries.size() * sizeof(Entry));
    }
    return record;
}

inline QByteArray Cn0Bytes(const std::vector<protocol::Cn0Entry>& entries, int count = -1)
{
    return Entries(entries, 1, count);
}

inline QByteArray SkyBytes(const std::vector<protocol::SatPosEntry>& entries, int count = -1)
{
    return Entries(entries, 2, count);
}

inline QByteArray PositionBytes(double latitude, double longitude)
{
    protocol::PositionRecord record{};
    record.latitude = latitude;
    record.longitude = longitude;
    return QByteArray(reinterpret_cast<const char*>(&record), static_cast<int>(protocol::kPositionRecordMinSize));
}

inline QByteArray CompassBytes(float heading, std::uint8_t fixMode)
{
    QByteArray record(static_cast<int>(protocol::kCompassRecordMinSize), static_cast<char>(fixMode));
    std::memcpy(record.data(), &heading, sizeof(heading));
    return record;
}

template <typename View> void Send(View& view, const QByteArray& record)
{
    view.OnRecord(record.constData(), record.size());
}

/// The number of pixels of a colour in a part of a picture.
inline int Count(const QImage& picture, const QRect& part, const QColor& colour)
{
    int count = 0;
    const QRect inside = part & picture.rect();
    for (int y = inside.top(); y <= inside.bottom(); ++y) {
        for (int x = inside.left(); x <= inside.right(); ++x) {
            count += picture.pixel(x, y) == colour.rgb() ? 1 : 0;
        }
    }
    return count;
}

} // namespace painted
