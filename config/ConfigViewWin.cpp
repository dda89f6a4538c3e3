#include "config/ConfigViewWin.h"

#include <QCloseEvent>

ConfigViewWin::ConfigViewWin(QWidget* parent) : QMainWindow(parent)
{
    setWindowTitle(tr("自定义命令"));
}

void ConfigViewWin::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    emit CloseSignal();
}
