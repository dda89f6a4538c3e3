// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

/// A surveyed point, all of it as it was typed.
struct RefLocation {
    QString name;
    QString longitude;
    QString latitude;
    QString altitude;
};

// The points' file, refLoc.ini in the current directory at the moment of the call.

/// How many points it holds.
int CountRefLocations();

/// The points in the order of their groups' names. A group that doesn't hold exactly four keys is no point.
QVector<RefLocation> ReadRefLocations();

/// The point with "0" for each empty text, as it is stored.
RefLocation WithZeros(const RefLocation& location);

/// Writes the point of a serial number, over one that has it.
void SaveRefLocation(int number, const RefLocation& location);
