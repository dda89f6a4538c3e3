// SPDX-License-Identifier: MIT
#include "Files.h"

#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

/// Runs the host as a program, from a folder of its own, with a plug-in and a receiver that only take notes.
class HostRunTest : public QObject {
    Q_OBJECT

private:
    /// Runs it to its end and gives its exit status, for one second without a user when `plugin` isn't empty.
    int Run(const QString& plugin, QStringList arguments = {}, const QString& variable = "FAKE_NONE")
    {
        if (!plugin.isEmpty()) {
            arguments = QStringList{"--headless", "1", "--output", "out", "--plugin", plugin} + arguments;
        }
        QProcess process;
        process.setWorkingDirectory(m_folder->path());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove("GNSS_SERIAL_PORTS");
        environment.insert(variable, "1");
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(m_folder->filePath("gnss-workbench"), arguments);
        const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
        m_output = QString::fromLocal8Bit(process.readAll());
        return ended ? process.exitCode() : -1;
    }
    QString Read(const QString& name) const { return QString::fromUtf8(Content(m_folder->filePath(name))); }
    QString Receiver(const QByteArray& body) const
    {
        QString path = m_folder->filePath("receiver.sh");
        WriteScript(path, "echo \"$@\" > arguments.txt\necho ready \"$2\"; sleep 0.3; " + body);
        return path;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_output;

private Q_SLOTS:
    void init()
    {
        // A copy, since the program looks for everything beside its own file.
        m_folder = std::make_unique<QTemporaryDir>();
        for (const QString name : {"gnss-workbench", "libHostSupport.so"}) {
            QVERIFY(QFile::copy(GNSS_BUILD_BIN "/" + name, m_folder->filePath(name)));
        }
        QVERIFY(QFile::link(GNSS_BUILD_BIN "/translations", m_folder->filePath("translations")));
    }

    void DataComesThrough()
    {
        const int status = Run(FAKE_PLUGIN, {"--language", "zh", "--product", "31", "--receiver",
                                             Receiver("echo foreign > GnssData/other_1.bin; exec sleep 30")});
        QVERIFY2(status == 0, qPrintable(m_output));
        QCOMPARE(
            Read("events.txt").remove(QRegularExpression("-\\d+")).split('\n'),
            QStringList({"built language 2 product 31 ports gnss-virtual", "taken in",
                         "port gnss-virtual embedded", "open", "given up", "window gone", "plug-in gone", ""}));
        QVERIFY(Read("arguments.txt").contains("--die-with-parent --product 31"));
        const QString summary = Read("out/summary.txt");
        for (const char* line : {"bytes: 67\n", "sentences: 1\n", "fixes: 1\n", "satellites: 0\n", "receiver: "}) {
            QVERIFY2(summary.contains(line), qPrintable(summary));
        }
        QVERIFY(m_output.contains(summary));
        QCOMPARE(QImage(m_folder->filePath("out/screenshot.png")).size(), QSize(1600, 1000));
        QVERIFY(Read("out/debug.log").contains("ready on"));
        QCOMPARE(QDir(m_folder->filePath("out/captures")).entryList(QDir::Files).size(), 1);
    }

    /// Without its receiver, codec, tree file and archiver it still comes up and goes down in order.
    void TheWorkbenchItselfWithoutDataIsAFailure()
    {
        QVERIFY2(Run(GNSS_BUILD_BIN "/libGnss.so", {"--no-receiver"}) == 1, qPrintable(m_output));
        QVERIFY(Read("out/summary.txt").contains("bytes: 0\n"));
        const QString log = Read("out/debug.log");
        QVERIFY2(!log.contains("plug-in not loaded"), qPrintable(log));
        QVERIFY(log.contains("GnssUtils.dll the file is missing") && log.contains("7zr.exe the file is missing"));
        QCOMPARE(QImage(m_folder->filePath("out/screenshot.png")).size(), QSize(1600, 1000));
    }

    void BoxesDoNotHoldAHeadlessRun()
    {
        QVERIFY2(Run(FAKE_PLUGIN, {"--port", "/dev/null"}, "FAKE_BOX") == 0, qPrintable(m_output));
        QVERIFY(Read("out/debug.log").contains("box closed: GNSS stuck"));
        QVERIFY(Read("events.txt").contains("port null embedded"));
    }

    void AMissingOrForeignPluginIsToldWithItsReason()
    {
        QVERIFY2(Run("libGnss.so", {"--no-receiver"}) == 1, qPrintable(m_output));
        QVERIFY(Read("out/debug.log").contains("libGnss.so the file is missing"));
        QVERIFY2(Run(GNSS_BUILD_BIN "/libHostSupport.so", {"--no-receiver"}) == 1, qPrintable(m_output));
        QVERIFY(Read("out/debug.log").contains("plug-in not loaded"));
    }

    void ADyingReceiverIsTold()
    {
        const QString receiver = Receiver("echo last words >&2; exit 4");
        QVERIFY2(Run(FAKE_PLUGIN, {"--receiver", receiver}) == 0, qPrintable(m_output));
        QVERIFY(Read("out/debug.log").contains("status 4"));
        QVERIFY(Read("out/summary.txt").contains("status 4"));
    }

    void Help()
    {
        QCOMPARE(Run("", {"--help"}), 0);
        QVERIFY(m_output.contains("--headless <SECONDS>"));
        QCOMPARE(Run("", {"--nosuch"}), 2);
    }
};

QTEST_GUILESS_MAIN(HostRunTest)
#include "tst_run.moc"
