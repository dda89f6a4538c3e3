#include "assist/AssistOnline.h"

#include "host/support/ImageManager.h"

#include <QCloseEvent>
#include <QIcon>

AssistOnline::AssistOnline(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("在线辅助数据"));
    setWindowIcon(QIcon(ImageManager::GetPixmapObject(":/images/images/gnss/online_link.png")));
}

void AssistOnline::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
