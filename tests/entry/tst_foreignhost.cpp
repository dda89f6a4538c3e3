// SPDX-License-Identifier: MIT
// A host with nothing of the workbench in it: it declares the interface for itself and brings its own support
// classes, which the plug-in must call in place of those of the library it is linked with.

#include <QApplication>
#include <QDir>
#include <QPluginLoader>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

namespace {

int pixmapCalls = 0;
int versionCalls = 0;
int productCalls = 0;
int product = 5;
QStringList askedVersions;

} // namespace

#define FOREIGN_EXPORT __attribute__((visibility("default")))

// Not inline: the members must be symbols of this program.
class FOREIGN_EXPORT ImageManager {
public:
    static QPixmap GetPixmapObject(QString path);
    static void LoadPixmap(QPixmap& pixmap, QString path);
};

class FOREIGN_EXPORT VerCommon {
public:
    static int GetCurrentVersion();
    static QString GetCfgPath(QString versionNumber);
};

class FOREIGN_EXPORT CProductVersion {
public:
    static int GetVersion();
};

class FOREIGN_EXPORT QCString {
public:
    QCString(const wchar_t*);
    ~QCString(); // NOLINT(performance-trivially-destructible): known by this symbol
};

// NOLINTBEGIN(performance-unnecessary-value-param, performance-trivially-destructible): known by these symbols
QPixmap ImageManager::GetPixmapObject(QString)
{
    ++pixmapCalls;
    return QPixmap(8, 8);
}

void ImageManager::LoadPixmap(QPixmap& pixmap, QString path)
{
    pixmap = GetPixmapObject(path);
}

int VerCommon::GetCurrentVersion()
{
    ++versionCalls;
    return 42;
}

QString VerCommon::GetCfgPath(QString versionNumber)
{
    askedVersions.append(versionNumber);
    return QDir::currentPath();
}

int CProductVersion::GetVersion()
{
    ++productCalls;
    return product;
}

QCString::QCString(const wchar_t*) {}
QCString::~QCString() = default;
// NOLINTEND(performance-unnecessary-value-param, performance-trivially-destructible)

/// The operations in the order of the plug-in interface.
class Interface {
public:
    virtual ~Interface() = default;
    virtual QString Name() = 0;
    virtual QString Information() = 0;
    virtual QWidget* CenterWidget() = 0;
    virtual QWidget* CreateWidget(QWidget* parent, int, int) = 0;
};

/// The operations in the order in which the plug-in's class adds them to QObject's.
class ObjectSide : public QObject {
public:
    virtual QString Name() = 0;
    virtual QWidget* CenterWidget() = 0;
    virtual QString Information() = 0;
    virtual QWidget* CreateWidget(QWidget* parent, int, int) = 0;
};

class ForeignHostTest : public QObject {
    Q_OBJECT

private:
    template <class Side> void Press(Side* side)
    {
        QCOMPARE(side->Name(), QStringLiteral("Gnss"));
        QCOMPARE(side->Information(), QStringLiteral("GnssInfo"));
        const std::unique_ptr<QWidget> first(side->CenterWidget());
        const std::unique_ptr<QWidget> second(side->CenterWidget());
        QVERIFY(first != second && !first->parent());
        QCOMPARE(qobject_cast<QPushButton*>(first.get())->text(), QStringLiteral("Gnss"));

        pixmapCalls = versionCalls = productCalls = 0;
        askedVersions.clear();
        QSignalSpy closed(m_object, SIGNAL(ClosePluginSignal(QString)));
        // This parent declares no NotifyPluginConnectSignal and takes the window into its own layout.
        auto host = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(host.get());
        const QPointer<QWidget> window = side->CreateWidget(host.get(), 3, 4);
        QVERIFY(window);
        layout->addWidget(window);
        host->resize(900, 600);
        host->show();
        QVERIFY(QTest::qWaitForWindowExposed(host.get()));
        QCOMPARE(window->windowTitle(), QStringLiteral("Gnss"));
        QCOMPARE(window->parentWidget(), host.get());
        QVERIFY(!window->isWindow() && window->isVisible());
        QVERIFY(pixmapCalls > 10 && productCalls > 0);
        QCOMPARE(versionCalls, 1);
        QCOMPARE(askedVersions, QStringList("42"));

        QCOMPARE(closed.size(), 0);
        host.reset();
        QVERIFY(!window);
        QCOMPARE(closed, (QList<QVariantList>{{"Gnss"}}));
    }

    QPluginLoader m_loader{QStringLiteral(PLUGIN_FILE)};
    QObject* m_object = nullptr;
    QTimer m_boxTimer;

private Q_SLOTS:
    void initTestCase()
    {
        // The window tells in a box of the seed decoder that is missing beside this program.
        connect(&m_boxTimer, &QTimer::timeout, this, [] {
            if (QWidget* box = QApplication::activeModalWidget()) {
                box->close();
            }
        });
        m_boxTimer.start(5);
        m_object = m_loader.instance();
        QVERIFY2(m_object, qPrintable(m_loader.errorString()));
        QCOMPARE(m_loader.metaData().value("IID").toString(), QStringLiteral("com.Interface.MainInterface"));
        QCOMPARE(m_loader.metaData().value("className").toString(), QStringLiteral("Gnss"));
    }

    void BothSides()
    {
        auto* interface = static_cast<Interface*>(m_object->qt_metacast("com.Interface.MainInterface"));
        QVERIFY(interface);
        for (const int number : {5, 27, 31}) {
            product = number;
            Press(interface);
        }
        Press(reinterpret_cast<ObjectSide*>(m_object));
    }

    void Unload()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QPointer<QObject> object(m_object);
        QVERIFY2(m_loader.unload(), qPrintable(m_loader.errorString()));
        QVERIFY(!object);
    }
};

QTEST_MAIN(ForeignHostTest)
#include "tst_foreignhost.moc"
