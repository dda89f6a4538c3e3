#include "CProductVersion.h"
#include "HostSupportConfig.h"
#include "ImageManager.h"
#include "LogCatcher.h"
#include "QCString.h"
#include "VerCommon.h"

#include <QDir>
#include <QIcon>
#include <QImage>
#include <QSet>
#include <QTest>

namespace {

const char* const kPictures[] = {
    "American",     "China",        "CmdcfgView",     "Cn0 View",       "CompassView",    "CustomerView",
    "Data",         "European",     "HexView",        "Japan",          "MessageView",    "NmeaView",
    "PackageView",  "PauseReplay",  "Positioning",    "ProductTestOff", "ProductTestOn",  "Russia",
    "SatPosView",   "SaveBtn",      "StartReplay",    "StopReplay",     "TestView",       "TileBtn",
    "allTypeCount", "bdsChecked",   "bdsUnchecked",   "gloChecked",     "gloUnchecked",   "gpsChecked",
    "gpsUnchecked", "galChecked",   "galUnchecked",   "qzsChecked",     "qzsUnchecked",   "bottom",
    "clock",        "delete",       "fetchNmea",      "filter",         "hisNotOpen",     "hisOpened",
    "north",        "offline_link", "offline_unlink", "online_link",    "online_unlink",  "resume",
    "senceReplay",  "startStatus",  "stopStatus",     "serialSettingC", "serialSettingO", "tools",
    "uart_link",    "uart_unlink",  "versionLoading", "versionUnload",  "workbench",
};

const char* const kPairs[][2] = {
    {"uart_link", "uart_unlink"},         {"online_link", "online_unlink"},
    {"offline_link", "offline_unlink"},   {"versionLoading", "versionUnload"},
    {"hisOpened", "hisNotOpen"},          {"ProductTestOn", "ProductTestOff"},
    {"serialSettingO", "serialSettingC"}, {"startStatus", "stopStatus"},
    {"StartReplay", "StopReplay"},        {"PauseReplay", "resume"},
    {"bdsChecked", "bdsUnchecked"},       {"gpsChecked", "gpsUnchecked"},
};

QString Path(const char* name)
{
    return QStringLiteral(":/images/images/gnss/%1.png").arg(QLatin1String(name));
}

/// As the tool bar shows it.
QImage Small(const QString& path)
{
    return QIcon(ImageManager::GetPixmapObject(path))
        .pixmap(18, 18)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

int PaintedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 100 ? 1 : 0;
    }
    return count;
}

int DifferentPixels(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < qMin(a.height(), b.height()); ++y) {
        for (int x = 0; x < qMin(a.width(), b.width()); ++x)
            count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    }
    return count;
}

} // namespace

class HostSupportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void EveryPictureShowsAtToolBarSize();
    void StatesOfAButtonDiffer();
    void PaintedPicturesHaveTheirNaturalSize();
    void AMissingPictureIsSeenAndLogged();
    void FoldersAndTranslationsDoNotMatter();
    void ConfigurationSetsLieBesideTheProgram();
    void ProductIsWhatTheHostSays();
};

void HostSupportTest::EveryPictureShowsAtToolBarSize()
{
    LogCatcher log;
    for (const char* name : kPictures) {
        const QImage image = Small(Path(name));
        QVERIFY2(!image.isNull(), name);
        QVERIFY2(PaintedPixels(image) >= 18, name);
    }
    for (const char* name : {"dock1", "dock3"})
        QVERIFY2(PaintedPixels(Small(QStringLiteral(":/images/images/%1.png").arg(QLatin1String(name)))) >= 18,
                 name);
    QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Lines().join('\n')));
}

void HostSupportTest::StatesOfAButtonDiffer()
{
    for (const auto& pair : kPairs)
        QVERIFY2(DifferentPixels(Small(Path(pair[0])), Small(Path(pair[1]))) > 40, pair[0]);
}

void HostSupportTest::PaintedPicturesHaveTheirNaturalSize()
{
    // Views paint these with drawPixmap(x, y, ...), the check images into hit boxes of 20 x 20.
    QCOMPARE(ImageManager::GetPixmapObject(Path("bdsChecked")).size(), QSize(20, 20));
    QCOMPARE(ImageManager::GetPixmapObject(Path("China")).size(), QSize(24, 16));
    QCOMPARE(ImageManager::GetPixmapObject(Path("north")).width(), 29);
    QVERIFY(ImageManager::GetPixmapObject(Path("clock")).width() >= 4 * 18);
}

void HostSupportTest::AMissingPictureIsSeenAndLogged()
{
    for (const QString& path : {Path("nosuch"), QString(), QStringLiteral("/"), QStringLiteral(".png")}) {
        LogCatcher log;
        QPixmap pixmap;
        ImageManager::LoadPixmap(pixmap, path);
        QVERIFY(!pixmap.isNull());
        QVERIFY(PaintedPixels(pixmap.toImage()) > 100);
        QVERIFY(log.Lines().join(QString()).contains(QStringLiteral("picture missing")));
    }
}

void HostSupportTest::FoldersAndTranslationsDoNotMatter()
{
    const QImage wanted = ImageManager::GetPixmapObject(Path("clock")).toImage();
    for (const char* path :
         {":/images/images/gnss_en/clock.png", "clock.png", ":\\images\\gnss\\clock.PNG", "clock"})
        QVERIFY2(ImageManager::GetPixmapObject(QLatin1String(path)).toImage() == wanted, path);
}

void HostSupportTest::ConfigurationSetsLieBesideTheProgram()
{
    QCOMPARE(VerCommon::GetCurrentVersion(), 1);
    const QString path = VerCommon::GetCfgPath(QString::number(VerCommon::GetCurrentVersion()));
    QCOMPARE(QDir::fromNativeSeparators(path),
             QCoreApplication::applicationDirPath() + QStringLiteral("/Source-Datas/config/1"));
    HostSupportConfig::SetConfigurationSet(7);
    QCOMPARE(VerCommon::GetCurrentVersion(), 7);
    HostSupportConfig::SetConfigurationSet(1);
}

void HostSupportTest::ProductIsWhatTheHostSays()
{
    QCOMPARE(CProductVersion::GetVersion(), 0);
    HostSupportConfig::SetProduct(31);
    QCOMPARE(CProductVersion::GetVersion(), 31);
    HostSupportConfig::SetProduct(0);
    const QCString empty(nullptr); // must not crash
    Q_UNUSED(empty)
}

QTEST_MAIN(HostSupportTest)
#include "tst_hostsupport.moc"
