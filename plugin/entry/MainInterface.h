// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QtPlugin>

class QWidget;

/// What a host knows of a plug-in. The order of the virtual operations is part of the contract.
class MainInterface {
public:
    virtual ~MainInterface() = default;

    /// The plug-in's name.
    virtual QString Name() = 0;

    /// A line about the plug-in.
    virtual QString Information() = 0;

    /// A new widget that stands for the plug-in in the host; the caller owns it.
    virtual QWidget* CenterWidget() = 0;

    /// Builds the plug-in's window inside `parent`, which owns it. The two numbers are the host's.
    virtual QWidget* CreateWidget(QWidget* parent, int first, int second) = 0;
};

#define MainInterface_iid "com.Interface.MainInterface"
Q_DECLARE_INTERFACE(MainInterface, MainInterface_iid)
