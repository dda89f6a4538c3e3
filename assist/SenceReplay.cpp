#include "assist/SenceReplay.h"

#include "host/support/ImageManager.h"

#include <QIcon>

SenceReplay::SenceReplay(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("场景库回放"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/fetchNmea.png")));
}
