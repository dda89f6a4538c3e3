// SPDX-License-Identifier: MIT
#include "entry/MainInterface.h"

#include "host/support/CProductVersion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QMessageBox>
#include <QSettings>
#include <QTimer>

namespace {

/// Notes what the host does in the file "events.txt" of the current directory.
void Note(const QString& text)
{
    QFile file(QStringLiteral("events.txt"));
    if (file.open(QIODevice::Append)) {
        file.write(text.toUtf8() + '\n');
    }
}

const char kData[] = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n";

} // namespace

/// Stands for the workbench: opens and closes the port that the host names, as a file.
class FakeWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit FakeWindow(QWidget* parent) : QMainWindow(parent)
    {
        const QSettings language("./Source-Datas/bin/config/language.ini", QSettings::IniFormat);
        Note(QStringLiteral("built language %1 product %2 ports %3")
                 .arg(language.value("LanguageSetting/Language").toInt())
                 .arg(CProductVersion::GetVersion())
                 .arg(QFileInfo(QString::fromLocal8Bit(qgetenv("GNSS_SERIAL_PORTS"))).fileName()));
        connect(parent, SIGNAL(NotifyPluginConnectSignal(bool)), this, SLOT(SlotOnConnect(bool)));
        // A box that nobody answers.
        if (qEnvironmentVariableIsSet("FAKE_BOX")) {
            QTimer::singleShot(100, this, [this] { QMessageBox::warning(this, "GNSS", "stuck"); });
        }
    }
    ~FakeWindow() override { Note("window gone"); }

public Q_SLOTS:
    void SlotChangePort(const QString& port)
    {
        Note("port " + QFileInfo(port).fileName() + (isWindow() ? " window" : " embedded"));
        const bool open = m_line.isOpen();
        m_line.close();
        m_line.setFileName(port);
        if (open) {
            m_line.open(QIODevice::ReadWrite);
        }
    }
    void SlotSwitchPort()
    {
        Note(m_line.isOpen() ? "close" : "open");
        if (m_line.isOpen()) {
            return m_line.close();
        }
        m_line.open(QIODevice::ReadWrite);
        const QString folder = QCoreApplication::applicationDirPath() + "/GnssData/";
        QDir().mkpath(folder);
        QFile file(folder + QFileInfo(m_line).fileName() + "_1.bin");
        if (file.open(QIODevice::WriteOnly)) {
            file.write(kData);
        }
    }

private Q_SLOTS:
    void SlotOnConnect(bool connected) { Note(connected ? "taken in" : "given up"); }

private:
    QFile m_line;
};

class FakePlugin : public QObject, public MainInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID MainInterface_iid)
    Q_INTERFACES(MainInterface)

public:
    ~FakePlugin() override { Note("plug-in gone"); }
    QString Name() override { return QStringLiteral("fake"); }
    QString Information() override { return QString(); }
    QWidget* CenterWidget() override { return nullptr; }
    QWidget* CreateWidget(QWidget* parent, int, int) override { return new FakeWindow(parent); }

Q_SIGNALS:
    void ClosePluginSignal(QString name);
};

#include "FakePlugin.moc"
