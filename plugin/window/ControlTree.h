// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QDomElement;
class QTreeWidget;
class QTreeWidgetItem;

/// Path of the control panel's tree file in a configuration directory: language 1 has the English one, 2 the
/// Chinese one, any other value the Chinese one and a debug line.
QString TreeFilePath(const QString& configDirectory, int language);

/// Fills the tree from a file. A file that cannot be read or parsed leaves it empty.
void LoadControlTree(QTreeWidget* tree, const QString& path);

/// Adds the children of `element` below `parent`, or as top-level items when it is null. An element's name,
/// without its "_", is a label; each attribute gives a leaf; a text goes into the parent's hidden second column.
void WalkTreeElement(QTreeWidget* tree, const QDomElement& element, QTreeWidgetItem* parent);
