// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

/// The colour of a signal strength in dB-Hz: red through yellow at 25 to green at 50 and above. A strength below 0
/// has no colour of the ramp and gives an invalid one, which paints black.
QColor SignalRamp(int cn0);
