// SPDX-License-Identifier: MIT
#pragma once

#include "entry/MainInterface.h"

#include <QObject>

/// The plug-in object: tells the host who it is, builds the window and passes the window's end back. It keeps
/// no pointer to the window. The host may link against the class, so it is exported, and the order of its
/// virtual operations is fixed.
class Q_DECL_EXPORT Gnss : public QObject, public MainInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MainInterface_iid)
    Q_INTERFACES(MainInterface)

public:
    explicit Gnss(QObject* parent = nullptr);
    ~Gnss() override;

    QString Name() override;
    QWidget* CenterWidget() override;
    QString Information() override;
    QWidget* CreateWidget(QWidget* parent, int first, int second) override;

Q_SIGNALS:
    /// The window is gone; `name` is Name() at that time.
    void ClosePluginSignal(QString name);

private Q_SLOTS:
    void CloseWinSignalAction();
};
