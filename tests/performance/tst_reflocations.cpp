// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"

#include "performance/RefLocFile.h"
#include "performance/RefLocWin.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace {

QByteArray Content()
{
    QFile file("refLoc.ini");
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QByteArray& content)
{
    QFile file("refLoc.ini");
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void Type(const QWidget& window, const QStringList& texts)
{
    const QList<QLineEdit*> edits = window.findChildren<QLineEdit*>();
    QCOMPARE(edits.size(), 4);
    for (int i = 0; i < 4; ++i) {
        edits[i]->setText(texts[i]);
    }
}

QStringList Texts(const RefLocation& point)
{
    return {point.name, point.longitude, point.latitude, point.altitude};
}

} // namespace

class TestRefLocations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // A folder of its own for each test: settings of one path share what was parsed.
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_folder->path()));
    }
    void cleanup() { QDir::setCurrent(QDir::tempPath()); }

    void TheDialog()
    {
        RefLocWin window;
        QVERIFY(window.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(!window.windowFlags().testFlag(Qt::WindowMinMaxButtonsHint));
        QCOMPARE(window.minimumSize(), QSize(300, 250));
        window.show();
        Type(window, {"a", "1", "2", "3"});
        window.findChildren<QPushButton*>()[1]->click();
        QVERIFY(!window.isVisible());
        QVERIFY(!QFile::exists("refLoc.ini"));
    }

    void PointsAreKeptAsTyped()
    {
        const BoxAnswerer answerer;
        RefLocWin window;
        QList<RefLocation> told;
        connect(&window, &RefLocWin::RefLocSaved, [&told](const RefLocation& point) { told.append(point); });
        window.show();
        Type(window, {"屋顶 A", "8.54, 56", "1e2", ""});
        window.findChildren<QPushButton*>()[0]->click();
        QVERIFY(!window.isVisible());
        QCOMPARE(answerer.boxes, QStringList("提示|参考点位保存成功"));
        QCOMPARE(told.size(), 1);
        QCOMPARE(told[0].longitude, QString("8.54, 56"));
        QCOMPARE(told[0].altitude, QString());
        QVERIFY(Content().contains(QByteArray("refLocName=屋顶 A\n")));
        Type(window, {"", "十二", "４７", " 5 "});
        window.SlotConfirmBtnClicked();
        QCOMPARE(window.Added().size(), 2);

        const QVector<RefLocation> read = ReadRefLocations();
        QCOMPARE(read.size(), 2);
        QCOMPARE(Texts(read[0]), (QStringList{"屋顶 A", "8.54, 56", "1e2", "0"}));
        QCOMPARE(Texts(read[1]), (QStringList{"0", "十二", "４７", " 5 "}));
    }

    void NamesSurviveTheNextSave()
    {
        const BoxAnswerer answerer;
        Write("[RefLoc_1]\nrefLocAlt=1\nrefLocLat=2\nrefLocLon=3\nrefLocName=测量点\n");
        // Counting, reading and writing in every order, in one process.
        QCOMPARE(CountRefLocations(), 1);
        RefLocWin window;
        QCOMPARE(ReadRefLocations()[0].name, QString("测量点"));
        Type(window, {"第二点", "1", "2", "3"});
        window.SlotConfirmBtnClicked();
        QVERIFY(Content().contains(QByteArray("refLocName=测量点\n")));
        QVERIFY(Content().contains(QByteArray("refLocName=第二点\n")));
        QCOMPARE(ReadRefLocations()[1].name, QString("第二点"));
    }

    void TheNumberIsTheCount()
    {
        const BoxAnswerer answerer;
        const QByteArray keys = "refLocAlt=1\nrefLocLat=2\nrefLocLon=3\nrefLocName=old\n";
        Write("[RefLoc_1]\n" + keys + "\n[RefLoc_3]\n" + keys);
        RefLocWin window;
        Type(window, {"new", "1", "2", "3"});
        window.SlotConfirmBtnClicked();
        const QVector<RefLocation> read = ReadRefLocations();
        QCOMPARE(read.size(), 2);
        QCOMPARE(read[0].name, QString("old"));
        QCOMPARE(read[1].name, QString("new"));
    }

    void HandWrittenFiles()
    {
        QCOMPARE(ReadRefLocations().size(), 0);
        // One key too few, one too many, other names, an unquoted comma; groups come by name.
        Write("[RefLoc_1]\nrefLocAlt=1\nrefLocLat=2\nrefLocName=short\n\n"
              "[RefLoc_2]\na=1\nb=2\nc=3,4\nd=two\n\n"
              "[RefLoc_3]\na=1\nb=2\nc=3\nd=4\ne=5\n\n"
              "[RefLoc_10]\na=1\nb=2\nc=3\nd=ten\n");
        const QVector<RefLocation> read = ReadRefLocations();
        QCOMPARE(read.size(), 2);
        QCOMPARE(Texts(read[0]), (QStringList{"ten", "3", "2", "1"}));
        QCOMPARE(Texts(read[1]), (QStringList{"two", "3,4", "2", "1"}));
        QCOMPARE(CountRefLocations(), 4);
    }

    void AFolderThatCannotBeWritten()
    {
        const BoxAnswerer answerer;
        QDir().mkdir("refLoc.ini");
        RefLocWin window;
        Type(window, {"a", "1", "2", "3"});
        window.SlotConfirmBtnClicked();
        QCOMPARE(answerer.boxes.size(), 1);
    }

    void TheWindowMayGoWhileItsBoxIsOpen()
    {
        auto* window = new RefLocWin;
        Type(*window, {"a", "1", "2", "3"});
        QTimer::singleShot(50, window, [window] { delete window; });
        window->SlotConfirmBtnClicked();
        QCOMPARE(ReadRefLocations().size(), 1);
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_MAIN(TestRefLocations)
#include "tst_reflocations.moc"
