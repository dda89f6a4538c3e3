#include "FakePlugin.h"

#include "CProductVersion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QTimer>

namespace {

void Note(const QString& text)
{
    QFile file(QStringLiteral("events.txt"));
    if (file.open(QIODevice::Append))
        file.write(text.toUtf8() + '\n');
}

const char kData[] = "$GPGGA,123519,4807.038,N,01131.000,E,1,08,0.9,545.4,M,46.9,M,,*47\r\n";

} // namespace

FakeWindow::FakeWindow(QWidget* parent) : QMainWindow(parent)
{
    const int language = QSettings(QStringLiteral("./Source-Datas/bin/config/language.ini"), QSettings::IniFormat)
                             .value(QStringLiteral("LanguageSetting/Language"))
                             .toInt();
    Note(QStringLiteral("built language %1 product %2 ports %3")
             .arg(language)
             .arg(CProductVersion::GetVersion())
             .arg(QFileInfo(QString::fromLocal8Bit(qgetenv("GNSS_SERIAL_PORTS"))).fileName()));
    connect(parent, SIGNAL(NotifyPluginConnectSignal(bool)), this, SLOT(SlotOnConnect(bool)));
    // A box that nobody answers.
    if (qEnvironmentVariableIsSet("FAKE_BOX"))
        QTimer::singleShot(
            100, this, [this] { QMessageBox::warning(this, QStringLiteral("GNSS"), QStringLiteral("stuck")); });
}

FakeWindow::~FakeWindow()
{
    Note(QStringLiteral("window gone"));
}

void FakeWindow::SlotChangePort(QString port)
{
    m_port = port;
    Note(QStringLiteral("port ") + QFileInfo(port).fileName() + (isWindow() ? " window" : " embedded"));
    if (m_line.isOpen()) {
        m_line.close();
        Open();
    }
}

void FakeWindow::SlotSwitchPort()
{
    if (m_line.isOpen()) {
        m_line.close();
        Note(QStringLiteral("close"));
        return;
    }
    Note(QStringLiteral("open"));
    Open();
    const QString folder = QCoreApplication::applicationDirPath() + QStringLiteral("/GnssData");
    QDir().mkpath(folder);
    QFile file(folder + QStringLiteral("/%1_1.bin").arg(QFileInfo(m_port).fileName()));
    if (file.open(QIODevice::WriteOnly))
        file.write(kData);
}

void FakeWindow::Open()
{
    m_line.setFileName(m_port);
    m_line.open(QIODevice::ReadWrite);
}

void FakeWindow::SlotOnConnect(bool connected)
{
    Note(connected ? QStringLiteral("taken in") : QStringLiteral("given up"));
}

FakePlugin::~FakePlugin()
{
    Note(QStringLiteral("plug-in gone"));
}
