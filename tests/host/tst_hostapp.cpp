#include "Components.h"
#include "DebugLog.h"
#include "DebugLogPane.h"
#include "HostOptions.h"
#include "HostSettings.h"
#include "NmeaCounter.h"
#include "ProcessFacts.h"
#include "SerialPortsVariable.h"

#include <QDebug>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

HostOptionsResult Parse(QStringList arguments)
{
    arguments.prepend(QStringLiteral("gnss-workbench"));
    return ParseHostOptions(arguments);
}

/// A sentence with its checksum and line end.
QByteArray Sentence(const QByteArray& body)
{
    int sum = 0;
    for (const char c : body)
        sum ^= static_cast<unsigned char>(c);
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + "\r\n";
}

} // namespace

class HostAppTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void CommandLine();
    void BadCommandLines_data();
    void BadCommandLines();
    void FirstLanguageFollowsTheLocale();
    void LanguageFileIsReadBackByTheRightKey();
    void SettingsLast();
    void PortVariableKeepsTheUsersPorts();
    void CounterTellsGoodFromBad();
    void CounterDoesNotCareHowBytesAreCut();
    void ComponentsGiveTheirReason();
    void DebugLogIsBoundedAndSurvivesItsPane();
    void DebugLogTakesOtherThreadsAndItself();
    void OpenFilesOfThisProcess();
};

void HostAppTest::CommandLine()
{
    const HostOptionsResult plain = Parse({});
    QVERIFY(plain.error.isEmpty());
    QVERIFY(!plain.options.product && !plain.options.language);
    QVERIFY(!plain.options.noReceiver && plain.options.headlessSeconds == 0 && !plain.options.size.isValid());

    QTemporaryDir folder;
    const QString capture = folder.filePath(QStringLiteral("a b.log"));
    QVERIFY(QFile(capture).open(QIODevice::WriteOnly));
    const HostOptions all = Parse({"--product",  "31",
                                   "--language", "zh",
                                   "--receiver", "/r",
                                   "--idle",     "--capture",
                                   capture,      "--speed",
                                   "2.5",        "--receiver-arg",
                                   "--fault",    "--receiver-arg",
                                   "silence",    "--headless",
                                   "20",         "--output",
                                   "/o",         "--plugin",
                                   "/p.so",      "--size",
                                   "800x600",    "--timing"})
                                .options;
    QCOMPARE(*all.product, 31);
    QCOMPARE(*all.language, int(LANGUAGE_CHINESE));
    QCOMPARE(all.receiver, QStringLiteral("/r"));
    QVERIFY(all.idle && all.timing);
    QCOMPARE(all.capture, capture);
    QCOMPARE(all.speed, QStringLiteral("2.5"));
    QCOMPARE(all.receiverArguments, QStringList({"--fault", "silence"}));
    QCOMPARE(all.headlessSeconds, 20);
    QCOMPARE(all.output, QStringLiteral("/o"));
    QCOMPARE(all.plugin, QStringLiteral("/p.so"));
    QCOMPARE(all.size, QSize(800, 600));

    const HostOptions port = Parse({"--port", "/dev/pts/7", "--no-receiver", "--language", "en"}).options;
    QCOMPARE(port.port, QStringLiteral("/dev/pts/7"));
    QVERIFY(port.noReceiver);
    QCOMPARE(*port.language, int(LANGUAGE_ENGLISH));
}

void HostAppTest::BadCommandLines_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList{"--nosuch"};
    QTest::newRow("stray argument") << QStringList{"file.log"};
    QTest::newRow("product") << QStringList{"--product", "x"};
    QTest::newRow("language") << QStringList{"--language", "fr"};
    QTest::newRow("speed zero") << QStringList{"--speed", "0"};
    QTest::newRow("speed nan") << QStringList{"--speed", "nan"};
    QTest::newRow("speed comma") << QStringList{"--speed", "2,5"};
    QTest::newRow("seconds") << QStringList{"--headless", "0"};
    QTest::newRow("size") << QStringList{"--size", "800"};
    QTest::newRow("size huge") << QStringList{"--size", "800x999999"};
    QTest::newRow("capture") << QStringList{"--capture", "/no/such/file"};
    QTest::newRow("value missing") << QStringList{"--port"};
}

void HostAppTest::BadCommandLines()
{
    QFETCH(QStringList, arguments);
    QVERIFY(!Parse(arguments).error.isEmpty());
}

void HostAppTest::FirstLanguageFollowsTheLocale()
{
    for (const char* name : {"zh_CN", "zh_TW", "zh"})
        QCOMPARE(LanguageOfLocale(QLocale(QLatin1String(name))), int(LANGUAGE_CHINESE));
    for (const char* name : {"en_US", "de_DE", "ja_JP", "C"})
        QCOMPARE(LanguageOfLocale(QLocale(QLatin1String(name))), int(LANGUAGE_ENGLISH));
}

void HostAppTest::LanguageFileIsReadBackByTheRightKey()
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("Source-Datas/bin/config/language.ini"));
    for (const int language : {2, 1, 1}) {
        QVERIFY(WriteLanguageFile(folder.path(), language));
        QFile raw(file);
        QVERIFY(raw.open(QIODevice::ReadOnly));
        const QByteArray wanted = "[LanguageSetting]\nLanguage=" + QByteArray::number(language) + '\n';
        QCOMPARE(raw.readAll().trimmed(), wanted.trimmed());
        QCOMPARE(QSettings(file, QSettings::IniFormat).value("LanguageSetting/Language").toInt(), language);
    }
    // A file stands where the folder belongs.
    QFile blocker(folder.filePath(QStringLiteral("blocked")));
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    QVERIFY(!WriteLanguageFile(blocker.fileName(), 1));
}

void HostAppTest::SettingsLast()
{
    QTemporaryDir folder;
    const QString ini = folder.filePath(QStringLiteral("host.ini"));
    const QLocale chinese(QLocale::Chinese);
    {
        HostSettings settings(ini);
        QCOMPARE(settings.Product(), 0);
        QCOMPARE(settings.Language(chinese), int(LANGUAGE_CHINESE));
        settings.SetProduct(27);
        settings.SetLanguage(LANGUAGE_ENGLISH);
    }
    HostSettings settings(ini);
    QCOMPARE(settings.Product(), 27);
    QCOMPARE(settings.Language(chinese), int(LANGUAGE_ENGLISH));
    settings.SetLanguage(5);
    QCOMPARE(settings.Language(chinese), int(LANGUAGE_CHINESE));
}

void HostAppTest::PortVariableKeepsTheUsersPorts()
{
    using namespace SerialPortsVariable;
    QCOMPARE(With(QString(), "/a"), QStringLiteral("/a"));
    QCOMPARE(With("/x:/y", "/a"), QStringLiteral("/a:/x:/y"));
    QCOMPARE(With("/x:/a:/y", "/a"), QStringLiteral("/a:/x:/y"));
    QCOMPARE(Without("/x:/a:/y:/a", "/a"), QStringLiteral("/x:/y"));
    QCOMPARE(Without("/a", "/a"), QString());
    qputenv("GNSS_SERIAL_PORTS", "/user/port");
    Add("/a");
    QCOMPARE(qgetenv("GNSS_SERIAL_PORTS"), QByteArray("/a:/user/port"));
    Remove("/a");
    QCOMPARE(qgetenv("GNSS_SERIAL_PORTS"), QByteArray("/user/port"));
    Remove("/user/port");
    QVERIFY(!qEnvironmentVariableIsSet("GNSS_SERIAL_PORTS"));
}

void HostAppTest::CounterTellsGoodFromBad()
{
    QByteArray bytes =
        "7E\x04\0noise$GP" + Sentence("GPGGA,101530.00,4816.4,N,01138.0,E,1,08,0.9,545.4,M,46.9,M,,");
    bytes += Sentence("GNRMC,101530.000,A,4816.4,N,01138.0,E,0.0,,201126,,,A"); // the same time
    bytes += Sentence("GPGLL,4816.4,N,01138.0,E,101531,A,A");
    bytes += Sentence("GNGNS,101532,4816.4,N,01138.0,E,AN,08,0.9,545.4,46.9,,");
    bytes += Sentence("GNRMC,101533,V,,,,,,,201126,,,N");                         // not valid
    bytes += Sentence("GPGGA,101534,4816.4,N,01138.0,E,0,00,,,M,,M,,");           // not valid
    bytes += "$GPGGA,101535,4816.4,N,01138.0,E,1,08,0.9,545.4,M,46.9,M,,*00\r\n"; // wrong checksum
    bytes += Sentence("GPGSV,1,1,02,01,40,083,46,02,17,308,41");
    bytes += Sentence("GPGSV,1,1,02,01,40,083,46,03,17,308,41,1"); // another signal of the same satellite
    bytes += Sentence("GLGSV,1,1,02,65,40,083,,66,,,30");          // the second one has no direction
    NmeaCounter counter;
    counter.Feed(bytes.constData(), bytes.size());
    QCOMPARE(counter.Bytes(), qint64(bytes.size()));
    QCOMPARE(counter.Sentences(), qint64(9));
    QCOMPARE(counter.Fixes(), 3);
    QCOMPARE(counter.Satellites(), 4);
    // A new list replaces the old one.
    const QByteArray next = Sentence("GPGSV,1,1,01,09,40,083,46") + Sentence("GPGSV,1,1,00,1");
    counter.Feed(next.constData(), next.size());
    QCOMPARE(counter.Satellites(), 2);
}

void HostAppTest::CounterDoesNotCareHowBytesAreCut()
{
    QFile file(QStringLiteral(GNSS_CAPTURES "/quectel-l76k-dual.log"));
    if (!file.open(QIODevice::ReadOnly))
        QSKIP("the captures are not there");
    const QByteArray bytes = file.readAll();
    for (const int step : {1, 7, 4096}) {
        NmeaCounter counter;
        for (int i = 0; i < bytes.size(); i += step)
            counter.Feed(bytes.constData() + i, qMin(step, bytes.size() - i));
        QCOMPARE(counter.Bytes(), qint64(195976));
        QCOMPARE(counter.Sentences(), qint64(2080));
        QCOMPARE(counter.Fixes(), 130);
        QCOMPARE(counter.Satellites(), 24);
    }
}

void HostAppTest::ComponentsGiveTheirReason()
{
    QTemporaryDir folder;
    QCOMPARE(CodecFile(QStringLiteral("/app")), QStringLiteral("/app/Source-Datas/bin/GnssUtils.dll"));
    QVERIFY(!CheckLibrary(folder.filePath("none.dll")).good);
    QVERIFY(!CheckLibrary(folder.filePath("none.dll")).reason.isEmpty());
    QFile text(folder.filePath("text.dll"));
    QVERIFY(text.open(QIODevice::WriteOnly) && text.write("no library") > 0);
    text.close();
    const ComponentStatus broken = CheckLibrary(text.fileName());
    QVERIFY(!broken.good);
    QVERIFY(broken.reason.contains(QStringLiteral("text.dll")));
    QVERIFY(!CheckProgram(text.fileName()).good);
    QVERIFY(CheckProgram(QStringLiteral("/bin/sh")).good);
    QVERIFY(QFile::link(folder.filePath("nowhere"), folder.filePath("7zr.exe")));
    QVERIFY(!CheckProgram(folder.filePath("7zr.exe")).good);

    const QString support = QStringLiteral(GNSS_BUILD_BIN "/libHostSupport.so");
    QVERIFY(IsLibraryLoaded(support));
    QVERIFY(CheckLibrary(support).good);
}

void HostAppTest::DebugLogIsBoundedAndSurvivesItsPane()
{
    DebugLog& log = DebugLog::Instance();
    log.Clear();
    {
        DebugLogPane pane;
        const int lines = DebugLog::kMaxLines + 500;
        for (int i = 0; i < lines; ++i)
            log.Add(QtDebugMsg, QStringLiteral("default"), QString::number(i));
        QCoreApplication::processEvents();
        QCOMPARE(pane.LineCount(), DebugLog::kMaxLines);
        QCOMPARE(log.Text().count('\n'), DebugLog::kMaxLines);
        QVERIFY(log.Text().endsWith(QStringLiteral("D %1\n").arg(lines - 1)));
        QVERIFY(!log.Text().contains(QStringLiteral("D 499\n")));

        pane.Clear();
        QCOMPARE(pane.LineCount(), 0);
        log.Add(QtWarningMsg, QStringLiteral("other"), QStringLiteral("after"));
        QCoreApplication::processEvents();
        QCOMPARE(pane.LineCount(), 1);
        log.Add(QtDebugMsg, QString(), QStringLiteral("on its way when the pane goes"));
    }
    log.Add(QtDebugMsg, QString(), QStringLiteral("late"));
    QCoreApplication::processEvents();
    QCOMPARE(log.Text().count('\n'), 3);
    QVERIFY(log.Text().contains(QStringLiteral("W other: after\n")));
}

void HostAppTest::DebugLogTakesOtherThreadsAndItself()
{
    DebugLog& log = DebugLog::Instance();
    log.Clear();
    const QtMessageHandler previous = qInstallMessageHandler(nullptr);
    log.Install();
    DebugLogPane pane;
    std::vector<QThread*> threads;
    for (int t = 0; t < 4; ++t) {
        threads.push_back(QThread::create([] {
            for (int i = 0; i < 500; ++i)
                qDebug() << "from a thread" << i;
        }));
        threads.back()->start();
    }
    for (int i = 0; i < 100; ++i)
        QCoreApplication::processEvents();
    for (QThread* thread : threads) {
        QVERIFY(thread->wait(10000));
        delete thread;
    }
    QCoreApplication::processEvents();
    qInstallMessageHandler(previous);
    QCOMPARE(log.Text().count(QStringLiteral("from a thread")), 2000);
    QCOMPARE(pane.LineCount(), log.Text().count('\n'));
    const int errors = log.ErrorCount();
    log.Add(QtCriticalMsg, QString(), QStringLiteral("x"));
    QCOMPARE(log.ErrorCount(), errors + 1);
}

void HostAppTest::OpenFilesOfThisProcess()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("device"));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(QFile::link(file.fileName(), folder.filePath("link")));
    QVERIFY(IsOpenInThisProcess(folder.filePath("link")));
    file.close();
    QVERIFY(!IsOpenInThisProcess(folder.filePath("link")));
    QVERIFY(!IsOpenInThisProcess(folder.filePath("nothing")));
    QVERIFY(ResidentKilobytes() > 1000);
    QVERIFY(MillisecondsSinceProcessStart() > 0.0 && MillisecondsSinceProcessStart() < 3600e3);
}

QTEST_MAIN(HostAppTest)
#include "tst_hostapp.moc"
