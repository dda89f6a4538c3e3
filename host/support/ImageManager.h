// SPDX-License-Identifier: MIT
#pragma once

#include "host/support/HostSupportGlobal.h"

#include <QPixmap>
#include <QString>

/// Serves the pictures of the workbench by their resource path, ":/images/images/gnss/NAME.png".
class HOST_SUPPORT_EXPORT ImageManager {
public:
    /// The picture for `path`. A missing one is a debug line and a visible placeholder, never a null pixmap.
    static QPixmap GetPixmapObject(QString path);

    /// Loads the picture for `path` into `pixmap`.
    static void LoadPixmap(QPixmap& pixmap, QString path);
};
