// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

/// The font for sentences and dumps: of fixed pitch, also without a desktop, where the system's fixed font is the
/// general one. It is not shaped: they have neither ligatures nor kerning, and shaping is most of a line's cost.
QFont FixedFont();
