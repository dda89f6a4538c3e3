// SPDX-License-Identifier: MIT
#include "base/FileDialogs.h"

#include <QFileDialog>
#include <QPointer>

namespace {

QStringList Ask(QFileDialog::FileMode mode, QWidget* parent, const QString& caption, const QString& directory,
                const QString& filter)
{
    const QPointer<QFileDialog> dialog = new QFileDialog(parent, caption, directory, filter);
    dialog->setFileMode(mode);
    dialog->setOption(QFileDialog::ShowDirsOnly, mode == QFileDialog::Directory);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    QStringList files = accepted && !dialog.isNull() ? dialog->selectedFiles() : QStringList();
    delete dialog;
    return files;
}

} // namespace

QString AskFileToOpen(QWidget* parent, const QString& caption, const QString& directory, const QString& filter)
{
    return Ask(QFileDialog::ExistingFile, parent, caption, directory, filter).value(0);
}

QStringList AskFilesToOpen(QWidget* parent, const QString& caption, const QString& directory,
                           const QString& filter)
{
    return Ask(QFileDialog::ExistingFiles, parent, caption, directory, filter);
}

QString AskFolder(QWidget* parent, const QString& caption)
{
    return Ask(QFileDialog::Directory, parent, caption, QString(), QString()).value(0);
}
