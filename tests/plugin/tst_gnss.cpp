#include "BoxAnswerer.h"
#include "LogCatcher.h"

#include "plugin/Gnss.h"

#include <QSignalSpy>
#include <QWidget>
#include <QtTest>

#include <memory>

namespace {

/// A plug-in under another name.
class NamedGnss : public Gnss {
public:
    QString Name() override { return name; }

    QString name = "first";
};

} // namespace

class TestGnss : public QObject {
    Q_OBJECT

private:
    const BoxAnswerer m_answerer; ///< the seed decoder is missing here

private Q_SLOTS:
    void ASubclassGivesItsNameToTheWindowAndItsEnd()
    {
        NamedGnss gnss;
        QSignalSpy closed(&gnss, &Gnss::ClosePluginSignal);
        const std::unique_ptr<QWidget> window(gnss.CreateWidget(nullptr, 1, 2));
        QCOMPARE(window->windowTitle(), QString("first"));
        std::unique_ptr<QWidget> second(gnss.CreateWidget(nullptr, 0, 0));
        QVERIFY(closed.isEmpty());
        // The name is the one at the time of closing.
        gnss.name = "second";
        second.reset();
        QCOMPARE(closed.size(), 1);
        QCOMPARE(closed.at(0).at(0).toString(), QString("second"));
    }

    void TheWindowMayOutliveThePlugIn()
    {
        auto gnss = std::make_unique<Gnss>();
        const std::unique_ptr<QWidget> window(gnss->CreateWidget(nullptr, 0, 0));
        const LogCatcher log;
        gnss.reset();
        QCOMPARE(log.Lines(), QStringList{"~Gnss"});
    }
};

QTEST_MAIN(TestGnss)
#include "tst_gnss.moc"
