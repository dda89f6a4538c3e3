#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

/// Runs the host as a program, from a folder of its own, with a plug-in and a receiver that only take notes.
class HostRunTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void DataComesThrough();
    void NoDataIsAFailure();
    void BoxesDoNotHoldAHeadlessRun();
    void AMissingPluginAndCodecAreToldWithTheirReasons();
    void AForeignLibraryIsNoPlugin();
    void ADyingReceiverIsTold();
    void TheWorkbenchItself();
    void Help();

private:
    struct Result {
        int status = -1;
        QString output;
    };
    Result Run(const QStringList& arguments, const QStringList& environment = {});
    QString Read(const QString& name) const;
    QString Receiver(const QByteArray& body) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void HostRunTest::init()
{
    // A copy, since the program looks for everything beside its own file.
    m_folder = std::make_unique<QTemporaryDir>();
    for (const char* name : {"gnss-workbench", "libHostSupport.so"}) {
        QVERIFY(QFile::copy(QStringLiteral(GNSS_BUILD_BIN "/%1").arg(QLatin1String(name)),
                            m_folder->filePath(QLatin1String(name))));
    }
    QVERIFY(QFile::link(QStringLiteral(GNSS_BUILD_BIN "/translations"), m_folder->filePath("translations")));
}

HostRunTest::Result HostRunTest::Run(const QStringList& arguments, const QStringList& environment)
{
    QProcess process;
    process.setWorkingDirectory(m_folder->path());
    process.setProcessEnvironment([&environment] {
        QProcessEnvironment all = QProcessEnvironment::systemEnvironment();
        all.remove(QStringLiteral("GNSS_SERIAL_PORTS"));
        for (const QString& entry : environment)
            all.insert(entry.section('=', 0, 0), entry.section('=', 1));
        return all;
    }());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(m_folder->filePath("gnss-workbench"), arguments);
    Result result;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.output = QString::fromLocal8Bit(process.readAll());
    return result;
}

QString HostRunTest::Read(const QString& name) const
{
    QFile file(m_folder->filePath(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QStringLiteral("(no file)");
}

QString HostRunTest::Receiver(const QByteArray& body) const
{
    QFile file(m_folder->filePath("receiver.sh"));
    file.open(QIODevice::WriteOnly);
    file.write("#!/bin/sh\necho \"$@\" > arguments.txt\n" + body + '\n');
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return file.fileName();
}

void HostRunTest::DataComesThrough()
{
    const Result result =
        Run({"--headless", "1", "--output", "out", "--plugin", FAKE_PLUGIN, "--language", "zh", "--product", "31",
             "--receiver",
             Receiver("echo ready \"$2\"; sleep 0.3; echo foreign > GnssData/other_1.bin; exec sleep 30")});
    QVERIFY2(result.status == 0, qPrintable(result.output));
    QCOMPARE(Read("events.txt").remove(QRegularExpression("-\\d+")).split('\n'),
             QStringList({"built language 2 product 31 ports gnss-virtual", "taken in",
                          "port gnss-virtual embedded", "open", "given up", "window gone", "plug-in gone", ""}));
    QVERIFY(Read("arguments.txt").contains(QStringLiteral("--die-with-parent --product 31")));
    const QString summary = Read("out/summary.txt");
    for (const char* line : {"bytes: 67\n", "sentences: 1\n", "fixes: 1\n", "satellites: 0\n", "receiver: "})
        QVERIFY2(summary.contains(QLatin1String(line)), qPrintable(summary));
    QVERIFY(result.output.contains(summary));
    QCOMPARE(QImage(m_folder->filePath("out/screenshot.png")).size(), QSize(1600, 1000));
    QVERIFY(Read("out/debug.log").contains(QStringLiteral("ready on")));
    QCOMPARE(QDir(m_folder->filePath("out/captures")).entryList(QDir::Files).size(), 1);
}

void HostRunTest::NoDataIsAFailure()
{
    const Result result = Run({"--headless", "1", "--output", "out", "--plugin", FAKE_PLUGIN, "--no-receiver"});
    QVERIFY2(result.status == 1, qPrintable(result.output));
    QVERIFY(Read("out/summary.txt").contains(QStringLiteral("bytes: 0\n")));
    QVERIFY(!Read("events.txt").contains(QStringLiteral("open")));
}

void HostRunTest::BoxesDoNotHoldAHeadlessRun()
{
    const Result result = Run(
        {"--headless", "1", "--output", "out", "--plugin", FAKE_PLUGIN, "--port", "/dev/null"}, {"FAKE_BOX=1"});
    QVERIFY2(result.status == 0, qPrintable(result.output));
    QVERIFY(Read("out/debug.log").contains(QStringLiteral("box closed: GNSS stuck")));
    QVERIFY(Read("events.txt").contains(QStringLiteral("port null embedded")));
}

void HostRunTest::AMissingPluginAndCodecAreToldWithTheirReasons()
{
    const Result result = Run({"--headless", "1", "--output", "out", "--no-receiver"});
    QVERIFY2(result.status == 1, qPrintable(result.output));
    const QString log = Read("out/debug.log");
    QVERIFY(log.contains(QStringLiteral("libGnss.so the file is missing")));
    QVERIFY(log.contains(QStringLiteral("GnssUtils.dll the file is missing")));
    QVERIFY(log.contains(QStringLiteral("7zr.exe the file is missing")));
}

void HostRunTest::AForeignLibraryIsNoPlugin()
{
    const Result result = Run({"--headless", "1", "--output", "out", "--no-receiver", "--plugin",
                               QStringLiteral(GNSS_BUILD_BIN "/libHostSupport.so")});
    QVERIFY2(result.status == 1, qPrintable(result.output));
    QVERIFY(Read("out/debug.log").contains(QStringLiteral("plug-in not loaded")));
}

void HostRunTest::ADyingReceiverIsTold()
{
    const Result result = Run({"--headless", "1", "--output", "out", "--plugin", FAKE_PLUGIN, "--receiver",
                               Receiver("echo ready \"$2\"; sleep 0.3; echo last words >&2; exit 4")});
    QVERIFY2(result.status == 0, qPrintable(result.output));
    QVERIFY(Read("out/debug.log").contains(QStringLiteral("status 4")));
    QVERIFY(Read("out/summary.txt").contains(QStringLiteral("status 4")));
}

void HostRunTest::TheWorkbenchItself()
{
    const QString plugin = QStringLiteral(GNSS_BUILD_BIN "/libGnss.so");
    if (!QFile::exists(plugin))
        QSKIP("the plug-in is not built");
    // Without its codec, tree file and archiver it still comes up and goes down in order.
    const Result result = Run({"--headless", "1", "--output", "out", "--no-receiver", "--plugin", plugin});
    QVERIFY2(result.status == 1, qPrintable(result.output));
    const QString log = Read("out/debug.log");
    QVERIFY2(!log.contains(QStringLiteral("plug-in not loaded")), qPrintable(log));
    QCOMPARE(QImage(m_folder->filePath("out/screenshot.png")).size(), QSize(1600, 1000));
}

void HostRunTest::Help()
{
    const Result help = Run({"--help"});
    QCOMPARE(help.status, 0);
    for (const char* option :
         {"--product", "--language", "--no-receiver", "--receiver", "--port", "--idle", "--capture", "--speed",
          "--receiver-arg", "--headless", "--output", "--plugin", "--size", "--timing"})
        QVERIFY2(help.output.contains(QLatin1String(option)), option);
    QCOMPARE(Run({"--nosuch"}).status, 2);
}

QTEST_GUILESS_MAIN(HostRunTest)
#include "tst_hostrun.moc"
