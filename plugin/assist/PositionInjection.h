// SPDX-License-Identifier: MIT
#pragma once

#include "assist/AssistRecords.h"
#include "assist/Injector.h"

class QWidget;

enum class PositionCheck {
    Good,
    LongitudeText,
    LongitudeRange,
    LatitudeText,
    LatitudeRange,
    AltitudeText,
};

/// Reads a position from three texts, degrees and metres. The texts are checked in the order of the arguments; the
/// first failure ends the check. A text that looks like a number and is none counts as 0.
PositionCheck ReadPosition(const QString& longitude, const QString& latitude, const QString& altitude,
                           ReferencePosition& position);

/// The words of a failed check in the user's language.
QString PositionCheckText(PositionCheck check);

/// What the windows do differently.
struct PositionWords {
    const char* copyDebug; ///< debug text of a failed copy
    QString timeoutStatus;
};

/// Sends the reference position that the texts give, or shows what is wrong with them in a box over `window`.
void InjectPosition(QWidget* window, const Injector& injector, const QString& longitude, const QString& latitude,
                    const QString& altitude, const PositionWords& words);
