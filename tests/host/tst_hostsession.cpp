#include "HostSession.h"
#include "HostWindow.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <csignal>
#include <functional>
#include <vector>

/// The host in this process, with a plug-in and a receiver that only take notes.
class HostSessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void ProductAndLanguageBuildEverythingAgain();
    void TheReceiverComesAndGoesUnderAnOpenWindow();
    void AChangeFromInsideAWaitOfThePlugin();
    void AStopSignalEndsInOrder();

private:
    using Steps = std::vector<std::function<void(HostWindow&)>>;

    /// Runs a session, with one step after the other; each waits for the event count that the one before reached.
    int Run(const HostOptions& options, const Steps& steps);
    HostOptions Options() const;
    QStringList Events() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_before;
};

namespace {

HostWindow* Window()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<HostWindow*>(widget))
            return window;
    }
    return nullptr;
}

} // namespace

void HostSessionTest::init()
{
    m_before = QDir::currentPath();
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QFile::remove(QCoreApplication::applicationDirPath() + QStringLiteral("/host.ini"));
    QFile file(QStringLiteral("receiver.sh"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\necho \"$@\" > arguments.txt\n: > \"$2\"\necho ready \"$2\"\nexec sleep 60\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void HostSessionTest::cleanup()
{
    QDir::setCurrent(m_before);
}

HostOptions HostSessionTest::Options() const
{
    HostOptions options;
    options.plugin = QStringLiteral(FAKE_PLUGIN);
    options.receiver = m_folder->filePath(QStringLiteral("receiver.sh"));
    return options;
}

QStringList HostSessionTest::Events() const
{
    QFile file(m_folder->filePath(QStringLiteral("events.txt")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QString process = QStringLiteral("-%1").arg(QCoreApplication::applicationPid());
    return QString::fromUtf8(file.readAll()).remove(process).split('\n', Qt::SkipEmptyParts);
}

int HostSessionTest::Run(const HostOptions& options, const Steps& steps)
{
    HostSession session(options);
    QTimer timer;
    std::size_t next = 0;
    int quiet = 0;
    int seen = -1;
    connect(&timer, &QTimer::timeout, this, [&] {
        const int count = Events().size();
        quiet = count == seen ? quiet + 1 : 0;
        seen = count;
        if (quiet < 8 || !Window() || next >= steps.size())
            return;
        quiet = 0;
        steps[next++](*Window());
    });
    timer.start(25);
    return session.Run();
}

void HostSessionTest::ProductAndLanguageBuildEverythingAgain()
{
    HostOptions options = Options();
    options.language = LANGUAGE_CHINESE;
    const int status = Run(options, {[](HostWindow& window) { emit window.ProductChosen(31); },
                                     [](HostWindow& window) { emit window.ProductChosen(31); },
                                     [](HostWindow& window) { emit window.LanguageChosen(LANGUAGE_ENGLISH); },
                                     [](HostWindow& window) { window.close(); }});
    QCOMPARE(status, 0);
    const QStringList end{"given up", "window gone", "plug-in gone"};
    QCOMPARE(Events(), QStringList({"built language 2 product 0 ports gnss-virtual", "taken in",
                                    "port gnss-virtual embedded", "open"}) +
                           end +
                           QStringList({"built language 2 product 31 ports gnss-virtual-2", "taken in",
                                        "port gnss-virtual-2 embedded", "open"}) +
                           end +
                           QStringList({"built language 1 product 31 ports gnss-virtual-3", "taken in",
                                        "port gnss-virtual-3 embedded", "open"}) +
                           end);
    QVERIFY(QFile::exists(QCoreApplication::applicationDirPath() + QStringLiteral("/host.ini")));
    const HostSettings stored(QCoreApplication::applicationDirPath() + QStringLiteral("/host.ini"));
    QCOMPARE(stored.Product(), 31);
    QCOMPARE(stored.Language(QLocale(QLocale::Chinese)), int(LANGUAGE_ENGLISH));
    QVERIFY(!qEnvironmentVariableIsSet("GNSS_SERIAL_PORTS"));
}

void HostSessionTest::TheReceiverComesAndGoesUnderAnOpenWindow()
{
    QString arguments;
    const int status = Run(Options(), {[](HostWindow& window) { emit window.ReceiverSwitched(false); },
                                       [](HostWindow& window) { emit window.ReceiverSwitched(true); },
                                       [](HostWindow& window) { emit window.CaptureChosen("/some/file.log"); },
                                       [&](HostWindow& window) {
                                           QFile file("arguments.txt");
                                           file.open(QIODevice::ReadOnly);
                                           arguments = QString::fromUtf8(file.readAll());
                                           QVERIFY(window.windowTitle().startsWith("file.log"));
                                           emit window.SpeedChosen("5");
                                       },
                                       [](HostWindow& window) { window.close(); }});
    QCOMPARE(status, 0);
    QCOMPARE(Events().mid(3),
             QStringList({"open", "close", "port gnss-virtual-2 embedded", "open", "close",
                          "port gnss-virtual-3 embedded", "open", "close", "port gnss-virtual-4 embedded", "open",
                          "given up", "window gone", "plug-in gone"}));
    QVERIFY(arguments.contains(QStringLiteral("--capture /some/file.log")));
    QFile file(QStringLiteral("arguments.txt"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("--capture /some/file.log --speed 5"));
}

void HostSessionTest::AChangeFromInsideAWaitOfThePlugin()
{
    // The wish comes while code that counts as the plug-in's is on the stack and pumps: nothing may be unloaded
    // before that code has returned.
    bool stillThere = false;
    const int status = Run(Options(), {[&](HostWindow& window) {
                                           emit window.ProductChosen(27);
                                           for (int i = 0; i < 20; ++i)
                                               QCoreApplication::processEvents();
                                           stillThere = !Events().contains("given up");
                                       },
                                       [](HostWindow& window) { window.close(); }});
    QCOMPARE(status, 0);
    QVERIFY(stillThere);
    QVERIFY2(Events().join('\n').contains("product 27 ports gnss-virtual-2"), qPrintable(Events().join('\n')));
}

void HostSessionTest::AStopSignalEndsInOrder()
{
    const int status = Run(Options(), {[](HostWindow&) { std::raise(SIGTERM); }});
    QCOMPARE(status, 0);
    QCOMPARE(Events().mid(Events().size() - 3), QStringList({"given up", "window gone", "plug-in gone"}));
}

QTEST_MAIN(HostSessionTest)
#include "tst_hostsession.moc"
