#include "AssistConfig.h"
#include "ServiceProcess.h"

#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

/// The host's side of the service; most services are played by small shell scripts.
class ServiceProcessTest : public QObject {
    Q_OBJECT

private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void CommandLineAndReadyLine()
    {
        QCOMPARE(ServiceArguments({"/s", "/f", {"--fault", "empty"}}),
                 QStringList({"--folder", "/f", "--die-with-parent", "--fault", "empty"}));
        QCOMPARE(ReadyHost("ready https://localhost:8443\r"), QString("localhost:8443"));
        QCOMPARE(ReadyHost("GET /ready https://x"), QString());
    }

    void EndsAreTold()
    {
        ServiceProcess process;
        QSignalSpy ended(&process, &ServiceProcess::Ended);
        process.Start({m_folder->filePath("missing"), m_folder->path(), {}});
        QCOMPARE(ended.count(), 1);
        process.Start(Script("exit 3"));
        QTRY_COMPARE(ended.count(), 2);
        QVERIFY(ended.last().first().toString().contains('3'));
        process.Start(Script("kill -9 $$"));
        QTRY_COMPARE(ended.count(), 3);
        // A folder that cannot be made: a file stands there.
        ServiceSettings settings = Script("sleep 60");
        settings.folder = settings.program;
        process.Start(settings);
        QCOMPARE(ended.count(), 4);
        // One that does not want to end, and a stop that nobody is told of.
        process.Start(Script("trap '' TERM\necho ready https://localhost:1\nwhile :; do sleep 0.1; done"));
        QTRY_COMPARE(process.Host(), QString("localhost:1"));
        process.Stop();
        QVERIFY(!process.Running() && process.Host().isEmpty());
        QCOMPARE(ended.count(), 4);
    }

    void OnlyTheOwnFileIsWritten()
    {
        const QString file = AssistConfigFile(m_folder->path());
        QVERIFY(IsOwnAssistConfig(file));
        const AssistConfig config{"localhost:1", "workbench", "KEY", "/a, b/c.pem"};
        QVERIFY(WriteAssistConfig(file, config));
        QVERIFY(IsOwnAssistConfig(file));
        QCOMPARE(QSettings(file, QSettings::IniFormat).value("Service/ca").toString(), config.ca);
        QVERIFY((QFile::permissions(file) & (QFile::ReadOther | QFile::ReadGroup)) == 0);
        {
            QSettings settings(file, QSettings::IniFormat);
            settings.setValue("Service/host", "assist.example.org");
        }
        QVERIFY(!IsOwnAssistConfig(file));
        QVERIFY(QFile::remove(file));
        QFile empty(file);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        QVERIFY(!IsOwnAssistConfig(file));
        // A file stands where the directory belongs.
        QFile::remove(file);
        QFile blocker(m_folder->filePath("blocked"));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        QVERIFY(!WriteAssistConfig(AssistConfigFile(blocker.fileName()), config));
    }

    // From the first start of the real service to an answer that came over a trusted connection.
    void TheRealService()
    {
        ServiceProcess process;
        QSignalSpy ready(&process, &ServiceProcess::Ready);
        const QString folder = m_folder->filePath("work/folder");
        process.Start({GNSS_BUILD_BIN "/assist-service", folder, {}});
        QVERIFY(ready.wait(20000));
        AssistConfig config;
        QVERIFY(ReadServiceCredentials(folder, config));
        QVERIFY(config.appid.size() == 9 && config.key.size() == 64);
        config.host = process.Host();
        config.ca = "work/folder/certificate.pem";
        const QString file = AssistConfigFile(m_folder->path());
        QVERIFY(WriteAssistConfig(file, config));

        QNetworkAccessManager manager;
        const QUrl url("https://" + process.Host() + "/lumat/v1/xgnss/pgnss");
        const auto ask = [&manager, &url] {
            manager.clearConnectionCache(); // a connection keeps the authorities that it was made with
            QNetworkReply* reply = manager.get(QNetworkRequest(url));
            const bool finished = QTest::qWaitFor([reply] { return reply->isFinished(); }, 20000);
            reply->deleteLater();
            return !finished ? -1 : reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        };
        QCOMPARE(ask(), 0); // not trusted yet
        QVERIFY(!TrustConfiguredAuthority(m_folder->filePath("none.ini"), m_folder->path()));
        QVERIFY(TrustConfiguredAuthority(file, m_folder->path()));
        QCOMPARE(ask(), 401);
        process.Stop();
        QCOMPARE(ask(), 0);
        // The next start has the same certificate and key.
        process.Start({GNSS_BUILD_BIN "/assist-service", folder, {}});
        QVERIFY(ready.wait(20000));
        AssistConfig again;
        QVERIFY(ReadServiceCredentials(folder, again) && again.key == config.key);
        QFile::remove(m_folder->filePath("work/folder/certificate.pem"));
        QVERIFY(!TrustConfiguredAuthority(file, m_folder->path()));
    }

private:
    ServiceSettings Script(const QByteArray& body)
    {
        QFile file(m_folder->filePath("service.sh"));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            qFatal("no script");
        }
        file.write("#!/bin/sh\n" + body + '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return {file.fileName(), m_folder->filePath("data"), {}};
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(ServiceProcessTest)
#include "tst_serviceprocess.moc"
