// SPDX-License-Identifier: MIT
#pragma once

/// The ways in which the centre dialog writes an angle, in the order of its selector.
enum class AngleForm {
    Degrees, ///< dd.dddddddd°
    Minutes, ///< dd°mm.mmmmmm′
    Seconds, ///< dd°mm′ss.ssss″
};

/// An angle as its fields show it. The sign is that of the degrees; minutes and seconds are magnitudes.
struct AngleFields {
    double degrees;
    double minutes;
    double seconds;
    bool negative; ///< the sign of the degrees, also when they are 0
};

/// The fields of a finite angle in degrees.
AngleFields SplitAngle(double angle, AngleForm form);

/// The angle in degrees that the fields show.
double JoinAngle(const AngleFields& fields, AngleForm form);
