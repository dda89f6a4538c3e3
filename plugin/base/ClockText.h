// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The local time as "hh:mm:ss". It is asked for with every sentence and changes once a second, and turning a
/// time into a local one costs more than writing the sentence to a file, so the text is kept for its second.
QString ClockText();
