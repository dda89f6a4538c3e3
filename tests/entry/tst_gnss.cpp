// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "LogCatcher.h"

#include "entry/Gnss.h"

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
    /// Each window tells its end by the name at that time, and may outlive the plug-in.
    void ASubclassGivesItsNameToTheWindowAndItsEnd()
    {
        auto gnss = std::make_unique<NamedGnss>();
        QStringList closed;
        connect(gnss.get(), &Gnss::ClosePluginSignal, this,
                [&closed](const QString& name) { closed.append(name); });
        const std::unique_ptr<QWidget> window(gnss->CreateWidget(nullptr, 1, 2));
        QCOMPARE(window->windowTitle(), QString("first"));
        std::unique_ptr<QWidget> second(gnss->CreateWidget(nullptr, 0, 0));
        gnss->name = "second";
        second.reset();
        QCOMPARE(closed, QStringList("second"));
        const LogCatcher log;
        gnss.reset();
        QCOMPARE(log.Lines(), QStringList("~Gnss"));
    }
};

QTEST_MAIN(TestGnss)
#include "tst_gnss.moc"
