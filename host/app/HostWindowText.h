// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

/// Texts of the host's window. Its parts share its translation context.
class HostWindowText {
    Q_DECLARE_TR_FUNCTIONS(HostWindow)
};
