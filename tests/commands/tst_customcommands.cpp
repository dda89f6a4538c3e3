// SPDX-License-Identifier: MIT
#include "BoxAnswerer.h"
#include "SenderTest.h"

#include "commands/ConfigViewWin.h"
#include "commands/CustomCommand.h"
#include "commands/ShortcutCmdWin.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QTableView>
#include <QtTest>

namespace {

/// The window with a line that keeps its frames.
class Bench : public SenderBench<ConfigViewWin> {
public:
    Bench()
    {
        window->resize(500, 400);
        window->show();
    }

    void Add(const QString& name, const QString& text) const
    {
        window->SlotAddCmdAction();
        model->item(model->rowCount() - 1, 0)->setText(name);
        model->setItem(model->rowCount() - 1, 1, new QStandardItem(text));
    }
    void OpenMenuAt(int row) const
    {
        window->OnTableViewCustomContextMenuRequested(table->visualRect(model->index(row, 0)).center());
    }
    QStringList Rows() const
    {
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            const QStandardItem* text = model->item(row, 1);
            rows.append(model->item(row, 0)->text() + (text != nullptr ? " -> " + text->text() : ""));
        }
        return rows;
    }
    QPushButton* RowButton(int row) const
    {
        return qobject_cast<QPushButton*>(table->indexWidget(model->index(row, 2)));
    }
    void SendEdit(const char* text) const
    {
        combo->setCurrentText(text);
        for (QPushButton* button : window->findChildren<QPushButton*>()) {
            if (button->text() == "Send:") {
                return button->click();
            }
        }
    }

    QComboBox* combo = window->findChild<QComboBox*>();
    QTableView* table = window->findChild<QTableView*>();
    QStandardItemModel* model = qobject_cast<QStandardItemModel*>(table->model());
};

} // namespace

class TestCustomCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QFile::remove(CustomCommandFile()); }
    void cleanupTestCase() { QFile::remove(CustomCommandFile()); }

    void StringsBecomeBytes()
    {
        QCOMPARE(CustomCommandBytes("7e 04", 0), QByteArray::fromHex("7e04"));
        QCOMPARE(CustomCommandBytes("  7E04 \t", 27), QByteArray::fromHex("7e04"));
        QCOMPARE(CustomCommandBytes("7e0", 0), QByteArray::fromHex("7e0"));
        QCOMPARE(CustomCommandBytes("xyz", 0), QByteArray());
        QCOMPARE(CustomCommandBytes("ab", 31), QByteArray("ab\r\n"));
    }

    void TheTableSurvivesARestart()
    {
        {
            const Bench bench;
            bench.Add("b/c=d;e", "7e 04;\"x\"");
            bench.Add("停止 定位", "a,b");
            bench.Add(" blank ", "50%");
            bench.Add("twice", "1");
            bench.Add("twice", "2");
            bench.window->SlotAddCmdAction(); // neither a name nor a string
        }
        {
            const Bench bench;
            QCOMPARE(bench.Rows(),
                     (QStringList{" blank  -> 50%", "b/c=d;e -> 7e 04;\"x\"", "twice -> 2", "停止 定位 -> a,b"}));
            QVERIFY(bench.RowButton(3) != nullptr);
            bench.window->SlotClearTableAction();
        }
        QVERIFY(Bench().Rows().isEmpty());
    }

    void RowsAreAddedAndDeletedAtTheMenuRow()
    {
        const Bench bench;
        bench.window->SlotDeleteCmdAction(); // no menu yet: harmless
        for (const char* name : {"0", "1", "2"}) {
            bench.Add(name, "");
        }
        bench.OpenMenuAt(1);
        bench.window->SlotAddCmdAction();
        QCOMPARE(bench.Rows(), (QStringList{"0 -> ", "", "1 -> ", "2 -> "}));
        bench.window->SlotDeleteCmdAction();
        QCOMPARE(bench.Rows(), (QStringList{"0 -> ", "1 -> ", "2 -> "}));
        // A row that is gone is no place for a new one.
        bench.OpenMenuAt(2);
        bench.window->SlotClearTableAction();
        bench.window->SlotDeleteCmdAction();
        bench.window->SlotAddCmdAction();
        QCOMPARE(bench.Rows(), QStringList{""});
        QVERIFY(bench.RowButton(0) != nullptr);
    }

    void TheWindowsMayGoAtTheirSend()
    {
        for (const bool fromTheTable : {true, false}) {
            Bench bench;
            bench.acknowledge = [&bench] { delete bench.window; };
            bench.Add("probe", "7e");
            fromTheTable ? bench.RowButton(bench.model->rowCount() - 1)->click() : bench.SendEdit("7e");
            QVERIFY(bench.window.isNull());
            QCOMPARE(bench.Status(), QStringList{fromTheTable ? "发送自定义命令probe" : "发送自定义命令"});
        }
    }

    void RowsAndTheEditLineSend()
    {
        const Bench bench;
        const BoxAnswerer answerer;
        bench.window->SlotAddCmdAction();
        bench.Add("probe", " 7e 04 7e ");
        bench.RowButton(0)->click();
        QCOMPARE(answerer.boxes, QStringList{"SYSTEM|Cmd string is empty!\nPlease enter a command string."});
        bench.RowButton(1)->click();
        QCOMPARE(bench.frames, QList<QByteArray>{QByteArray::fromHex("7e047e")});
        QCOMPARE(bench.Status(), QStringList{"发送自定义命令probe"});
        QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode 512"));
        QCOMPARE(Global::ackState, 4);
        for (const char* text : {"", "aa", "aA", " aa "}) {
            bench.SendEdit(text);
        }
        QCOMPARE(answerer.boxes.size(), 2);
        QCOMPARE(bench.frames.size(), 4);
        QCOMPARE(bench.combo->count(), 2);
        QCOMPARE(bench.Status().count("发送自定义命令"), 4);
    }

    void ShortcutsSendTheirNumbers()
    {
        for (const int page : {0, 1}) {
            SenderTest test;
            QPointer<ShortcutCmdWin> window = new ShortcutCmdWin(page, nullptr);
            test.Listen(window.data());
            if (page == 0) {
                const auto boxes =
                    window->findChild<QStackedWidget*>()->currentWidget()->findChildren<QSpinBox*>();
                boxes.at(0)->setValue(1000);
                boxes.at(2)->setValue(3);
            }
            window->show();
            window->SlotSendBtnClicked();
            QVERIFY(!window->isVisible());
            QCOMPARE(test.frames,
                     QList<QByteArray>{QByteArray::fromHex(page == 0 ? "e80300000100000003000000" : "00000000")});
            QCOMPARE(FakeCodec::Calls().last(), QStringLiteral("GnssEncode %1").arg(page + 1));
            // It may go at its send.
            test.acknowledge = [&window] { delete window; };
            window->SlotSendBtnClicked();
            QVERIFY(window.isNull());
        }
    }
};

QTEST_MAIN(TestCustomCommands)
#include "tst_customcommands.moc"
