// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

/// Texts of the main window. Its parts share its translation context.
class WindowText {
    Q_DECLARE_TR_FUNCTIONS(GnssWindow)
};
