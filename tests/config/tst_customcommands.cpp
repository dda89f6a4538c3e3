#include "BoxAnswerer.h"
#include "SenderTest.h"

#include "config/ConfigViewWin.h"
#include "config/CustomCommand.h"
#include "config/ShortcutCmdWin.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QPushButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

namespace {

QStandardItemModel* Model(const QWidget& window)
{
    return qobject_cast<QStandardItemModel*>(window.findChild<QTableView*>()->model());
}

QPushButton* RowButton(const QWidget& window, int row)
{
    auto* table = window.findChild<QTableView*>();
    return qobject_cast<QPushButton*>(table->indexWidget(table->model()->index(row, 2)));
}

QPushButton* EditButton(const QWidget& window)
{
    const QList<QPushButton*> buttons = window.findChildren<QPushButton*>();
    for (QPushButton* button : buttons) {
        if (button->text() == "Send:") {
            return button;
        }
    }
    return nullptr;
}

} // namespace

class TestCustomCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QFile::remove(CustomCommandFile()); }
    void cleanupTestCase() { QFile::remove(CustomCommandFile()); }

    void StringsBecomeBytes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("product");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("hex") << "7e 04" << 0 << QByteArray::fromHex("7e04");
        QTest::newRow("blanks around") << "  7E04 \t" << 27 << QByteArray::fromHex("7e04");
        QTest::newRow("odd digits") << "7e0" << 0 << QByteArray::fromHex("7e0");
        QTest::newRow("no hex letters") << "xyz" << 0 << QByteArray();
        QTest::newRow("AT") << "ab" << 31 << QByteArray("ab\r\n");
    }

    void StringsBecomeBytes()
    {
        QFETCH(QString, text);
        QFETCH(int, product);
        QFETCH(QByteArray, bytes);
        QCOMPARE(CustomCommandBytes(text, product), bytes);
    }

    void TheTableSurvivesARestart()
    {
        SenderTest test;
        const QList<QPair<QString, QString>> rows = {
            {"b/c=d;e", "7e 04;\"x\""}, {"停止 定位", "a,b"}, {" blank ", "50%"}, {"twice", "1"}, {"twice", "2"}};
        {
            ConfigViewWin window(nullptr);
            for (const auto& row : rows) {
                window.SlotAddCmdAction();
                const int at = Model(window)->rowCount() - 1;
                Model(window)->setItem(at, 0, new QStandardItem(row.first));
                Model(window)->setItem(at, 1, new QStandardItem(row.second));
            }
            window.SlotAddCmdAction(); // neither a name nor a string
        }
        const ConfigViewWin window(nullptr);
        QStringList found;
        for (int row = 0; row < Model(window)->rowCount(); ++row) {
            found.append(Model(window)->item(row, 0)->text() + " -> " + Model(window)->item(row, 1)->text());
            QVERIFY(RowButton(window, row) != nullptr);
        }
        QStringList expected = {" blank  -> 50%", "b/c=d;e -> 7e 04;\"x\"", "twice -> 2", "停止 定位 -> a,b"};
        QCOMPARE(found, expected);
    }

    void ClearingTheTableEmptiesTheFile()
    {
        SenderTest test;
        {
            ConfigViewWin window(nullptr);
            window.SlotAddCmdAction();
            Model(window)->setItem(0, 0, new QStandardItem("a"));
        }
        {
            ConfigViewWin window(nullptr);
            QCOMPARE(Model(window)->rowCount(), 1);
            window.SlotClearTableAction();
        }
        const ConfigViewWin window(nullptr);
        QCOMPARE(Model(window)->rowCount(), 0);
    }

    void RowsAreAddedAndDeletedAtTheMenuRow()
    {
        SenderTest test;
        ConfigViewWin window(nullptr);
        window.resize(500, 400);
        window.show();
        window.SlotDeleteCmdAction(); // no menu yet: harmless
        for (int i = 0; i < 3; ++i) {
            window.SlotAddCmdAction();
            Model(window)->item(i, 0)->setText(QString::number(i));
        }
        auto* table = window.findChild<QTableView*>();
        window.OnTableViewCustomContextMenuRequested(table->visualRect(Model(window)->index(1, 0)).center());
        window.SlotAddCmdAction();
        QCOMPARE(Model(window)->item(1, 0)->text(), QString());
        QCOMPARE(Model(window)->item(2, 0)->text(), QStringLiteral("1"));
        window.SlotDeleteCmdAction();
        QCOMPARE(Model(window)->rowCount(), 3);
        QCOMPARE(Model(window)->item(1, 0)->text(), QStringLiteral("1"));
        QCOMPARE(table->columnWidth(0), 80);
        QCOMPARE(table->columnWidth(2), 80);
    }

    void ARowThatIsGoneIsNoPlaceForANewOne()
    {
        SenderTest test;
        ConfigViewWin window(nullptr);
        window.resize(500, 400);
        window.show();
        for (int i = 0; i < 3; ++i) {
            window.SlotAddCmdAction();
        }
        auto* table = window.findChild<QTableView*>();
        window.OnTableViewCustomContextMenuRequested(table->visualRect(Model(window)->index(2, 0)).center());
        window.SlotClearTableAction();
        window.SlotDeleteCmdAction();
        window.SlotAddCmdAction();
        QCOMPARE(Model(window)->rowCount(), 1);
        QVERIFY(RowButton(window, 0) != nullptr);
    }

    void TheWindowsMayGoAtTheirSend()
    {
        SenderTest test;
        QPointer<QWidget> sender;
        test.acknowledge = [&sender] { delete sender; };
        for (const bool fromTheTable : {true, false}) {
            auto* window = new ConfigViewWin(nullptr);
            sender = window;
            window->show();
            test.Listen(window);
            window->findChild<QComboBox*>()->setCurrentText("7e");
            window->SlotAddCmdAction();
            const int last = Model(*window)->rowCount() - 1;
            Model(*window)->item(last, 0)->setText("probe");
            Model(*window)->setItem(last, 1, new QStandardItem("7e"));
            (fromTheTable ? RowButton(*window, last) : EditButton(*window))->click();
            QVERIFY(sender.isNull());
        }
        QCOMPARE(test.Status(), (QStringList{"发送自定义命令probe", "发送自定义命令"}));

        auto* shortcut = new ShortcutCmdWin(0, nullptr);
        sender = shortcut;
        test.Listen(shortcut);
        shortcut->SlotSendBtnClicked();
        QVERIFY(sender.isNull());
    }

    void RowsAndTheEditLineSend()
    {
        SenderTest test;
        ConfigViewWin window(nullptr);
        window.show();
        test.Listen(&window);
        BoxAnswerer answerer;
        window.SlotAddCmdAction();
        window.SlotAddCmdAction();
        RowButton(window, 1)->click();
        QCOMPARE(answerer.boxes, QStringList{"SYSTEM|Cmd string is empty!\nPlease enter a command string."});
        Model(window)->item(1, 0)->setText("probe");
        Model(window)->setItem(1, 1, new QStandardItem(" 7e 04 7e "));
        RowButton(window, 1)->click();
        QCOMPARE(test.frames, QList<QByteArray>{QByteArray::fromHex("7e047e")});
        QCOMPARE(test.Status(), QStringList{"发送自定义命令probe"});
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 512"));
        QCOMPARE(Global::ackState, 4);

        auto* combo = window.findChild<QComboBox*>();
        EditButton(window)->click();
        QCOMPARE(answerer.boxes.size(), 2);
        for (const char* text : {"aa", "aA", " aa "}) {
            combo->setCurrentText(text);
            EditButton(window)->click();
        }
        QCOMPARE(test.frames.size(), 4);
        QCOMPARE(combo->count(), 2);
        QCOMPARE(test.Status().count("发送自定义命令"), 4);
    }

    void ManyRowsStayUsable()
    {
        SenderTest test;
        QVector<CustomCommand> commands;
        for (int i = 0; i < 10000; ++i) {
            commands.append({QStringLiteral("command %1").arg(i, 5, 10, QLatin1Char('0')), QString::number(i)});
        }
        SaveCustomCommands(CustomCommandFile(), commands);
        ConfigViewWin window(nullptr);
        window.show();
        test.Listen(&window);
        QCOMPARE(Model(window)->rowCount(), 10000);
        window.findChild<QTableView*>()->scrollToBottom();
        RowButton(window, 9999)->click();
        QCOMPARE(test.frames, QList<QByteArray>{QByteArray::fromHex("9999")});
    }

    void APathThatCannotBeWrittenKeepsNothing()
    {
        QVERIFY(QDir().mkpath(CustomCommandFile()));
        SaveCustomCommands(CustomCommandFile(), {{"a", "b"}});
        QDir().rmdir(CustomCommandFile());
        QVERIFY(LoadCustomCommands(CustomCommandFile()).isEmpty());
    }

    void ShortcutsSendTheirNumbers()
    {
        SenderTest test;
        auto* start = new ShortcutCmdWin(0, nullptr);
        test.Listen(start);
        QCOMPARE(start->findChildren<QSpinBox*>().size(), 4);
        const QList<QSpinBox*> boxes =
            start->findChild<QStackedWidget*>()->currentWidget()->findChildren<QSpinBox*>();
        boxes.at(0)->setValue(1000);
        boxes.at(2)->setValue(3);
        start->show();
        start->SlotSendBtnClicked();
        QVERIFY(!start->isVisible());
        QCOMPARE(test.frames.last(), QByteArray::fromHex("e80300000100000003000000"));
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 1"));
        delete start;

        ShortcutCmdWin stop(1, nullptr);
        test.Listen(&stop);
        stop.SlotSendBtnClicked();
        QCOMPARE(test.frames.last(), QByteArray(4, '\0'));
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 2"));
        QCOMPARE(stop.windowTitle(), QStringLiteral("Shortcut Cmd"));
    }
};

QTEST_MAIN(TestCustomCommands)
#include "tst_customcommands.moc"
