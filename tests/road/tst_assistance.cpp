// SPDX-License-Identifier: MIT
#include "host/app/AssistConfig.h"
#include "host/app/ServiceProcess.h"

#include "base/ProcessState.h"
#include "views/log/NMEAViewWin.h"
#include "window/GnssWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QtTest>

/// The whole road of the assistance: the window, the local service, the seed decoder, the codec and the virtual
/// receiver.
class AssistRoadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString folder = QCoreApplication::applicationDirPath();
        QDir(folder + "/xgnss").removeRecursively();
        QFile::remove(AssistConfigFile(folder));
        QDir().mkpath(folder + "/Source-Datas/config/1");
        QFile::copy(GNSS_SOURCE_DIR "/host/config/GnssTree.xml", folder + "/Source-Datas/config/1/GnssTree.xml");
        Serve({});
    }

    void init()
    {
        m_link = m_folder.filePath("receiver");
        m_receiver = std::make_unique<QProcess>();
        m_receiver->start(GNSS_BUILD_BIN "/gnss-receiver",
                          {"--link", m_link, "--ttff-cold", "60,0", "--ttff-hot", "1,0"});
        QVERIFY(m_receiver->waitForReadyRead(10000));
        qputenv("GNSS_SERIAL_PORTS", m_link.toLocal8Bit());
        m_window = std::make_unique<GnssWindow>(QStringLiteral("Gnss"), 0, nullptr);
        m_window->SlotChangePort(m_link);
        m_window->SlotSwitchPort();
        QVERIFY(Global::serialOpen);
    }

    void cleanup()
    {
        m_window.reset();
        m_receiver->terminate();
        QVERIFY(m_receiver->waitForFinished(5000));
    }

    void Online()
    {
        Click("Agnss_ReqAndInject");
        QTRY_VERIFY_WITH_TIMEOUT(Says("AGNSS所有辅助数据注入成功"), 20000);
        QVERIFY(Says("在线辅助数据下载成功("));
        QTRY_VERIFY_WITH_TIMEOUT(HasFix(), 15000);
    }

    void Offline()
    {
        Click("Pgnss_Request");
        QTRY_VERIFY_WITH_TIMEOUT(Says("离线辅助数据下载成功("), 20000);
        Click("Pgnss_Inject");
        QVERIFY(Says("PGNSS所有辅助数据注入成功！"));
        const QDir folder(QCoreApplication::applicationDirPath() + "/xgnss");
        QCOMPARE(folder.entryList({"*.eph", "*.dat"}, QDir::Files).size(), 15 + 7 + 1);
        QTRY_VERIFY_WITH_TIMEOUT(HasFix(), 15000);
    }

    void FaultsOfTheService_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("online");
        QTest::addColumn<QString>("offline");
        const auto row = [](const char* fault, const char* online, const char* offline) {
            QTest::newRow(fault) << fault << QString::fromUtf8(online) << QString::fromUtf8(offline);
        };
        row("slow=2000", "AGNSS所有辅助数据注入成功", "离线辅助数据下载成功(");
        row("empty", "在线辅助数据下载失败!", "下载离线辅助数据失败！");
        row("huge=50", "在线辅助数据下载成功(51200KB)", "获取文件有效时间失败，错误码：7");
        // A redirection is not followed: what comes is its own short text.
        row("redirect", "在线辅助数据下载成功(0KB)", "获取文件有效时间失败，错误码：4");
        row("status=503", "在线辅助数据下载成功(0KB)", "/lumat/v1/xgnss/pgnss");
    }

    void FaultsOfTheService()
    {
        QFETCH(QString, fault);
        QFETCH(QString, online);
        QFETCH(QString, offline);
        Serve({"--fault", fault});
        Click("Agnss_ReqAndInject");
        Click("Pgnss_Request");
        QTRY_VERIFY_WITH_TIMEOUT(Says(online) && Says(offline), 20000);
    }

    void ServiceDown()
    {
        m_service.Stop();
        Click("Pgnss_Request");
        QTRY_VERIFY_WITH_TIMEOUT(Says("refused"), 10000);
        Click("Agnss_ReqAndInject");
        QTRY_VERIFY_WITH_TIMEOUT(Says("在线辅助数据下载失败!"), 10000);
    }

private:
    static void Click(const char* name)
    {
        const QWidgetList widgets = QApplication::allWidgets();
        for (QWidget* widget : widgets) {
            if (widget->objectName() == name) {
                qobject_cast<QAbstractButton*>(widget)->click();
                return;
            }
        }
        QFAIL(name);
    }
    bool Says(const QString& text) const
    {
        return m_window->findChild<QTextEdit*>()->toPlainText().contains(text);
    }
    /// Starts the service anew and points the workbench at it.
    void Serve(const QStringList& arguments)
    {
        const QString folder = QCoreApplication::applicationDirPath();
        QSignalSpy ready(&m_service, &ServiceProcess::Ready);
        m_service.Stop();
        m_service.Start({GNSS_BUILD_BIN "/assist-service", folder + "/Source-Datas/assist-service", arguments});
        QVERIFY(ready.wait(20000));
        AssistConfig config;
        config.host = m_service.Host();
        config.ca = QStringLiteral("Source-Datas/assist-service/certificate.pem");
        QVERIFY(ReadServiceCredentials(m_service.Folder(), config));
        QVERIFY(WriteAssistConfig(AssistConfigFile(folder), config));
        QVERIFY(TrustConfiguredAuthority(AssistConfigFile(folder), folder));
    }
    /// A fix long before a cold start could have one.
    bool HasFix() const
    {
        const QString text = m_window->findChild<NMEAViewWin*>()->findChild<QPlainTextEdit*>()->toPlainText();
        return QRegularExpression("\\$PNSTA,[^,]*,ASSISTED,[0-9]").match(text).hasMatch();
    }

    QTemporaryDir m_folder;
    QString m_link;
    ServiceProcess m_service;
    std::unique_ptr<QProcess> m_receiver;
    std::unique_ptr<GnssWindow> m_window;
};

QTEST_MAIN(AssistRoadTest)
#include "tst_assistance.moc"
