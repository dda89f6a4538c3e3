// SPDX-License-Identifier: MIT
#include "Files.h"
#include "LogCatcher.h"
#include "host/support/ImageManager.h"

#include <QDirIterator>
#include <QIcon>
#include <QImage>
#include <QRegularExpression>

namespace {

QPixmap Picture(const QString& name)
{
    return ImageManager::GetPixmapObject(":/images/images/gnss/" + name + ".png");
}

/// As the tool bar shows it.
QImage Small(const QString& name)
{
    return QIcon(Picture(name)).pixmap(18, 18).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Pixels in which a picture differs from another one, or from nothing.
int DifferentPixels(const QImage& a, const QImage& b = QImage())
{
    int count = 0;
    for (int i = 0; i < a.width() * a.height(); ++i) {
        const QPoint at(i % a.width(), i / a.width());
        count += b.valid(at) ? a.pixel(at) != b.pixel(at) : qAlpha(a.pixel(at)) > 100;
    }
    return count;
}

} // namespace

class HostSupportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void EveryPictureIsThereAndUnlikeTheOthers()
    {
        const LogCatcher log;
        QStringList names;
        QDirIterator files(QStringLiteral(GNSS_SOURCE_DIR "/plugin"), {"*.cpp"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            auto found = QRegularExpression("[\"/]([\\w ]+)\\.png\"").globalMatch(Content(files.next()));
            while (found.hasNext()) {
                names.append(found.next().captured(1));
            }
        }
        QVERIFY(names.size() > 50);
        for (const QString& name : names) {
            QVERIFY2(!Picture(name).isNull(), qPrintable(name));
        }
        // And those whose names are put together.
        names = QDir(":/images/images/gnss").entryList().replaceInStrings(".svg", "");
        QVERIFY2(names.size() >= 61, qPrintable(names.join(' ')));
        for (int i = 0; i < names.size(); ++i) {
            QVERIFY2(DifferentPixels(Small(names[i])) >= 18, qPrintable(names[i]));
            for (int k = 0; k < i; ++k) {
                QVERIFY2(DifferentPixels(Small(names[i]), Small(names[k])) > 40, qPrintable(names[i] + names[k]));
            }
        }
        QVERIFY2(log.Lines().isEmpty(), qPrintable(log.Lines().join('\n')));
    }

    void PaintedPicturesHaveTheirNaturalSize()
    {
        // Views paint these with drawPixmap(x, y, ...), the check images into hit boxes of 20 x 20.
        QCOMPARE(Picture("bdsChecked").size(), QSize(20, 20));
        QCOMPARE(Picture("China").size(), QSize(24, 16));
        QCOMPARE(Picture("north").width(), 29);
        QVERIFY(Picture("clock").width() >= 4 * 18);
    }

    void AMissingPictureIsSeenAndLogged()
    {
        for (const char* path : {":/images/images/gnss/nosuch.png", "", "/", ".png"}) {
            const LogCatcher log;
            QPixmap pixmap;
            ImageManager::LoadPixmap(pixmap, path);
            QVERIFY(DifferentPixels(pixmap.toImage()) > 100);
            QVERIFY(log.Lines().join(QString()).contains("picture missing"));
        }
    }

    void FoldersAndTranslationsDoNotMatter()
    {
        const QImage wanted = Picture("clock").toImage();
        for (const char* path :
             {":/images/images/gnss_en/clock.png", "clock.png", ":\\images\\gnss\\clock.PNG", "clock"}) {
            QVERIFY2(ImageManager::GetPixmapObject(path).toImage() == wanted, path);
        }
    }
};

QTEST_MAIN(HostSupportTest)
#include "tst_support.moc"
