// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

/// Boxes of the host's help menu, over `window`. Both return when the box is closed.
void ShowAbout(QWidget* window);
void ShowShortHelp(QWidget* window);
