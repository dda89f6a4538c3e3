// SPDX-License-Identifier: MIT
#include "views/sky/SkyGeometry.h"

#include <QRectF>

#include <algorithm>
#include <cmath>

namespace SkyGeometry {
namespace {

constexpr double kRadiansPerDegree = 0.017453292519943295;

/// The elevations between which a cell lies; the cell of no band lies at the horizon.
struct Band {
    int low;
    int high;
};

Band BandOf(const SkyMap::Cell& cell)
{
    return {std::max(0, cell.elevation - 5), std::min(90, cell.elevation + 5)};
}

double RadiusAt(int elevation, double radius)
{
    return (1.0 - elevation / 90.0) * radius;
}

QRectF CircleBox(double radius)
{
    return {-radius, -radius, 2.0 * radius, 2.0 * radius};
}

} // namespace

float Radius(int viewHeight)
{
    return 0.5F * static_cast<float>(viewHeight - 50);
}

QPointF Direction(double azimuth)
{
    const double angle = azimuth * kRadiansPerDegree;
    return {std::sin(angle), -std::cos(angle)};
}

QPointF Position(int elevation, int azimuth, double radius)
{
    return RadiusAt(std::min(elevation, 90), radius) * Direction(azimuth);
}

QRect DotBox(const QPointF& position)
{
    const QPoint middle = position.toPoint();
    return {middle.x() - 15, middle.y() - 15, 30, 30};
}

QString AzimuthLabel(int index)
{
    QString text;
    switch (index * 15) {
    case 0:
        text = "N";
        break;
    case 90:
        text = " E";
        break;
    case 180:
        text = "S";
        break;
    case 270:
        text = "W";
        break;
    default:
        text = QString::number(index * 15) + "°";
    }
    return index < 12 ? "    " + text : text;
}

QPainterPath CellPath(const SkyMap::Cell& cell, double radius)
{
    const Band band = BandOf(cell);
    const QRectF outer = CircleBox(RadiusAt(band.low, radius));
    const QRectF inner = CircleBox(RadiusAt(band.high, radius));
    // Counted anticlockwise from the east; the span of 15 degrees ends where the cell's azimuths begin.
    const double start = 90 - (cell.azimuth - 7) - 15;
    constexpr double span = 15.0;
    QPainterPath path;
    path.arcMoveTo(outer, start);
    path.arcTo(outer, start, span);
    path.arcTo(inner, start + span, -span);
    path.closeSubpath();
    return path;
}

double CellMiddle(const SkyMap::Cell& cell, double radius)
{
    const Band band = BandOf(cell);
    return (RadiusAt(band.low, radius) + RadiusAt(band.high, radius)) / 2.0;
}

} // namespace SkyGeometry
