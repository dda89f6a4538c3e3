// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// Choices of files and folders whose parent may go while they are open: the dialog lies on the heap and dies with
// its parent. After each of them the caller must look whether it still exists itself.

/// The file that the user chooses for reading, or an empty text.
QString AskFileToOpen(QWidget* parent, const QString& caption, const QString& directory, const QString& filter);

/// The same with any number of files.
QStringList AskFilesToOpen(QWidget* parent, const QString& caption, const QString& directory,
                           const QString& filter);

/// The folder that the user chooses, or an empty text.
QString AskFolder(QWidget* parent, const QString& caption);
