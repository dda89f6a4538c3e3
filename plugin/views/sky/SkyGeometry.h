// SPDX-License-Identifier: MIT
#pragma once

#include "views/sky/SkyMap.h"

#include <QPainterPath>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QString>

/// The polar plot of the sky: north up, east right, the zenith in the middle. Angles in degrees, lengths in
/// pixels.
namespace SkyGeometry {

constexpr int kAzimuthLabels = 24; ///< one every 15 degrees

/// The radius of the horizon in a view of a height; not above 0 in one too low for a plot.
float Radius(int viewHeight);

/// The direction of an azimuth, as a vector of length 1.
QPointF Direction(double azimuth);

/// A place in the sky relative to the middle. An elevation above 90 counts as 90.
QPointF Position(int elevation, int azimuth, double radius);

/// The box of a satellite's dot around a position: 15 pixels left of and above it, 14 right of and below it.
QRect DotBox(const QPointF& position);

/// The text at index * 15 degrees around the plot.
QString AzimuthLabel(int index);

/// The piece of a ring that a cell covers, relative to the middle.
QPainterPath CellPath(const SkyMap::Cell& cell, double radius);

/// The distance of the middle of a cell's band from the middle of the plot.
double CellMiddle(const SkyMap::Cell& cell, double radius);

} // namespace SkyGeometry
