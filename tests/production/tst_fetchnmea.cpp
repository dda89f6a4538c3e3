// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"
#include "Files.h"

#include "production/FetchNmea.h"
#include "production/NmeaExtract.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

QString Here(const QString& name)
{
    return QDir::current().absoluteFilePath(name);
}

const QByteArray first = "$GPGGA,first*12\r\n";
const QByteArray second = "$GPGGA,second*12\r\n";

} // namespace

class TestFetchNmea : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;

    static void Press(const FetchNmea& window, const QString& text)
    {
        for (QPushButton* button : window.findChildren<QPushButton*>()) {
            if (button->text() == text) {
                return button->click();
            }
        }
        QFAIL(qPrintable(text));
    }
    static QString Status(const FetchNmea& window) { return window.findChild<QLabel*>()->text(); }

    /// Chooses the files and extracts them.
    static void Fetch(const QStringList& files, const std::function<void()>& between = {})
    {
        FetchNmea window;
        FileDialogAnswerer dialog(files);
        Press(window, "选择文件");
        QCOMPARE(dialog.answered, 1);
        QVERIFY(Status(window).isEmpty());
        if (between) {
            between();
        }
        Press(window, "提取NMEA");
        QVERIFY2(QRegularExpression("^解析完成，耗时\\d+\\.\\d\\ds$").match(Status(window)).hasMatch(),
                 qPrintable(Status(window)));
    }

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }

    void AsksForManyBinFiles()
    {
        FetchNmea window;
        window.ProcessDirectory();
        QCOMPARE(Status(window), QStringLiteral("解析完成，耗时0.00s"));
        FileDialogAnswerer dialog({});
        window.SlotSelectRawFile();
        QCOMPARE(QStringList(dialog.filters) << dialog.title << dialog.directory,
                 (QStringList{"Bin file(*.bin)", "选择文件", QCoreApplication::applicationDirPath()}));
        QVERIFY(dialog.manyFiles && Status(window).isEmpty());
    }

    void EachFileGivesOneBesideIt()
    {
        WriteFile("a.b.bin", "\x7e\x04$noise" + first + QByteArray("\0\xff", 2) + second);
        WriteFile("none.bin", "$GPGGA,no star\r\n");
        WriteFile("empty.bin", QByteArray());
        WriteFile("none.nmea", "what was there before");
        // State is not kept across files.
        WriteFile("c.bin", "$GPGGA,cut");
        WriteFile("d.bin", " short*12\r\n" + first);
        // Of two with one output the second wins.
        WriteFile("e.1", first);
        WriteFile("e.2", second);
        Fetch({Here("a.b.bin"), Here("none.bin"), Here("empty.bin"), Here("c.bin"), Here("d.bin"), Here("e.1"),
               Here("e.2")});
        QByteArrayList contents;
        for (const char* name :
             {"a.b.nmea", "none.nmea", "none.bin", "empty.nmea", "c.nmea", "d.nmea", "e.nmea"}) {
            QVERIFY2(QFile::exists(name), name);
            contents.append(Content(name));
        }
        QCOMPARE(contents, (QByteArrayList{first + second, "", "$GPGGA,no star\r\n", "", "", first, second}));
    }

    void SentencesPassUnchanged()
    {
        QByteArray sentences;
        for (int from = 0; from < 256; from += 64) {
            sentences += '$';
            for (int byte = from; byte < from + 64; ++byte) {
                sentences += static_cast<char>(byte == '$' ? 0 : byte);
            }
            sentences += QByteArray("\xef\xbb\xbf*\0\xff\r\n", 8);
        }
        WriteFile("a.bin", sentences);
        ExtractNmea(Here("a.bin"));
        QCOMPARE(Content("a.nmea"), sentences);
        // The sentence lies across the 500th byte at every place.
        for (int before = 500 - first.size(); before <= 500; ++before) {
            WriteFile("a.bin", QByteArray(before, 'x') + first + second);
            ExtractNmea(Here("a.bin"));
            QCOMPARE(Content("a.nmea"), first + second);
        }
    }

    void AFileThatCannotBeOpenedIsPassedOver()
    {
        WriteFile("a.bin", first);
        WriteFile("b.bin", second);
        WriteFile("gone.bin", first);
        QVERIFY(QDir().mkdir("a.nmea"));
        const BoxAnswerer boxes;
        Fetch({Here("a.bin"), Here("gone.bin"), Here("b.bin")}, [] { QVERIFY(QFile::remove("gone.bin")); });
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(Content("b.nmea"), second);
        QVERIFY(!QFile::exists("gone.nmea"));
    }

    /// The output's name is the input's own: opening it for writing would empty
    /// the capture.
    void AnInputIsNeverItsOwnOutput()
    {
        WriteFile("a.nmea", first + "noise");
        WriteFile("b.nmea", second);
        QVERIFY(QFile::link("b.nmea", "b.bin"));
        ExtractNmea(Here("a.nmea"));
        ExtractNmea(Here("b.bin"));
        QCOMPARE(Content("a.nmea"), first + "noise");
        QCOMPARE(Content("b.nmea"), second);
    }

    void TheWindowMayGoWhileItsDialogIsOpen()
    {
        auto window = std::make_unique<FetchNmea>();
        FileDialogAnswerer dialog({}, [&] { window.reset(); });
        window->SlotSelectRawFile();
        QVERIFY(!window);
        QCOMPARE(dialog.answered, 1);
    }
};

QTEST_MAIN(TestFetchNmea)
#include "tst_fetchnmea.moc"
