// SPDX-License-Identifier: MIT
#include "entry/Gnss.h"

#include "window/GnssWindow.h"

#include <QDebug>
#include <QPushButton>

Gnss::Gnss(QObject* parent) : QObject(parent) {}

Gnss::~Gnss()
{
    qDebug() << "~Gnss";
}

QString Gnss::Name()
{
    return tr("Gnss");
}

QWidget* Gnss::CenterWidget()
{
    return new QPushButton(tr("Gnss"));
}

QString Gnss::Information()
{
    return tr("GnssInfo");
}

QWidget* Gnss::CreateWidget(QWidget* parent, int first, int second)
{
    Q_UNUSED(second)
    auto* window = new GnssWindow(Name(), first, parent);
    connect(window, &GnssWindow::closeGnssSignal, this, &Gnss::CloseWinSignalAction);
    return window;
}

void Gnss::CloseWinSignalAction()
{
    emit ClosePluginSignal(Name());
}
