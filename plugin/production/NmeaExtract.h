// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Where the sentences of `input` go: beside it, with ".nmea" in the place of the last extension.
QString NmeaOutputPath(const QString& input);

/// Writes the well-shaped sentences of the file `input`, in order and unchanged, to NmeaOutputPath; an existing
/// file is replaced. Does nothing when one of the two cannot be opened, or when both are the same.
void ExtractNmea(const QString& input);
