// SPDX-License-Identifier: MIT
#include "GnssLog.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

namespace {

const QStringList formats = {"csv", "gpx", "kml", "geojson"};
const QStringList allCommands = QStringList{"info", "nmea"} + formats;

/// The points of a track; -1 when it is not well-formed.
int Points(const QString& format, const QByteArray& text)
{
    if (format == "csv") {
        return text.startsWith("time,latitude,") && text.endsWith('\n') ? text.count('\n') - 1 : -1;
    }
    if (format == "geojson") {
        const QJsonValue features = QJsonDocument::fromJson(text).object()["features"];
        return features.isArray() ? features.toArray().size() : -1;
    }
    QXmlStreamReader reader(text);
    int points = 0;
    while (!reader.atEnd()) {
        points += reader.readNext() == QXmlStreamReader::StartElement &&
                  (reader.name() == "trkpt" || reader.name() == "coord");
    }
    return reader.hasError() ? -1 : points;
}

QJsonObject Info(const QByteArray& bytes)
{
    return QJsonDocument::fromJson(GnssLog({"info", "--json"}, bytes).output).object();
}

} // namespace

class TestGnssLog : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }

    void WrongUsageIsTold()
    {
        const QPair<QStringList, QString> rows[] = {
            {{}, "no command given"},
            {{"dance"}, "unknown command dance"},
            {{"nmea", "--colour"}, "unknown option --colour"},
            {{"nmea", "a", "-o"}, "-o needs a file"},
            {{"nmea", "--output="}, "-o needs a file"},
            {{"nmea", "-oa", "-ob"}, "more than one output given"},
            {{"nmea", "a", "b"}, "more than one file given"},
            {{"csv", "--json", "a"}, "--json belongs to info"},
            {{"help", "dance"}, "unknown command dance"},
            {{"help", "--json"}, "unknown command --json"},
            {{"nmea", "a", "--output"}, "--output needs a file"},
            {{"nmea", "a", "b", "--colour"}, "more than one file given"},
            {{"info", "--", "--json", "a"}, "more than one file given"},
            {{"--colour", "--help"}, "unknown option --colour"},
            {{"info", "--json=true"}, "unknown option --json=true"},
            {{"-hx"}, "unknown option -hx"},
        };
        for (const auto& [arguments, message] : rows) {
            const auto run = GnssLog(arguments);
            QCOMPARE(run.errors, "gnss-log: " + message + " (--help tells more)\n");
            QVERIFY(run.code == 2 && run.output.isEmpty());
        }
    }

    /// Words behind a command may begin with a dash, and numbers with zeros.
    void CommandsTakeTheirWords()
    {
        const QString wrong = "wrong usage";
        const std::tuple<QString, QStringList, int, QString> rows[] = {
            {"pgnss-seed", {"write", "--new", "010", "2026-01-02T00:00:00"}, 0, ""},
            {"pgnss-seed", {"show", "--new"}, 0, "valid 2026-01-02T00:00:00Z to 2026-01-12T00:00:00Z\n"},
            {"pgnss-seed", {"show", "--help"}, 2, ""},
            {"pgnss-seed", {"--help"}, 0, "pgnss-seed: "},
            {"pgnss-seed", {"write", "a", "0x10"}, 64, wrong},
            {"pgnss-seed", {"show", "--new", "show"}, 64, wrong},
            {"pgnss-seed", {"--help", "show"}, 64, wrong},
            {"pgnss-seed", {"-h"}, 64, wrong},
            {"firmware-image", {"make", "-a", "-b"}, 1, ""},
            {"firmware-image", {"--help"}, 0, "firmware-image: "},
            {"firmware-image", {"make", "a"}, 2, wrong},
            {"firmware-image", {}, 2, wrong},
        };
        for (const auto& [program, arguments, code, output] : rows) {
            const ProgramRun run(GNSS_BUILD_BIN "/" + program, arguments);
            QVERIFY2(run.code == code, qPrintable(program + ' ' + arguments.join(' ')));
            QVERIFY(output == wrong ? run.errors.contains("\n\nusage: ") && run.output.isEmpty()
                                    : QString(run.output).startsWith(output));
        }
    }

    /// The help is what the man page and the completions are measured by.
    void HelpManPageAndCompletionsAgree()
    {
        QCOMPARE(GnssLog({"--version"}).output.left(9), QByteArray("gnss-log "));
        QStringList words;
        const auto collect = [&words](const char* pattern, const QString& text) {
            const int before = words.size();
            auto found = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
            while (found.hasNext()) {
                words.append(found.next().captured(1));
            }
            return words.mid(before);
        };
        for (const QString& command : collect("^  (\\w+) +\\w", GnssLog({"--help"}).output)) {
            const QString help = GnssLog({command, "--help"}).output;
            QCOMPARE(QString(GnssLog({"help", command}).output), help);
            collect("^ +(?:-., )?(--[\\w-]+)", help);
        }
        QCOMPARE(words.removeDuplicates() > 0 ? words.size() : 0, 10);
        for (const QString path : {"docs/gnss-log.1", "packaging/completion/gnss-log.bash",
                                   "packaging/completion/_gnss-log", "packaging/completion/gnss-log.fish"}) {
            const QString text = Content(GNSS_SOURCE_DIR "/" + path).replace("\\", "");
            for (QString word : qAsConst(words)) {
                word.replace("--", path.endsWith("fish") ? "-l " : "--");
                QVERIFY2(text.contains(word), qPrintable(path + ": " + word));
            }
        }
    }

    void FilesThatCannotBeReadOrWrittenAreTold()
    {
        WriteFile("a.bin", Epoch(1000) + Epoch(2000));
        QVERIFY(QDir().mkdir("folder"));
        for (const QString& command : allCommands) {
            const auto fails = [&](const QStringList& arguments, int code, const QString& message) {
                const auto run = GnssLog(QStringList{command} + arguments);
                return run.code == code && run.errors == "gnss-log: " + message + '\n';
            };
            QVERIFY(fails({"gone.bin", "-o", "out"}, 3, "gone.bin: No such file or directory"));
            QVERIFY(!QFile::exists("out"));
            QVERIFY(fails({"."}, 3, ".: Is a directory"));
            QVERIFY(fails({"a.bin", "-o", "folder"}, 4, "folder: Is a directory"));
            QVERIFY(fails({"a.bin", "--output=/dev/full"}, 4, "/dev/full: No space left on device"));
        }
    }

    void InputAndOutputMayNotBeTheSame()
    {
        const QByteArray bytes = Epoch(1000) + "noise";
        WriteFile("a.bin", bytes);
        QVERIFY(QFile::link("a.bin", "b.bin"));
        for (const char* output : {"a.bin", "b.bin", "./a.bin"}) {
            QCOMPARE(GnssLog({"nmea", "a.bin", "-o", output}).errors,
                     QStringLiteral("gnss-log: a.bin: input and output are the same file\n"));
        }
        // Appending to what is read would never end.
        QProcess process;
        process.setStandardOutputFile("a.bin", QIODevice::Append);
        process.start(QStringLiteral(GNSS_BUILD_BIN "/gnss-log"), {"nmea", "a.bin"});
        QVERIFY(process.waitForFinished(10000) && process.exitCode() == 2);
        QCOMPARE(Content("a.bin"), bytes);
    }

    void NothingFoundIsAStatusOfItsOwn()
    {
        QByteArray noise;
        for (int i = 0; i < 300000; ++i) {
            noise += static_cast<char>((i * 2654435761U) >> 13);
        }
        for (const QByteArray& bytes : {QByteArray(), noise, "$GPGGA," + QByteArray(1000000, '1') + "*00\r\n"}) {
            for (const QString& command : allCommands) {
                const auto run = GnssLog({command}, bytes);
                QCOMPARE(run.code, 1);
                QCOMPARE(run.errors, QString(command == "info"   ? "gnss-log: standard input: no "
                                                                   "sentence and no frame found\n"
                                             : command == "nmea" ? "gnss-log: standard input: no sentence found\n"
                                                                 : "gnss-log: standard input: no fix found\n"));
                QVERIFY(!formats.contains(command) || Points(command, run.output) == 0);
                QVERIFY(command != "nmea" || run.output.isEmpty());
            }
            const QJsonObject info = Info(bytes);
            QCOMPARE(info["bytes"].toInt(), bytes.size());
            QVERIFY(info["first_fix"].isNull() && info["rate_hz"].isNull() && info["first_epoch"].isNull());
        }
    }

    void SentencesComeOutUnchanged()
    {
        const QByteArray good = "$GPGGA,\x80\xff,1*zz\r\n" + Epoch(1000).repeated(10000) + Sentence("PXYZ,1");
        const QByteArray bytes = "\x7e\x04$cut" + good.left(30) + QByteArray("\0", 1) + good +
                                 "$GPRMC,no star\r\n$" + QByteArray(2000000, 'x') + "*00\r\n" +
                                 Sentence("GPTXT,end") + "$GPGGA,not at its e";
        const QByteArray expected = good.left(good.indexOf('\n') + 1) + good + Sentence("GPTXT,end");
        const auto run = GnssLog({"nmea", "-"}, bytes);
        QVERIFY(run.code == 0 && run.output == expected && run.errors.isEmpty());
        WriteFile("-a.bin", bytes);
        WriteFile("out.nmea", "what was there before, and is longer than what comes" + bytes);
        QCOMPARE(GnssLog({"nmea", "-o", "out.nmea", "--no-progress", "--", "-a.bin"}).code, 0);
        QVERIFY(Content("out.nmea") == expected);
    }

    void TheSummaryCountsAndMeasures()
    {
        QByteArray bytes = "noise";
        for (int i = 0; i < 36; ++i) {
            bytes += Epoch(36000000 + i * 200 + (i < 30 ? 0 : 5000), i < 10 || i == 35 ? 0 : i < 30 ? 1 : 4);
        }
        bytes += "$GPGGA,1*00\r\n" + Sentence("GPGSV,1,1,02,05,40,083,46,07,17,308,40") + Epoch(36012200, 0);
        QCOMPARE(
            GnssLog({"info", "--json"}, bytes).output.replace(' ', "").replace('\n', ""),
            QByteArray(
                R"({"file":"standardinput","bytes":4858,"other_bytes":5,"sentences":75,"checksum_errors":1,)"
                R"("frames":0,"first_epoch":"2026-03-14T10:00:00.000Z","last_epoch":"2026-03-14T10:00:12.200Z",)"
                R"("span_seconds":12.200,"steps_back":0,"rate_hz":5,"epochs":37,"fixes":25,"fixes_by_mode":)"
                R"({"autonomous":20,"rtk-fixed":5},"fix_losses":1,"first_fix":{"time":)"
                R"("2026-03-14T10:00:02.000Z","seconds_after_first_epoch":2.000,"latitude":47.00600033,)"
                R"("longitude":8.50000000,"altitude":408.500,"fixmode":"autonomous"},"gaps":{"count":1,)"
                R"("seconds":5.200,"longest":[{"from":"2026-03-14T10:00:05.800Z","seconds":5.200}]},)"
                R"("constellations":{"GPS":{"satellites":2,"used":0,"cn0_mean":43.0,"cn0_highest":46}},)"
                R"("sentences_by_type":{"GNGGA":37,"GNRMC":37,"GPGSV":1},"sentences_of_other_types":0})"));
        const QByteArray text = GnssLog({"info"}, bytes).output;
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
        // An epoch that gets its fix late is one epoch and no interruption.
        bytes += Epoch(2500000, 0) + Epoch(2501000) + Epoch(2502000, 0) + Epoch(2502000, 2) + Epoch(2570000);
        const QJsonObject info = Info(bytes);
        QVERIFY(info["epochs"] == 2504 && info["fixes"] == 2503 && info["fix_losses"] == 1);
        const char* const pieces[] = {"\n2026-03-14T00:41:42.000Z,47.00041700,8.50000000,408.500,"
                                      "differential,0.514,90.00,,0.80,,9\n",
                                      "\n<trkpt lat=\"47.00041700\" "
                                      "lon=\"8.50000000\"><ele>408.500</ele><time>2026-03-14T00:41:42.000Z</"
                                      "time>"
                                      "<type>differential</type><fix>dgps</fix><sat>9</sat><hdop>0.80</"
                                      "hdop></trkpt>\n</trkseg>\n<trkseg>\n",
                                      "\n<when>2026-03-14T00:41:41.000Z</"
                                      "when>\n<when>2026-03-14T00:41:42.000Z</when>\n"
                                      "<gx:coord>8.50000000 47.00041683 408.500</gx:coord>\n"
                                      "<gx:coord>8.50000000 47.00041700 408.500</gx:coord>\n"
                                      "<ExtendedData><SchemaData schemaUrl=\"#fix\"><gx:SimpleArrayData "
                                      "name=\"fixmode\">\n"
                                      "<gx:value>autonomous</gx:value>\n<gx:value>differential</gx:value>\n"
                                      "</gx:SimpleArrayData></SchemaData></ExtendedData>\n</gx:Track>\n</"
                                      "gx:MultiTrack>\n</Placemark>\n",
                                      "\n{\"type\":\"Feature\",\"geometry\":{\"type\":\"Point\","
                                      "\"coordinates\":[8.50000000,47.00041700,408."
                                      "500]},"
                                      "\"properties\":{\"time\":\"2026-03-14T00:41:42.000Z\",\"altitude\":"
                                      "408.500,\"fixmode\":"
                                      "\"differential\","
                                      "\"speed\":0.514,\"course\":90.00,\"hdop\":0.80,\"sat\":9}},\n"};
        for (int i = 0; i < 4; ++i) {
            const auto run = GnssLog({formats[i]}, bytes);
            QCOMPARE(run.code, 0);
            QCOMPARE(Points(formats[i], run.output), 2503);
            QVERIFY2(run.output.contains(pieces[i]), pieces[i]);
            QCOMPARE(run.output.count("<trkseg>") + run.output.count("<Placemark>"), i == 1 || i == 2 ? 3 : 0);
        }
    }

    /// Other programs read the tracks too, where they are installed.
    void CapturesGiveTheirFixes()
    {
        const QFileInfoList captures = QDir(QStringLiteral(GNSS_CAPTURES)).entryInfoList({"*.log"});
        if (captures.isEmpty()) {
            QSKIP("no captures here");
        }
        const bool gpsbabel = !QStandardPaths::findExecutable("gpsbabel").isEmpty();
        for (const QFileInfo& capture : captures) {
            const int fixes = Info(Content(capture.filePath()))["fixes"].toInt();
            for (const QString& format : formats) {
                const QByteArray what = (capture.fileName() + " as " + format).toUtf8();
                QCOMPARE(GnssLog({format, capture.filePath(), "-o", "track"}).code, fixes == 0 ? 1 : 0);
                QVERIFY2(Points(format, Content("track")) == fixes, what);
                if (gpsbabel) {
                    const ProgramRun other("gpsbabel", {"-t", "-i", format == "csv" ? "unicsv" : format, "-f",
                                                        "track", "-o", "gpx", "-F", "-"});
                    const char* point = format == "geojson" ? "<wpt " : "<trkpt ";
                    QVERIFY2(other.code == 0 && other.output.count(point) == fixes, what);
                }
            }
        }
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(TestGnssLog)
#include "tst_gnsslog.moc"
