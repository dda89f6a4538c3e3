// SPDX-License-Identifier: MIT
#include "Files.h"
#include "window/ControlTree.h"

#include <QTreeWidget>

namespace {

/// The tree as text: one item a line, indented by depth, with the hidden second column behind a bar.
void Describe(const QTreeWidgetItem* item, int depth, QStringList* lines)
{
    lines->append(QString(depth * 2, ' ') + item->text(0) +
                  (item->text(1).isEmpty() ? "" : " | " + item->text(1)));
    for (int i = 0; i < item->childCount(); ++i) {
        Describe(item->child(i), depth + 1, lines);
    }
}

QStringList Load(const QByteArray& xml, QTreeWidget* tree)
{
    WriteFile("tree.xml", xml);
    LoadControlTree(tree, "tree.xml");
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
        QCOMPARE(int(tree.topLevelItem(0)->child(1)->child(1)->flags()), 49);
    }

    void WhatCannotBeReadLeavesAnEmptyTree()
    {
        QTreeWidget tree;
        // A document's own text has no item to go to.
        for (const char* xml : {"<WCM><open></WCM>", "<WCM>text</WCM>", "<WCM/>"}) {
            new QTreeWidgetItem(&tree, {"old"});
            QVERIFY2(Load(xml, &tree).isEmpty(), xml);
        }
    }
};

QTEST_MAIN(TestControlTree)
#include "tst_controltree.moc"
