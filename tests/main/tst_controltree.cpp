#include "LogCatcher.h"
#include "main/ControlTree.h"

#include <QTemporaryDir>
#include <QTreeWidget>
#include <QtTest>

namespace {

/// The tree as text: one item a line, indented by depth, with the hidden second column behind a bar.
void Describe(const QTreeWidgetItem* item, int depth, QStringList* lines)
{
    QString line = QString(depth * 2, ' ') + item->text(0);
    if (!item->text(1).isEmpty()) {
        line += " | " + item->text(1);
    }
    lines->append(line);
    for (int i = 0; i < item->childCount(); ++i) {
        Describe(item->child(i), depth + 1, lines);
    }
}

QStringList Load(const QByteArray& xml, QTreeWidget* tree)
{
    QTemporaryDir folder;
    QFile file(folder.filePath("tree.xml"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write(xml);
        file.close();
    }
    LoadControlTree(tree, file.fileName());
    QStringList lines;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        Describe(tree->topLevelItem(i), 0, &lines);
    }
    return lines;
}

} // namespace

class TestControlTree : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ElementsAttributesAndTexts()
    {
        QTreeWidget tree;
        QCOMPARE(Load("<?xml version=\"1.0\"?><WCM>\n"
                      "<数据_组><NMEA视图/><_3D_视图 extra=\"x\"><a>hidden</a></_3D_视图><!-- note --></数据_组>\n"
                      "<Empty/></WCM>",
                      &tree),
                 (QStringList{"数据组", "  NMEA视图", "  3D视图", "    a | hidden", "    extra", "Empty"}));
        const QTreeWidgetItem* leaf = tree.topLevelItem(0)->child(1)->child(1);
        QCOMPARE(static_cast<int>(leaf->flags()), 49);
    }

    void WhatCannotBeReadLeavesAnEmptyTree()
    {
        QTreeWidget tree;
        new QTreeWidgetItem(&tree, {"old"});
        QVERIFY(Load("<WCM><open></WCM>", &tree).isEmpty());
        LoadControlTree(&tree, "/no/such/file.xml");
        QCOMPARE(tree.topLevelItemCount(), 0);
        // The document's own text has no item to go to.
        QVERIFY(Load("<WCM>text</WCM>", &tree).isEmpty());
        QVERIFY(Load("<WCM/>", &tree).isEmpty());
    }

    void TheLanguageChoosesTheFile()
    {
        const LogCatcher log;
        QCOMPARE(TreeFilePath("/cfg", 2), QStringLiteral("/cfg/GnssTree.xml"));
        QCOMPARE(TreeFilePath("/cfg", 1), QStringLiteral("/cfg/GnssTree_en.xml"));
        QVERIFY(log.Lines().isEmpty());
        QCOMPARE(TreeFilePath("/cfg", 0), QStringLiteral("/cfg/GnssTree.xml"));
        QCOMPARE(log.Lines(), QStringList{"Global::language has error setting, it is: 0"});
    }
};

QTEST_MAIN(TestControlTree)
#include "tst_controltree.moc"
