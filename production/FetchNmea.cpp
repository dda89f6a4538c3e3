#include "production/FetchNmea.h"

#include "host/support/ImageManager.h"

#include <QIcon>

FetchNmea::FetchNmea(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("提取NMEA"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/fetchNmea.png")));
    setFixedWidth(300);
}
