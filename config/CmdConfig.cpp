#include "config/CmdConfig.h"

#include <QCloseEvent>

CmdConfig::CmdConfig(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("命令配置"));
}

void CmdConfig::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
