// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QSize>

/// A picture of the window's buttons by its file name.
QIcon ToolPicture(const char* name);

/// Pixels of a picture on a button, unless a button has its own.
constexpr QSize kToolIconSize(18, 17);
