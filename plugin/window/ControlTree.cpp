// SPDX-License-Identifier: MIT
#include "window/ControlTree.h"

#include "base/ProcessState.h"

#include <QDebug>
#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QTreeWidget>

QString TreeFilePath(const QString& configDirectory, int language)
{
    const QString english = QStringLiteral("GnssTree_en.xml");
    const QString chinese = QStringLiteral("GnssTree.xml");
    if (language != LanguageEnglish && language != LanguageChinese) {
        qDebug() << "Global::language has error setting, it is:" << language;
    }
    return configDirectory + QDir::separator() + (language == LanguageEnglish ? english : chinese);
}

void LoadControlTree(QTreeWidget* tree, const QString& path)
{
    tree->clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return;
    }
    QDomDocument document(QStringLiteral("WCM"));
    if (!document.setContent(&file)) {
        return;
    }
    WalkTreeElement(tree, document.documentElement(), nullptr);
}

void WalkTreeElement(QTreeWidget* tree, const QDomElement& element, QTreeWidgetItem* parent)
{
    QDomNode node = element.firstChild();
    if (!node.isElement()) {
        if (parent != nullptr) {
            parent->setText(1, element.text());
        }
        return;
    }
    for (; !node.isNull(); node = node.nextSibling()) {
        const QDomElement child = node.toElement();
        if (child.isNull()) {
            continue;
        }
        auto* item = parent != nullptr ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(tree);
        item->setText(0, child.tagName().remove(QLatin1Char('_')));
        WalkTreeElement(tree, child, item);
        const QDomNamedNodeMap attributes = child.attributes();
        for (int i = 0; i < attributes.count(); ++i) {
            auto* leaf = new QTreeWidgetItem(item);
            leaf->setText(0, attributes.item(i).nodeName());
            leaf->setFlags(Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemIsEnabled);
        }
    }
}
