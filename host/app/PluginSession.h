// SPDX-License-Identifier: MIT
#pragma once

#include "host/app/PluginParent.h"

#include <QObject>
#include <QPluginLoader>
#include <QPointer>

#include <memory>

class MainInterface;

/// The plug-in from load to unload: one library, at most one window.
class PluginSession : public QObject {
    Q_OBJECT

public:
    explicit PluginSession(const QString& file, QObject* parent = nullptr);
    ~PluginSession() override;

    /// Loads the library and asks it for the interface. False with a text in Error() when that fails.
    bool Load();
    QString Error() const { return m_error; }
    QString File() const { return m_file; }

    /// Builds the window and puts it into `container`'s layout. Null when no plug-in is loaded.
    QWidget* BuildWindow(QWidget* container);
    QWidget* Window() const { return m_window; }

    /// Chooses `port` and opens it, by the window's slots of these names; false when it has none.
    bool OpenPort(const QString& port);

    /// Chooses `port`; an open port is switched over, a closed one stays closed.
    bool ChoosePort(const QString& port);

    /// Opens the port when it is closed and closes it when it is open.
    bool SwitchPort();

    /// Deletes the window and everything that it left for later deletion.
    void DestroyWindow();

    /// Deletes the window and unloads the library. Never call it from within the plug-in's own code.
    void Unload();

private Q_SLOTS:
    void PluginClosed(const QString& name);

private:
    QString m_file;
    QString m_error;
    QPluginLoader m_loader;
    MainInterface* m_interface = nullptr;
    std::unique_ptr<PluginParent> m_parent;
    QPointer<QWidget> m_window;
};
