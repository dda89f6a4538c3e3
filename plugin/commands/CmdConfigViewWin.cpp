// SPDX-License-Identifier: MIT
#include "commands/CmdConfigViewWin.h"

#include "commands/CmdConfig.h"

#include <QCloseEvent>
#include <QHBoxLayout>

CmdConfigViewWin::CmdConfigViewWin(QWidget* parent) : QMainWindow(parent)
{
    auto* body = new QWidget(this);
    auto* layout = new QHBoxLayout(body);
    layout->addWidget(new CmdConfig(body));
    setCentralWidget(body);
}

void CmdConfigViewWin::closeEvent(QCloseEvent* event)
{
    QMainWindow::closeEvent(event);
    emit CloseSignal();
}
