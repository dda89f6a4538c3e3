// SPDX-License-Identifier: MIT
#include "Files.h"

#include <QDirIterator>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <functional>

namespace {

const QString root = QStringLiteral(GNSS_SOURCE_DIR "/");

using Rooms = QMap<QString, QStringList>;

/// The rooms' folders and what each links. `separator` stands between the two.
Rooms ReadRooms(const QString& text, const QString& separator)
{
    Rooms rooms;
    for (const QString& line : text.split('\n', Qt::SkipEmptyParts)) {
        const QString room = line.section(separator, 0, 0).trimmed();
        rooms[room] = line.section(separator, 1).split(QRegularExpression("[ ,]+"), Qt::SkipEmptyParts);
        rooms[room].sort();
    }
    return rooms;
}

Rooms LinkedRooms()
{
    return ReadRooms(Content(QStringLiteral(GNSS_ROOMS)), ":");
}

QString RoomOf(const QString& file, const Rooms& rooms)
{
    QString found;
    for (const QString& room : rooms.keys()) {
        if (file.startsWith(room + '/') && room.size() > found.size()) {
            found = room;
        }
    }
    return found;
}

struct Include {
    QString from; ///< both relative to the checkout
    QString name; ///< as written
    QString to;   ///< the file that it names; empty when there is none
};

/// The includes in quotes of all rooms, but for those of generated files.
QList<Include> Includes(const Rooms& rooms)
{
    static const QRegularExpression pattern("^#include \"([^\"]+)\"", QRegularExpression::MultilineOption);
    QList<Include> includes;
    QSet<QString> seen;
    for (const QString& room : rooms.keys()) {
        QDirIterator files(root + room, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString from = files.next().mid(root.size());
            if (seen.contains(from)) {
                continue;
            }
            seen.insert(from);
            auto found = pattern.globalMatch(QString::fromUtf8(Content(root + from)));
            while (found.hasNext()) {
                const QString name = found.next().captured(1);
                if (name.startsWith("ui_") || name.endsWith(".moc")) {
                    continue;
                }
                QString to;
                for (const QString& place : {QFileInfo(from).path() + '/', QString(), QStringLiteral("plugin/")}) {
                    if (to.isEmpty() && QFileInfo::exists(root + place + name)) {
                        to = QDir::cleanPath(place + name);
                    }
                }
                includes.append({from, name, to});
            }
        }
    }
    return includes;
}

QByteArray Lines(const QStringList& lines)
{
    return '\n' + lines.join('\n').toUtf8();
}

} // namespace

class TestHouseRooms : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void WhatIsIncludedIsLinkedAndWhatIsLinkedIsIncluded()
    {
        const Rooms rooms = LinkedRooms();
        QVERIFY(rooms.size() > 18);
        QStringList faults;
        QMap<QString, QSet<QString>> used;
        const QList<Include> includes = Includes(rooms);
        QVERIFY(includes.size() > 500);
        for (const Include& include : includes) {
            const QString from = RoomOf(include.from, rooms);
            const QString to = RoomOf(include.to, rooms);
            if (include.to.isEmpty() || to.isEmpty()) {
                faults.append(include.from + " includes " + include.name + ", which is in no room");
            } else if (from != to && !rooms[from].contains(to)) {
                faults.append(include.from + " includes " + include.to + ", but " + from + " does not link " + to);
            }
            used[from].insert(to);
        }
        for (const QString& room : rooms.keys()) {
            for (const QString& link : rooms[room]) {
                if (!used[room].contains(link)) {
                    faults.append(room + " links " + link + " and includes nothing of it");
                }
            }
        }
        QVERIFY2(faults.isEmpty(), Lines(faults));
    }

    void NoRoomLeadsBackToItself()
    {
        const Rooms rooms = LinkedRooms();
        const std::function<QString(const QString&, const QStringList&)> circle =
            [&](const QString& room, const QStringList& way) -> QString {
            if (way.contains(room)) {
                return (way.mid(way.indexOf(room)) << room).join(" -> ");
            }
            for (const QString& link : rooms[room]) {
                const QString found = circle(link, way + QStringList(room));
                if (!found.isEmpty()) {
                    return found;
                }
            }
            return QString();
        };
        for (const QString& room : rooms.keys()) {
            QCOMPARE(circle(room, {}), QString());
        }
    }

    /// The arrows of the architecture's picture are CMake's.
    void ThePictureIsTheHouse()
    {
        const QString document = QString::fromUtf8(Content(root + "docs/architecture.md"));
        const QString picture = document.section("```rooms\n", 1).section("```", 0, 0);
        const Rooms painted = ReadRooms(picture, "->");
        const Rooms linked = LinkedRooms();
        QStringList faults;
        for (const QString& room : linked.keys()) {
            if (painted.value(room, {"nothing"}) != linked[room]) {
                faults.append("docs/architecture.md should have: " + room + " -> " + linked[room].join(", "));
            }
        }
        for (const QString& room : painted.keys()) {
            if (!linked.contains(room)) {
                faults.append("docs/architecture.md has a room that is none: " + room);
            }
        }
        QVERIFY2(faults.isEmpty(), Lines(faults));
    }

    /// What programs without Qt are made of is made without it.
    void QtStaysInThePlugInAndTheHost()
    {
        static const QRegularExpression qt("^#include <Q[A-Za-z]+>", QRegularExpression::MultilineOption);
        QStringList faults;
        int looked = 0;
        for (const QString& room : LinkedRooms().keys()) {
            if (room.startsWith("plugin/") || room.startsWith("host/")) {
                continue;
            }
            QDirIterator files(root + room, {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString file = files.next();
                if (qt.match(QString::fromUtf8(Content(file))).hasMatch()) {
                    faults.append(file.mid(root.size()));
                }
                ++looked;
            }
        }
        QVERIFY(looked > 100);
        QVERIFY2(faults.isEmpty(), Lines(faults));
    }

    /// A class is at most so long, header and source together. Tables may be longer.
    void NoClassIsTooLong()
    {
        constexpr int longest = 400;
        const QStringList tables = {};
        QStringList faults;
        for (const QString& room : LinkedRooms().keys()) {
            QDirIterator files(root + room, {"*.cpp"}, QDir::Files, QDirIterator::Subdirectories);
            while (files.hasNext()) {
                const QString source = files.next();
                const QString name = source.mid(root.size()).section('.', 0, 0);
                const int lines = Content(source).count('\n') + Content(root + name + ".h").count('\n');
                if (lines > longest && !tables.contains(name)) {
                    faults.append(QStringLiteral("%1 has %2 lines").arg(name).arg(lines));
                }
            }
        }
        faults.removeDuplicates();
        QVERIFY2(faults.isEmpty(), Lines(faults));
    }
};

QTEST_APPLESS_MAIN(TestHouseRooms)

#include "tst_rooms.moc"
