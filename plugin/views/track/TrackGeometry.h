// SPDX-License-Identifier: MIT
#pragma once

#include "base/TrackState.h"

#include <QPointF>
#include <QString>

#include <optional>
#include <vector>

/// The rules of the track plot. A scale is the number of centimetres that five pixels stand for.
namespace TrackGeometry {

constexpr double kFirstScale = 50.0;
constexpr double kLargestZoomOutScale = 100000.0; ///< above it there is no further step out
constexpr double kSmallestZoomInScale = 0.1;      ///< below it there is no further step in
constexpr int kFirstRing = 100;                   ///< ring diameters in pixels
constexpr int kLastRing = 2900;
constexpr int kRingStep = 100;

/// The next scale of the ladder 1, 2.5, 5, 10, 25, ... upwards; no limit is applied.
double ZoomedOut(double scale);

/// The next scale of the ladder downwards; no limit is applied.
double ZoomedIn(double scale);

/// The distance at which a ring of `diameter` pixels stands, as it is written beside the ring.
QString RingLabel(int diameter, double scale);

/// "39.97213800°N 116.34012300°E"
QString CentreText(double latitude, double longitude);

/// The point that becomes the centre at the next paint; none when the centre stays where it is. A point that
/// isn't finite never becomes it.
std::optional<TrackState::GeoPoint> NewCentre(const std::vector<TrackState::GeoPoint>& points, bool useLastPoint,
                                              double centreLatitude);

/// Pixels right of and below the middle for metres east and north of the centre.
QPointF DotPosition(double east, double north, double scale);

/// The nearest whole number, halves away from zero. What lies outside the range of int is cut to it.
int RoundedPixel(double position);

/// How far the centre moves when the mouse goes from one pixel to another with the left button down. The degrees
/// per metre are fixed ones of middle latitudes; the latitude plays no part in them, and so it is meant.
TrackState::GeoPoint DragShift(int fromX, int fromY, int toX, int toY, double scale);

/// The arithmetic mean of the points; none when there are none or it isn't finite.
std::optional<TrackState::GeoPoint> Average(const std::vector<TrackState::GeoPoint>& points);

} // namespace TrackGeometry
