// SPDX-License-Identifier: MIT
#include "window/ToolPictures.h"

#include "host/support/ImageManager.h"

#include <QString>

QIcon ToolPicture(const char* name)
{
    return QIcon(ImageManager::GetPixmapObject(QLatin1String(":/images/images/gnss/") + QLatin1String(name)));
}
