// SPDX-License-Identifier: MIT
#include "host/support/ImageManager.h"

#include <QDebug>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QSvgRenderer>

#include <utility>

namespace {

constexpr char kFolder[] = ":/images/images/gnss/";

/// Pictures of this natural size and above are icons: QIcon scales them down, so they are drawn once, large enough
/// for the tool bar's 18 pixels at four times the scale. Smaller ones are painted by the views as they are.
constexpr int kIconSize = 72;

using PixmapCache = QHash<QString, QPixmap>;

/// Made at the first picture and gone with the application, since a pixmap must not outlive it.
PixmapCache* cache = nullptr;

void DropCache()
{
    delete cache;
    cache = nullptr;
}

PixmapCache& Cache()
{
    if (!cache) {
        cache = new PixmapCache;
        qAddPostRoutine(DropCache);
    }
    return *cache;
}

/// The name alone: it is what counts when a translation has changed the folder.
QString BaseName(const QString& path)
{
    const int slash = qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    QString name = path.mid(slash + 1);
    if (name.endsWith(QLatin1String(".png"), Qt::CaseInsensitive)) {
        name.chop(4);
    }
    return name;
}

QPixmap Placeholder()
{
    QPixmap pixmap(kIconSize, kIconSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(214, 69, 69), 6.0, Qt::SolidLine, Qt::RoundCap));
    const QRectF box(9.0, 9.0, kIconSize - 18.0, kIconSize - 18.0);
    painter.drawRect(box);
    painter.drawLine(box.topLeft(), box.bottomRight());
    painter.drawLine(box.bottomLeft(), box.topRight());
    return pixmap;
}

QPixmap Render(QSvgRenderer& picture)
{
    const QSize natural = picture.defaultSize();
    const bool icon = natural.width() >= kIconSize;
    const qreal ratio = icon ? 1.0 : qGuiApp->devicePixelRatio();
    QPixmap pixmap((QSizeF(natural) * ratio).toSize());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    picture.render(&painter);
    painter.end();
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

} // namespace

// NOLINTNEXTLINE(performance-unnecessary-value-param): the host exports it with this parameter
QPixmap ImageManager::GetPixmapObject(QString path)
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
        qDebug().noquote() << "no picture without a graphical application:" << path;
        return {};
    }
    const QString name = BaseName(path);
    const auto known = Cache().constFind(name);
    if (known != Cache().constEnd()) {
        return *known;
    }

    const QString file = QLatin1String(kFolder) + name + QStringLiteral(".svg");
    QPixmap pixmap;
    if (!name.isEmpty() && QFile::exists(file)) {
        QSvgRenderer picture(file);
        if (picture.isValid()) {
            pixmap = Render(picture);
        }
    }
    if (pixmap.isNull()) {
        qDebug().noquote() << "picture missing:" << path;
        return Placeholder();
    }
    Cache().insert(name, pixmap);
    return pixmap;
}

void ImageManager::LoadPixmap(QPixmap& pixmap, QString path)
{
    pixmap = GetPixmapObject(std::move(path));
}
