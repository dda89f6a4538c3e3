// SPDX-License-Identifier: MIT
#include "Files.h"
#include "host/app/HostSession.h"
#include "host/app/HostWindow.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <csignal>
#include <functional>
#include <vector>

/// The host in this process, with a plug-in and a receiver that only take notes.
class HostSessionTest : public QObject {
    Q_OBJECT

private:
    static QStringList Events()
    {
        const QString process = QStringLiteral("-%1").arg(QCoreApplication::applicationPid());
        return QString(Content("events.txt")).remove(process).split('\n', Qt::SkipEmptyParts);
    }

    /// Runs a session, with one step after the other; each waits until what the one before did has come to rest.
    static void Run(const std::vector<std::function<void(HostWindow&)>>& steps)
    {
        HostOptions options;
        options.language = LANGUAGE_CHINESE;
        options.plugin = QStringLiteral(FAKE_PLUGIN);
        options.receiver = QDir::current().filePath("receiver.sh");
        HostSession session(options);
        QTimer timer;
        std::size_t next = 0;
        int quiet = 0;
        int seen = -1;
        connect(&timer, &QTimer::timeout, [&] {
            const int count = Events().size();
            quiet = count == seen ? quiet + 1 : 0;
            seen = count;
            for (QWidget* widget : QApplication::topLevelWidgets()) {
                auto* window = qobject_cast<HostWindow*>(widget);
                if (quiet >= 8 && window && next < steps.size()) {
                    quiet = 0;
                    return steps[next++](*window);
                }
            }
        });
        timer.start(25);
        QCOMPARE(session.Run(), 0);
        QCOMPARE(Events().mid(Events().size() - 3), kEnd);
    }

    static const inline QStringList kEnd{"given up", "window gone", "plug-in gone"};
    std::unique_ptr<QTemporaryDir> m_folder;

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
        QFile::remove(QCoreApplication::applicationDirPath() + "/host.ini");
        WriteScript("receiver.sh", "echo \"$@\" > arguments.txt\n: > \"$2\"\necho ready \"$2\"\nexec sleep 60");
    }
    void cleanup() { QDir::setCurrent(QDir::tempPath()); }

    void ProductAndLanguageBuildEverythingAgain()
    {
        Run({[](HostWindow& window) { emit window.ProductChosen(31); },
             [](HostWindow& window) { emit window.ProductChosen(31); },
             [](HostWindow& window) { emit window.LanguageChosen(LANGUAGE_ENGLISH); },
             [](HostWindow& window) { window.close(); }});
        const auto built = [](const QString& settings, const QString& port) {
            return QStringList{"built " + settings + " ports " + port, "taken in", "port " + port + " embedded",
                               "open"} +
                   kEnd;
        };
        QCOMPARE(Events(), built("language 2 product 0", "gnss-virtual") +
                               built("language 2 product 31", "gnss-virtual-2") +
                               built("language 1 product 31", "gnss-virtual-3"));
        const HostSettings stored(QCoreApplication::applicationDirPath() + "/host.ini");
        QCOMPARE(stored.Product(), 31);
        QCOMPARE(stored.Language(QLocale(QLocale::Chinese)), int(LANGUAGE_ENGLISH));
        QVERIFY(!qEnvironmentVariableIsSet("GNSS_SERIAL_PORTS"));
    }

    void TheReceiverComesAndGoesUnderAnOpenWindow()
    {
        QByteArray arguments;
        Run({[](HostWindow& window) { emit window.ReceiverSwitched(false); },
             [](HostWindow& window) { emit window.ReceiverSwitched(true); },
             [](HostWindow& window) { emit window.CaptureChosen("/some/file.log"); },
             [&](HostWindow& window) {
                 arguments = Content("arguments.txt");
                 QVERIFY(window.windowTitle().startsWith("file.log"));
                 emit window.SpeedChosen("5");
             },
             [](HostWindow& window) { window.close(); }});
        QCOMPARE(
            Events().mid(3).join(", "),
            QStringLiteral("open, close, port gnss-virtual-2 embedded, open, close, port gnss-virtual-3 embedded, "
                           "open, close, port gnss-virtual-4 embedded, open, ") +
                kEnd.join(", "));
        QVERIFY(arguments.contains("--capture /some/file.log"));
        QVERIFY(Content("arguments.txt").contains("--capture /some/file.log --speed 5"));
    }

    void AChangeFromInsideAWaitOfThePlugin()
    {
        // The wish comes while code that counts as the plug-in's is on the stack and pumps: nothing may be
        // unloaded before that code has returned.
        bool stillThere = false;
        Run({[&](HostWindow& window) {
                 emit window.ProductChosen(27);
                 for (int i = 0; i < 20; ++i) {
                     QCoreApplication::processEvents();
                 }
                 stillThere = !Events().contains("given up");
             },
             [](HostWindow& window) { window.close(); }});
        QVERIFY(stillThere);
        QVERIFY(Events().join(' ').contains("product 27 ports gnss-virtual-2"));
    }

    void AStopSignalEndsInOrder()
    {
        Run({[](HostWindow&) { std::raise(SIGTERM); }});
    }
};

QTEST_MAIN(HostSessionTest)
#include "tst_session.moc"
