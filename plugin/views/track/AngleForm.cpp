// SPDX-License-Identifier: MIT
#include "views/track/AngleForm.h"

#include <cmath>

AngleFields SplitAngle(double angle, AngleForm form)
{
    AngleFields fields{angle, 0.0, 0.0, std::signbit(angle)};
    if (form == AngleForm::Degrees) {
        return fields;
    }
    fields.degrees = std::trunc(angle);
    fields.minutes = std::fabs(angle - fields.degrees) * 60.0;
    if (form == AngleForm::Minutes) {
        return fields;
    }
    const double minutes = fields.minutes;
    fields.minutes = std::trunc(minutes);
    fields.seconds = (minutes - fields.minutes) * 60.0;
    return fields;
}

double JoinAngle(const AngleFields& fields, AngleForm form)
{
    if (form == AngleForm::Degrees) {
        return fields.degrees;
    }
    const double magnitude = std::fabs(fields.degrees) + fields.minutes / 60.0 + fields.seconds / 3600.0;
    return fields.negative ? -magnitude : magnitude;
}
