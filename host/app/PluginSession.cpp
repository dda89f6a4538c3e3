// SPDX-License-Identifier: MIT
#include "host/app/PluginSession.h"

#include "entry/MainInterface.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QFileInfo>
#include <QLayout>

PluginSession::PluginSession(const QString& file, QObject* parent) : QObject(parent), m_file(file) {}

PluginSession::~PluginSession()
{
    Unload();
}

bool PluginSession::Load()
{
    m_error.clear();
    if (!QFileInfo::exists(m_file)) {
        m_error = tr("the file is missing");
        return false;
    }
    m_loader.setFileName(m_file);
    QObject* instance = m_loader.instance();
    if (!instance) {
        m_error = m_loader.errorString();
        return false;
    }
    m_interface = qobject_cast<MainInterface*>(instance);
    if (!m_interface) {
        m_error = tr("it does not offer the interface %1").arg(QStringLiteral(MainInterface_iid));
        m_loader.unload();
        return false;
    }
    // By name: a plug-in that does not declare the signal costs a warning and nothing else.
    connect(instance, SIGNAL(ClosePluginSignal(QString)), this, SLOT(PluginClosed(QString)));
    return true;
}

QWidget* PluginSession::BuildWindow(QWidget* container)
{
    if (!m_interface) {
        return nullptr;
    }
    m_parent = std::make_unique<PluginParent>();
    m_window = m_interface->CreateWidget(m_parent.get(), 0, 0);
    if (!m_window) {
        return nullptr;
    }
    // The window comes as a child of one widget and is taken into another: only a change of parent turns a
    // main window from a window of its own into a part of the layout.
    container->layout()->addWidget(m_window);
    m_window->show();
    emit m_parent->NotifyPluginConnectSignal(true);
    return m_window;
}

bool PluginSession::ChoosePort(const QString& port)
{
    if (!m_window || m_window->metaObject()->indexOfSlot("SlotChangePort(QString)") < 0) {
        return false;
    }
    return QMetaObject::invokeMethod(m_window, "SlotChangePort", Qt::DirectConnection, Q_ARG(QString, port));
}

bool PluginSession::SwitchPort()
{
    if (!m_window || m_window->metaObject()->indexOfSlot("SlotSwitchPort()") < 0) {
        return false;
    }
    return QMetaObject::invokeMethod(m_window, "SlotSwitchPort", Qt::DirectConnection);
}

bool PluginSession::OpenPort(const QString& port)
{
    return ChoosePort(port) && SwitchPort();
}

void PluginSession::DestroyWindow()
{
    if (m_parent) {
        emit m_parent->NotifyPluginConnectSignal(false);
    }
    delete m_window.data();
    m_parent.reset();
    // What the window left to be deleted later is code of the library too.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PluginSession::Unload()
{
    DestroyWindow();
    m_interface = nullptr;
    if (m_loader.isLoaded() && !m_loader.unload()) {
        qWarning().noquote() << "the plug-in stays loaded:" << m_loader.errorString();
    }
}

void PluginSession::PluginClosed(const QString& name)
{
    qDebug().noquote() << "window closed:" << name;
}
