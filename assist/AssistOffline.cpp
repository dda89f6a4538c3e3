#include "assist/AssistOffline.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QIcon>

AssistOffline::AssistOffline(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("离线辅助数据"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/offline_link.png")));
}

void AssistOffline::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
