#include "AssistConfig.h"
#include "ServiceProcess.h"
#include "WindowTest.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

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
        QSignalSpy ready(&m_service, &ServiceProcess::Ready);
        m_service.Start({GNSS_BUILD_BIN "/assist-service", folder + "/Source-Datas/assist-service", {}});
        QVERIFY(ready.wait(20000));
        AssistConfig config;
        config.host = m_service.Host();
        config.ca = QStringLiteral("Source-Datas/assist-service/certificate.pem");
        QVERIFY(ReadServiceCredentials(m_service.Folder(), config));
        QVERIFY(WriteAssistConfig(AssistConfigFile(folder), config));
        QVERIFY(TrustConfiguredAuthority(AssistConfigFile(folder), folder));
    }

    void init()
    {
        // The window takes what lies there; WindowTest puts its own only where there is nothing.
        QFile::remove(WindowTest::DecoderPath());
        QVERIFY(QFile::copy(GNSS_BUILD_BIN "/Source-Datas/bin/libpgnss_decoder.dll", WindowTest::DecoderPath()));
        m_link = m_folder.filePath("receiver");
        m_receiver = std::make_unique<QProcess>();
        m_receiver->start(GNSS_BUILD_BIN "/gnss-receiver",
                          {"--link", m_link, "--ttff-cold", "60,0", "--ttff-hot", "1,0"});
        QVERIFY(m_receiver->waitForReadyRead(10000));
        m_test = std::make_unique<WindowTest>(0, 2, m_link, WindowTest::Codec::Own);
        m_test->window->SlotChangePort(m_link);
        m_test->window->SlotSwitchPort();
        QVERIFY(Global::serialOpen);
    }

    void cleanup()
    {
        m_test.reset();
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
        QElapsedTimer timer;
        timer.start();
        Click("Pgnss_Inject");
        qInfo("offline injection of 14 items: %lld ms", static_cast<long long>(timer.elapsed()));
        QVERIFY(Says("PGNSS所有辅助数据注入成功！"));
        const QDir folder(QCoreApplication::applicationDirPath() + "/xgnss");
        QCOMPARE(folder.entryList({"*.eph", "*.dat"}, QDir::Files).size(), 15 + 7 + 1);
        QTRY_VERIFY_WITH_TIMEOUT(HasFix(), 15000);
    }

    void ServiceDown()
    {
        m_service.Stop();
        Click("Pgnss_Request");
        QTRY_VERIFY_WITH_TIMEOUT(m_test->Status().join('\n').contains("refused"), 10000);
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
    bool Says(const char* text) const { return m_test->Status().join('\n').contains(QString::fromUtf8(text)); }
    /// A fix long before a cold start could have one.
    bool HasFix() const
    {
        const QString text = m_test->SubWindow("NMEAViewWin")->findChild<QPlainTextEdit*>()->toPlainText();
        return QRegularExpression("\\$PNSTA,[^,]*,ASSISTED,[0-9]").match(text).hasMatch();
    }

    QTemporaryDir m_folder;
    QString m_link;
    ServiceProcess m_service;
    std::unique_ptr<QProcess> m_receiver;
    std::unique_ptr<WindowTest> m_test;
};

QTEST_MAIN(AssistRoadTest)
#include "tst_assist_road.moc"
