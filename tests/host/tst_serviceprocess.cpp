// SPDX-License-Identifier: MIT
#include "host/app/AssistConfig.h"
#include "host/app/ServiceProcess.h"

#include <QFile>
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

    void ItsHostIsKnownWhileItRuns()
    {
        ServiceProcess process;
        QSignalSpy ended(&process, &ServiceProcess::Ended);
        process.Start(Script("echo ready https://localhost:1; sleep 0.1; exit 3"));
        QTRY_COMPARE(process.Host(), QString("localhost:1"));
        QTRY_COMPARE(ended.count(), 1);
        QVERIFY(!process.Running() && process.Host().isEmpty());
        // A folder that cannot be made: a file stands there.
        ServiceSettings settings = Script("sleep 60");
        settings.folder = settings.program;
        process.Start(settings);
        QCOMPARE(ended.count(), 2);
        process.Start(Script("echo ready https://localhost:2; sleep 60"));
        QTRY_COMPARE(process.Host(), QString("localhost:2"));
        process.Stop();
        QVERIFY(!process.Running() && process.Host().isEmpty());
        QCOMPARE(ended.count(), 2);
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
        // Its authority isn't there.
        QVERIFY(!TrustConfiguredAuthority(file, m_folder->path()));
        QVERIFY(!TrustConfiguredAuthority(m_folder->filePath("none.ini"), m_folder->path()));
        AssistConfig read;
        QVERIFY(!ReadServiceCredentials(m_folder->path(), read));
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
