#include "GnssLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QXmlStreamReader>
#include <QtTest>

namespace {

struct Point {
    double latitude = 0;
    double longitude = 0;
    double altitude = 0;
    QString time;
    QString mode;
};

bool operator==(const Point& a, const Point& b)
{
    return a.latitude == b.latitude && a.longitude == b.longitude && a.altitude == b.altitude &&
           a.time == b.time && a.mode == b.mode;
}

using Points = QList<Point>;

const QStringList formats = {"csv", "gpx", "kml", "geojson"};

Points ReadCsv(const QByteArray& text)
{
    Points points;
    QList<QByteArray> lines = text.split('\n');
    const QByteArray header = lines.takeFirst();
    for (const QByteArray& line : qAsConst(lines)) {
        const QList<QByteArray> fields = line.split(',');
        if (fields.size() == header.split(',').size()) {
            points.append(
                {fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble(), fields[0], fields[4]});
        }
    }
    return points;
}

/// Reads a track of either XML format; empty when the text is not well-formed.
Points ReadXml(const QByteArray& text, int* segments = nullptr)
{
    QXmlStreamReader reader(text);
    Points points;
    QStringList times;
    QList<QStringList> positions;
    QStringList modes;
    int count = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QString name = reader.name().toString();
        if (points.isEmpty() && (name == "time" || name == "type" || name == "ele")) {
            continue; // of the whole file
        }
        if (name == "trkpt") {
            points.append({reader.attributes().value("lat").toDouble(),
                           reader.attributes().value("lon").toDouble(), 0, QString(), QString()});
        } else if (name == "ele") {
            points.last().altitude = reader.readElementText().toDouble();
        } else if (name == "time") {
            points.last().time = reader.readElementText();
        } else if (name == "type") {
            points.last().mode = reader.readElementText();
        } else if (name == "when") {
            times.append(reader.readElementText());
        } else if (name == "coord") {
            positions.append(reader.readElementText().split(' '));
        } else if (name == "value") {
            modes.append(reader.readElementText());
        } else if (name == "trkseg" || name == "Placemark") {
            ++count;
        }
    }
    if (segments != nullptr) {
        *segments = count;
    }
    if (reader.hasError() || times.size() != positions.size() || modes.size() != times.size()) {
        return {};
    }
    for (int i = 0; i < times.size(); ++i) {
        points.append({positions[i][1].toDouble(), positions[i][0].toDouble(), positions[i][2].toDouble(),
                       times[i], modes[i]});
    }
    return points;
}

Points ReadGeoJson(const QByteArray& text)
{
    Points points;
    const QJsonArray features = QJsonDocument::fromJson(text).object()["features"].toArray();
    for (const auto& feature : features) {
        const QJsonArray place = feature.toObject()["geometry"].toObject()["coordinates"].toArray();
        const QJsonObject properties = feature.toObject()["properties"].toObject();
        points.append({place[1].toDouble(), place[0].toDouble(), place.size() > 2 ? place[2].toDouble() : 0.0,
                       properties["time"].toString(), properties["fixmode"].toString()});
    }
    return points;
}

Points Read(const QString& format, const QByteArray& text)
{
    return format == "csv" ? ReadCsv(text) : format == "geojson" ? ReadGeoJson(text) : ReadXml(text);
}

bool IsWellFormed(const QString& format, const QByteArray& text)
{
    if (format == "csv") {
        return text.startsWith("time,latitude,") && text.endsWith('\n');
    }
    if (format == "geojson") {
        return QJsonDocument::fromJson(text).object()["features"].isArray();
    }
    QXmlStreamReader reader(text);
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return !reader.hasError();
}

QJsonObject Info(const QByteArray& bytes)
{
    return QJsonDocument::fromJson(GnssLog({"info", "--json"}, bytes).output).object();
}

/// Runs another program; empty when it is not there or fails.
QByteArray Other(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
               ? process.readAllStandardOutput()
               : QByteArray();
}

QStringList Captures()
{
    const QDir folder(QStringLiteral(GNSS_CAPTURES));
    QStringList paths;
    const QStringList names = folder.entryList({"*.log"});
    for (const QString& name : names) {
        paths.append(folder.filePath(name));
    }
    return paths;
}

} // namespace

class TestGnssLog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        const QStringList names = QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        for (const QString& name : names) {
            QFileInfo(name).isDir() ? QDir(name).removeRecursively() : QFile::remove(name);
        }
    }

    void WrongUsageIsTold_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("message");
        QTest::newRow("nothing") << QStringList() << "no command given";
        QTest::newRow("command") << QStringList{"dance"} << "unknown command dance";
        QTest::newRow("option") << QStringList{"nmea", "--colour"} << "unknown option --colour";
        QTest::newRow("no output") << QStringList{"nmea", "a", "-o"} << "-o needs a file";
        QTest::newRow("empty output") << QStringList{"nmea", "--output="} << "-o needs a file";
        QTest::newRow("two outputs") << QStringList{"nmea", "-oa", "-ob"} << "more than one output given";
        QTest::newRow("two files") << QStringList{"nmea", "a", "b"} << "more than one file given";
        QTest::newRow("json") << QStringList{"csv", "--json", "a"} << "--json belongs to info";
        QTest::newRow("help") << QStringList{"help", "dance"} << "unknown command dance";
    }

    void WrongUsageIsTold()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, message);
        const GnssLog run(arguments);
        QCOMPARE(run.code, 2);
        QCOMPARE(run.errors, "gnss-log: " + message + " (--help tells more)\n");
        QVERIFY(run.output.isEmpty());
    }

    /// The help is what the man page and the completions are measured by.
    void HelpManPageAndCompletionsAgree()
    {
        QCOMPARE(GnssLog({"--version"}).output.left(9), QByteArray("gnss-log "));
        const QString general = GnssLog({"--help"}).output;
        QStringList words;
        QRegularExpressionMatchIterator commands =
            QRegularExpression("^  (\\w+) +\\w", QRegularExpression::MultilineOption).globalMatch(general);
        while (commands.hasNext()) {
            const QString command = commands.next().captured(1);
            words.append(command);
            const GnssLog help({command, "--help"});
            QCOMPARE(help.code, 0);
            QCOMPARE(GnssLog({"help", command}).output, help.output);
            QRegularExpressionMatchIterator options =
                QRegularExpression("^ +(?:-., )?(--[\\w-]+)", QRegularExpression::MultilineOption)
                    .globalMatch(help.output);
            while (options.hasNext()) {
                words.append(options.next().captured(1));
            }
        }
        words.removeDuplicates();
        QCOMPARE(words.size(), 10);
        for (const char* path : {"docs/gnss-log.1", "packaging/completion/gnss-log.bash",
                                 "packaging/completion/_gnss-log", "packaging/completion/gnss-log.fish"}) {
            QString text = FileContent(QStringLiteral(GNSS_SOURCE_DIR "/") + path);
            text.remove('\\');
            for (QString word : qAsConst(words)) {
                if (QString(path).endsWith("fish") && word.startsWith("--")) {
                    word = "-l " + word.mid(2);
                }
                QVERIFY2(text.contains(word), qPrintable(path + (": " + word)));
            }
        }
    }

    void BashCompletes()
    {
        if (QStandardPaths::findExecutable("bash").isEmpty()) {
            QSKIP("no bash here");
        }
        WriteFile("capture one.bin", "");
        const auto complete = [](const QString& words) {
            return QString::fromUtf8(
                Other("bash", {"-c", "source '" GNSS_SOURCE_DIR
                                     "/packaging/completion/gnss-log.bash'; COMP_WORDS=(gnss-log " +
                                         words +
                                         "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _gnss_log; "
                                         "printf '%s|' \"${COMPREPLY[@]}\""}));
        };
        QCOMPARE(complete("g"), QStringLiteral("gpx|geojson|"));
        QCOMPARE(complete("info --j"), QStringLiteral("--json|"));
        QCOMPARE(complete("csv --j"), QStringLiteral("|"));
        QCOMPARE(complete("csv cap"), QStringLiteral("capture one.bin|"));
        QCOMPARE(complete("csv -o cap"), QStringLiteral("capture one.bin|"));
    }

    void AnInputThatCannotBeReadIsTold()
    {
        for (const QString& command : QStringList{"info", "nmea"} + formats) {
            GnssLog run({command, "gone.bin", "-o", "out"});
            QCOMPARE(run.code, 3);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: gone.bin: No such file or directory\n"));
            QVERIFY(!QFile::exists("out"));
            run = GnssLog({command, "."});
            QCOMPARE(run.code, 3);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: .: Is a directory\n"));
        }
    }

    void AnOutputThatCannotBeWrittenIsTold()
    {
        WriteFile("a.bin", Epoch(1000) + Epoch(2000));
        QVERIFY(QDir().mkdir("folder"));
        for (const QString& command : QStringList{"info", "nmea"} + formats) {
            GnssLog run({command, "a.bin", "-o", "folder"});
            QCOMPARE(run.code, 4);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: folder: Is a directory\n"));
            run = GnssLog({command, "a.bin", "--output=/dev/full"});
            QCOMPARE(run.code, 4);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: /dev/full: No space left on device\n"));
        }
    }

    void InputAndOutputMayNotBeTheSame()
    {
        const QByteArray bytes = Epoch(1000) + "noise";
        WriteFile("a.bin", bytes);
        QVERIFY(QFile::link("a.bin", "b.bin"));
        for (const char* output : {"a.bin", "b.bin", "./a.bin"}) {
            const GnssLog run({"nmea", "a.bin", "-o", output});
            QCOMPARE(run.code, 2);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: a.bin: input and output are the same file\n"));
        }
        // Appending to what is read would never end.
        QProcess process;
        process.setStandardOutputFile("a.bin", QIODevice::Append);
        process.start(QStringLiteral(GNSS_BUILD_BIN "/gnss-log"), {"nmea", "a.bin"});
        QVERIFY(process.waitForFinished(10000));
        QCOMPARE(process.exitCode(), 2);
        QCOMPARE(FileContent("a.bin"), bytes);
    }

    void NothingFoundIsAStatusOfItsOwn_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray noise;
        for (int i = 0; i < 300000; ++i) {
            noise += static_cast<char>((i * 2654435761U) >> 13);
        }
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("noise") << noise;
        QTest::newRow("one endless sentence") << "$GPGGA," + QByteArray(1000000, '1') + "*00\r\n";
    }

    void NothingFoundIsAStatusOfItsOwn()
    {
        QFETCH(QByteArray, bytes);
        GnssLog run({"nmea"}, bytes);
        QCOMPARE(run.code, 1);
        QCOMPARE(run.errors, QStringLiteral("gnss-log: standard input: no sentence found\n"));
        QVERIFY(run.output.isEmpty());
        run = GnssLog({"info", "--json"}, bytes);
        QCOMPARE(run.code, 1);
        const QJsonObject info = QJsonDocument::fromJson(run.output).object();
        QCOMPARE(info["bytes"].toInt(), bytes.size());
        QVERIFY(info["first_fix"].isNull() && info["rate_hz"].isNull() && info["first_epoch"].isNull());
        for (const QString& format : formats) {
            run = GnssLog({format}, bytes);
            QCOMPARE(run.code, 1);
            QCOMPARE(run.errors, QStringLiteral("gnss-log: standard input: no fix found\n"));
            QVERIFY2(IsWellFormed(format, run.output), qPrintable(format));
        }
    }

    void SentencesComeOutUnchanged()
    {
        const QByteArray good = "$GPGGA,\x80\xff,1*zz\r\n" + Epoch(1000) + Sentence("PXYZ,1");
        const QByteArray bytes = "\x7e\x04$cut" + good.left(30) + QByteArray("\0", 1) + good +
                                 "$GPRMC,no star\r\n$" + QByteArray(2000000, 'x') + "*00\r\n" +
                                 Sentence("GPTXT,end") + "$GPGGA,not at its e";
        const QByteArray expected = good.left(good.indexOf('\n') + 1) + good + Sentence("GPTXT,end");
        const GnssLog run({"nmea", "-"}, bytes);
        QCOMPARE(run.code, 0);
        QVERIFY(run.output == expected);
        QVERIFY(run.errors.isEmpty());
        WriteFile("-a.bin", bytes);
        WriteFile("out.nmea", "what was there before, and is longer than what comes" + bytes);
        QCOMPARE(GnssLog({"nmea", "-o", "out.nmea", "--no-progress", "--", "-a.bin"}).code, 0);
        QVERIFY(FileContent("out.nmea") == expected);
    }

    void TheSummaryCountsAndMeasures()
    {
        QByteArray bytes = "noise";
        int ms = 36000000;
        for (int i = 0; i < 10; ++i, ms += 200) {
            bytes += Epoch(ms, 0);
        }
        for (int i = 0; i < 20; ++i, ms += 200) {
            bytes += Epoch(ms, 1);
        }
        ms += 5000;
        for (int i = 0; i < 5; ++i, ms += 200) {
            bytes += Epoch(ms, 4);
        }
        bytes += Epoch(ms, 0) + "$GPGGA,1*00\r\n";
        bytes += Sentence("GPGSV,1,1,02,05,40,083,46,07,17,308,40");
        bytes += Epoch(ms + 200, 0);

        const QJsonObject info = Info(bytes);
        QCOMPARE(info["sentences"].toInt(), 75);
        QCOMPARE(info["checksum_errors"].toInt(), 1);
        QCOMPARE(info["other_bytes"].toInt(), 5);
        QCOMPARE(info["first_epoch"].toString(), QStringLiteral("2026-03-14T10:00:00.000Z"));
        QCOMPARE(info["span_seconds"].toDouble(), 36 * 0.2 + 5);
        QCOMPARE(info["rate_hz"].toDouble(), 5.0);
        QCOMPARE(info["epochs"].toInt(), 37);
        QCOMPARE(info["fixes"].toInt(), 25);
        QCOMPARE(info["fixes_by_mode"].toObject(), (QJsonObject{{"autonomous", 20}, {"rtk-fixed", 5}}));
        QCOMPARE(info["fix_losses"].toInt(), 1);
        QCOMPARE(info["first_fix"].toObject()["seconds_after_first_epoch"].toDouble(), 2.0);
        QCOMPARE(info["first_fix"].toObject()["altitude"].toDouble(), 408.5);
        QCOMPARE(info["gaps"].toObject()["count"].toInt(), 1);
        QCOMPARE(info["gaps"].toObject()["longest"].toArray()[0].toObject(),
                 (QJsonObject{{"from", "2026-03-14T10:00:05.800Z"}, {"seconds", 5.2}}));
        QCOMPARE(
            info["constellations"].toObject(),
            (QJsonObject{
                {"GPS", QJsonObject{{"satellites", 2}, {"used", 0}, {"cn0_mean", 43}, {"cn0_highest", 46}}}}));
        QCOMPARE(info["sentences_by_type"].toObject(), (QJsonObject{{"GNGGA", 37}, {"GNRMC", 37}, {"GPGSV", 1}}));

        const QString text = GnssLog({"info"}, bytes).output;
        for (const char* line :
             {"rate          5 Hz\n", "fixes         25 in 37 epochs: 20 autonomous, 5 rtk-fixed\n",
              "GPS           2           0           43.0        46\n", "GNGGA         37\n",
              "              5.200 s from 2026-03-14T10:00:05.800Z\n"}) {
            QVERIFY2(text.contains(line), line);
        }
    }

    void TracksAreCutWhereTheFixIsLost()
    {
        QByteArray bytes;
        for (int i = 0; i < 2500; ++i) {
            bytes += Epoch(i * 1000);
        }
        bytes += Epoch(2500000, 0) + Epoch(2501000) + Epoch(2502000, 2) + Epoch(2570000);
        const Points expected = ReadCsv(GnssLog({"csv"}, bytes).output);
        QCOMPARE(expected.size(), 2503);
        QCOMPARE(expected[0].time, QStringLiteral("2026-03-14T00:00:00.000Z"));
        QCOMPARE(expected[2501].mode, QStringLiteral("differential"));
        QCOMPARE(expected[1].altitude, 408.5);
        for (const QString& format : formats) {
            const GnssLog run({format}, bytes);
            QCOMPARE(run.code, 0);
            QVERIFY2(Read(format, run.output) == expected, qPrintable(format));
            if (format == "gpx" || format == "kml") {
                int segments = 0;
                ReadXml(run.output, &segments);
                QCOMPARE(segments, 3);
            }
        }
    }

    void CapturesGiveTheirFixes()
    {
        QFile table(QStringLiteral(GNSS_CAPTURES "/expected.tsv"));
        if (!table.open(QIODevice::ReadOnly)) {
            QSKIP("no captures here");
        }
        table.readLine();
        while (!table.atEnd()) {
            const QList<QByteArray> row = table.readLine().trimmed().split('\t');
            const QByteArray bytes = FileContent(QStringLiteral(GNSS_CAPTURES "/") + row[0] + ".log");
            const QJsonObject info = Info(bytes);
            QCOMPARE(info["bytes"].toInt(), row[1].toInt());
            QCOMPARE(info["checksum_errors"].toInt(), row[3].toInt());
            const GnssLog csv({"csv"}, bytes);
            const Points points = ReadCsv(csv.output);
            QCOMPARE(csv.code, points.isEmpty() ? 1 : 0);
            QCOMPARE(points.size(), info["fixes"].toInt());
            QVERIFY(points.size() >= row[4].toInt());
            for (int i = 5; i < 13 && row[4].toInt() > 0; i += 4) {
                const auto found = std::find_if(points.begin(), points.end(), [&](const Point& point) {
                    return point.time == row[i] || point.time.endsWith('T' + row[i]);
                });
                QVERIFY2(found != points.end(), row[0] + ' ' + row[i]);
                QVERIFY(std::abs(found->latitude - row[i + 1].toDouble()) < 1e-7);
                QVERIFY(std::abs(found->longitude - row[i + 2].toDouble()) < 1e-7);
                QVERIFY(row[i + 3] == "-" || std::abs(found->altitude - row[i + 3].toDouble()) < 0.006);
            }
            for (const QString& format : formats) {
                Points others = Read(format, GnssLog({format}, bytes).output);
                QCOMPARE(others.size(), points.size());
                for (int i = 0; i < points.size(); ++i) {
                    // A time of day alone has no place in the XML formats.
                    if (points[i].time.startsWith('T') && others[i].time.isEmpty()) {
                        others[i].time = points[i].time;
                    }
                    QVERIFY2(others[i] == points[i], qPrintable(row[0] + ' ' + format));
                }
            }
        }
    }

    void OtherProgramsReadTheTracks_data()
    {
        QTest::addColumn<QString>("path");
        const QStringList captures = Captures();
        if (captures.isEmpty()) {
            QSKIP("no captures here");
        }
        for (const QString& capture : captures) {
            QTest::newRow(qPrintable(QFileInfo(capture).baseName())) << capture;
        }
    }

    void OtherProgramsReadTheTracks()
    {
        if (QStandardPaths::findExecutable("gpsbabel").isEmpty() ||
            QStandardPaths::findExecutable("ogrinfo").isEmpty()) {
            QSKIP("gpsbabel or gdal-bin is not installed");
        }
        QFETCH(QString, path);
        Points expected;
        for (const QString& format : formats) {
            GnssLog({format, path, "-o", "track." + format});
        }
        expected = ReadCsv(FileContent("track.csv"));
        for (const auto& [format, type] :
             {std::pair("gpx", "gpx"), std::pair("kml", "kml"), std::pair("csv", "unicsv")}) {
            const QString track = QStringLiteral("track.") + format;
            const QByteArray gpx = Other("gpsbabel", {"-t", "-i", type, "-f", track, "-o", "gpx", "-F", "-"});
            QVERIFY2(!gpx.isEmpty(), format);
            const Points points = ReadXml(gpx);
            QCOMPARE(points.size(), expected.size());
            for (int i = 0; i < points.size(); ++i) {
                QVERIFY(std::abs(points[i].latitude - expected[i].latitude) < 1e-8);
                QVERIFY(std::abs(points[i].longitude - expected[i].longitude) < 1e-8);
                QVERIFY(std::abs(points[i].altitude - expected[i].altitude) < 1e-3);
                QVERIFY(expected[i].time.startsWith('T') ||
                        QDateTime::fromString(points[i].time, Qt::ISODateWithMs) ==
                            QDateTime::fromString(expected[i].time, Qt::ISODateWithMs));
            }
        }
        QVERIFY(!Other("gpsbabel", {"-i", "geojson", "-f", "track.geojson", "-o", "gpx", "-F", "-"}).isEmpty());

        for (const QStringList& arguments : {QStringList{"-ro", "-al", "track.geojson"},
                                             QStringList{"-ro", "-al", "track.gpx", "track_points"}}) {
            const QString text = Other("ogrinfo", arguments);
            QRegularExpressionMatchIterator places =
                QRegularExpression("  POINT Z? ?\\(([-0-9.]+) ([-0-9.]+)").globalMatch(text);
            int i = 0;
            for (; places.hasNext() && i < expected.size(); ++i) {
                const QRegularExpressionMatch place = places.next();
                QVERIFY(std::abs(place.captured(1).toDouble() - expected[i].longitude) < 1e-8);
                QVERIFY(std::abs(place.captured(2).toDouble() - expected[i].latitude) < 1e-8);
            }
            QCOMPARE(i, expected.size());
        }
        const QString kml = Other("ogrinfo", {"-ro", "-al", "track.kml"});
        QVERIFY(expected.isEmpty() || kml.contains("LINESTRING"));
    }
};

QTEST_GUILESS_MAIN(TestGnssLog)
#include "tst_gnsslog.moc"
