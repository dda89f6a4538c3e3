#pragma once

#include "plugin/MainInterface.h"

#include <QFile>
#include <QMainWindow>
#include <QObject>

/// Stands for the workbench: opens and closes the port that the host names, as a file, and notes what the host
/// does to it in the file "events.txt" of the current directory.
class FakeWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit FakeWindow(QWidget* parent);
    ~FakeWindow() override;

public Q_SLOTS:
    void SlotChangePort(QString port);
    void SlotSwitchPort();

private Q_SLOTS:
    void SlotOnConnect(bool connected);

private:
    void Open();

    QString m_port;
    QFile m_line;
};

class FakePlugin : public QObject, public MainInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MainInterface_iid)
    Q_INTERFACES(MainInterface)

public:
    ~FakePlugin() override;
    QString Name() override { return QStringLiteral("fake"); }
    QString Information() override { return QString(); }
    QWidget* CenterWidget() override { return nullptr; }
    QWidget* CreateWidget(QWidget* parent, int, int) override { return new FakeWindow(parent); }

Q_SIGNALS:
    void ClosePluginSignal(QString name);
};
