#include "BoxAnswerer.h"
#include "FileDialogAnswerer.h"

#include "production/FetchNmea.h"
#include "production/NmeaExtract.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <memory>

namespace {

void Write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray Content(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

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
    static QPushButton* Button(const FetchNmea& window, const QString& text)
    {
        const QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
        for (QPushButton* button : buttons) {
            if (button->text() == text) {
                return button;
            }
        }
        return nullptr;
    }
    static QString Status(const FetchNmea& window) { return window.findChild<QLabel*>()->text(); }

    /// Chooses the files and extracts them.
    static void Fetch(FetchNmea& window, const QStringList& files)
    {
        FileDialogAnswerer dialog(files);
        Button(window, "选择文件")->click();
        QCOMPARE(dialog.answered, 1);
        QVERIFY(Status(window).isEmpty());
        Button(window, "提取NMEA")->click();
        QVERIFY2(QRegularExpression("^解析完成，耗时\\d+\\.\\d\\ds$").match(Status(window)).hasMatch(),
                 qPrintable(Status(window)));
    }

private Q_SLOTS:
    void init()
    {
        const QStringList names = QDir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
        for (const QString& name : names) {
            QFileInfo(name).isDir() ? QDir(name).removeRecursively() : QFile::remove(name);
        }
    }

    void AsksForManyBinFiles()
    {
        FetchNmea window;
        QCOMPARE(window.windowTitle(), QStringLiteral("提取NMEA"));
        QCOMPARE(window.minimumWidth(), 300);
        QCOMPARE(window.maximumWidth(), 300);
        window.ProcessDirectory();
        QCOMPARE(Status(window), QStringLiteral("解析完成，耗时0.00s"));

        FileDialogAnswerer dialog({});
        window.SlotSelectRawFile();
        QCOMPARE(dialog.title, QStringLiteral("选择文件"));
        QCOMPARE(dialog.filters, QStringList{"Bin file(*.bin)"});
        QVERIFY(dialog.manyFiles);
        QCOMPARE(dialog.directory, QCoreApplication::applicationDirPath());
        QVERIFY(Status(window).isEmpty());
    }

    void EachFileGivesOneBesideIt()
    {
        Write("a.b.bin", "\x7e\x04$noise" + first + QByteArray("\0\xff", 2) + second);
        Write("none.bin", "$GPGGA,no star\r\n");
        Write("empty.bin", QByteArray());
        Write("none.nmea", "what was there before");
        FetchNmea window;
        Fetch(window, {Here("a.b.bin"), Here("none.bin"), Here("empty.bin")});
        QCOMPARE(Content("a.b.nmea"), first + second);
        QCOMPARE(Content("none.nmea"), QByteArray());
        QCOMPARE(Content("empty.nmea"), QByteArray());
        QCOMPARE(Content("none.bin"), QByteArray("$GPGGA,no star\r\n"));
    }

    void BytesInsideASentencePassUnchanged()
    {
        QByteArray sentences;
        for (int from = 0; from < 256; from += 64) {
            QByteArray sentence("$");
            for (int byte = from; byte < from + 64; ++byte) {
                sentence += static_cast<char>(byte == '$' ? 0 : byte);
            }
            sentences += sentence + QByteArray("\xef\xbb\xbf*\0\xff\r\n", 8);
        }
        Write("bytes.bin", sentences);
        ExtractNmea(Here("bytes.bin"));
        QCOMPARE(Content("bytes.nmea"), sentences);
    }

    void StateIsKeptAcrossReadsAndNotAcrossFiles()
    {
        // The sentence lies across the 500th byte at every place.
        for (int before = 500 - first.size(); before <= 500; ++before) {
            Write("a.bin", QByteArray(before, 'x') + first + second);
            ExtractNmea(Here("a.bin"));
            QCOMPARE(Content("a.nmea"), first + second);
        }
        Write("a.bin", "$GPGGA,cut");
        Write("b.bin", " short*12\r\n" + first);
        FetchNmea window;
        Fetch(window, {Here("a.bin"), Here("b.bin")});
        QCOMPARE(Content("a.nmea"), QByteArray());
        QCOMPARE(Content("b.nmea"), first);
    }

    void OfTwoWithOneOutputTheSecondWins()
    {
        Write("a.1", first);
        Write("a.2", second);
        FetchNmea window;
        Fetch(window, {Here("a.1"), Here("a.2")});
        QCOMPARE(Content("a.nmea"), second);
    }

    void AFileThatCannotBeOpenedIsPassedOver()
    {
        Write("a.bin", first);
        Write("b.bin", second);
        Write("gone.bin", first);
        QVERIFY(QDir().mkdir("a.nmea"));
        FetchNmea window;
        {
            FileDialogAnswerer dialog({Here("a.bin"), Here("gone.bin"), Here("b.bin")});
            window.SlotSelectRawFile();
        }
        QVERIFY(QFile::remove("gone.bin"));
        const BoxAnswerer boxes;
        window.ProcessDirectory();
        QVERIFY(boxes.boxes.isEmpty());
        QCOMPARE(Content("b.nmea"), second);
        QVERIFY(!QFile::exists("gone.nmea"));
    }

    /// The output's name is the input's own: opening it for writing would empty the capture.
    void AnInputIsNeverItsOwnOutput()
    {
        Write("a.nmea", first + "noise");
        Write("b.nmea", second);
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
