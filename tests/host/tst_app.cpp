// SPDX-License-Identifier: MIT
#include "Files.h"
#include "host/app/Components.h"
#include "host/app/DebugLog.h"
#include "host/app/DebugLogPane.h"
#include "host/app/HostOptions.h"
#include "host/app/HostSettings.h"
#include "host/app/NmeaCounter.h"
#include "host/app/SerialPortsVariable.h"

#include <QDebug>
#include <QTemporaryDir>

#include <future>

namespace {

HostOptionsResult Parse(const QString& line)
{
    return ParseHostOptions(("gnss-workbench " + line).split(' ', Qt::SkipEmptyParts));
}

/// A sentence with its checksum and line end.
QByteArray Sentence(const QByteArray& body)
{
    int sum = 0;
    for (const char c : body) {
        sum ^= static_cast<unsigned char>(c);
    }
    return '$' + body + '*' + QByteArray::number(sum, 16).rightJustified(2, '0').toUpper() + "\r\n";
}

} // namespace

class HostAppTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void CommandLine()
    {
        const HostOptionsResult plain = Parse("");
        QVERIFY(plain.error.isEmpty());
        QVERIFY(!plain.options.product && !plain.options.language);
        QVERIFY(!plain.options.noReceiver && plain.options.headlessSeconds == 0 && !plain.options.size.isValid());

        WriteFile("a.log", "");
        const HostOptions all =
            Parse("--product 31 --language zh --receiver /r --idle --capture a.log --speed 2.5 "
                  "--receiver-arg --fault --receiver-arg silence --headless 20 --output /o "
                  "--plugin /p.so --size 800x600 --timing --port /dev/pts/7 --no-receiver")
                .options;
        QCOMPARE(*all.product, 31);
        QCOMPARE(*all.language, int(LANGUAGE_CHINESE));
        QVERIFY(all.idle && all.timing && all.noReceiver);
        QCOMPARE((QStringList{all.receiver, all.speed, all.output, all.plugin, all.port} + all.receiverArguments),
                 (QStringList{"/r", "2.5", "/o", "/p.so", "/dev/pts/7", "--fault", "silence"}));
        QCOMPARE(all.capture, QDir::current().absoluteFilePath("a.log"));
        QCOMPARE(all.headlessSeconds, 20);
        QCOMPARE(all.size, QSize(800, 600));
        QCOMPARE(*Parse("--language en").options.language, int(LANGUAGE_ENGLISH));

        for (const char* bad :
             {"--nosuch", "file.log", "--product x", "--language fr", "--speed 0", "--speed nan", "--speed 2,5",
              "--headless 0", "--size 800", "--size 800x999999", "--capture /no/such/file", "--port"}) {
            QVERIFY2(!Parse(bad).error.isEmpty(), bad);
        }
    }

    void TheFirstLanguageFollowsTheLocale()
    {
        for (const char* name : {"zh_CN", "zh_TW", "zh", "en_US", "de_DE", "ja_JP", "C"}) {
            const QTemporaryDir folder;
            HostSettings settings(folder.filePath("host.ini"));
            for (int times = 0; times < 2; ++times) {
                QCOMPARE(settings.Language(QLocale(name)), *name == 'z' ? LANGUAGE_CHINESE : LANGUAGE_ENGLISH);
                settings.SetLanguage(5); // there is no such
            }
        }
        WriteFile("blocked", "");
        QVERIFY(!WriteLanguageFile("blocked", 1));
    }

    void PortVariableKeepsTheUsersPorts()
    {
        using namespace SerialPortsVariable;
        QCOMPARE(With("/x:/a:/y", "/a"), QStringLiteral("/a:/x:/y"));
        QCOMPARE(Without("/x:/a:/y:/a", "/a"), QStringLiteral("/x:/y"));
        qputenv("GNSS_SERIAL_PORTS", "/user/port");
        Add("/a");
        QCOMPARE(qgetenv("GNSS_SERIAL_PORTS"), QByteArray("/a:/user/port"));
        Remove("/a");
        QCOMPARE(qgetenv("GNSS_SERIAL_PORTS"), QByteArray("/user/port"));
    }

    void CounterTellsGoodFromBad()
    {
        const QByteArray place = "4816.4,N,01138.0,E,";
        const QByteArray behind = ",08,0.9,545.4,M,46.9,M,,";
        const QByteArray bytes =
            QByteArrayLiteral("7E\x04\0noise$GP") + Sentence("GPGGA,101530.00," + place + '1' + behind) +
            Sentence("GNRMC,101530.000,A," + place + "0.0,,201126,,,A") + // the same time
            Sentence("GPGLL," + place + "101531,A,A") +
            Sentence("GNGNS,101532," + place + "AN,08,0.9,545.4,46.9,,") +
            // Not valid, and a wrong checksum.
            Sentence("GNRMC,101533,V,,,,,,,201126,,,N") + Sentence("GPGGA,101534," + place + '0' + behind) +
            "$GPGGA,101535," + place + '1' + behind + "*00\r\n" +
            // Another signal of the same satellite, and one without a direction.
            Sentence("GPGSV,1,1,02,01,40,083,46,02,17,308,41") +
            Sentence("GPGSV,1,1,02,01,40,083,46,03,17,308,41,1") + Sentence("GLGSV,1,1,02,65,40,083,,66,,,30");
        for (const int step : {1, 7, 4096}) {
            NmeaCounter counter;
            for (int i = 0; i < bytes.size(); i += step) {
                counter.Feed(bytes.constData() + i, qMin(step, bytes.size() - i));
            }
            QCOMPARE(counter.Bytes(), qint64(bytes.size()));
            QCOMPARE(counter.Sentences(), qint64(9));
            QCOMPARE(counter.Fixes(), 3);
            QCOMPARE(counter.Satellites(), 4);
            // A new list replaces the old one.
            const QByteArray next = Sentence("GPGSV,1,1,01,09,40,083,46") + Sentence("GPGSV,1,1,00,1");
            counter.Feed(next.constData(), next.size());
            QCOMPARE(counter.Satellites(), 2);
        }
    }

    void ComponentsGiveTheirReason()
    {
        QTemporaryDir folder;
        const QString text = folder.filePath("text.dll");
        WriteFile(text, "no library");
        QVERIFY(!CheckLibrary(text).good && CheckLibrary(text).reason.contains("text.dll"));
        QVERIFY(!CheckProgram(text).good);
        QVERIFY(CheckProgram("/bin/sh").good);
        QVERIFY(QFile::link(folder.filePath("nowhere"), folder.filePath("7zr.exe")));
        QVERIFY(!CheckProgram(folder.filePath("7zr.exe")).good);
        QVERIFY(CheckLibrary(GNSS_BUILD_BIN "/libHostSupport.so").good);
    }

    void DebugLogIsBoundedAndSurvivesItsPane()
    {
        DebugLog& log = DebugLog::Instance();
        log.Clear();
        {
            DebugLogPane pane;
            for (int i = 0; i < DebugLog::kMaxLines + 500; ++i) {
                log.Add(QtDebugMsg, "default", QString::number(i));
            }
            QCoreApplication::processEvents();
            QCOMPARE(pane.LineCount(), DebugLog::kMaxLines);
            const QStringList lines = log.Text().split('\n');
            QCOMPARE(lines.size(), DebugLog::kMaxLines + 1);
            QVERIFY(lines.first().endsWith("D 500") && lines.at(DebugLog::kMaxLines - 1).endsWith("D 20499"));

            pane.Clear();
            log.Add(QtWarningMsg, "other", "after");
            QCoreApplication::processEvents();
            QCOMPARE(pane.LineCount(), 1);
            log.Add(QtDebugMsg, QString(), "on its way when the pane goes");
        }
        log.Add(QtDebugMsg, QString(), "late");
        QCoreApplication::processEvents();
        QCOMPARE(log.Text().count('\n'), 3);
        QVERIFY(log.Text().contains("W other: after\n"));
    }

    void DebugLogTakesOtherThreads()
    {
        DebugLog& log = DebugLog::Instance();
        log.Clear();
        const int errors = log.ErrorCount();
        const QtMessageHandler previous = qInstallMessageHandler(nullptr);
        log.Install();
        DebugLogPane pane;
        {
            std::vector<std::future<void>> threads;
            threads.reserve(4);
            for (int t = 0; t < 4; ++t) {
                threads.push_back(std::async(std::launch::async, [] {
                    for (int i = 0; i < 4000; ++i) {
                        qDebug() << "from a thread" << i;
                    }
                }));
            }
            for (int i = 0; i < 100; ++i) {
                QCoreApplication::processEvents();
            }
        }
        qCritical() << "x";
        QCoreApplication::processEvents();
        qInstallMessageHandler(previous);
        QCOMPARE(log.Text().count("D from a thread"), 16000);
        QCOMPARE(pane.LineCount(), log.Text().count('\n'));
        QCOMPARE(log.ErrorCount(), errors + 1);
    }
};

QTEST_MAIN(HostAppTest)
#include "tst_app.moc"
