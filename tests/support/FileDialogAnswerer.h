// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QStringList>
#include <QTimer>

#include <functional>

/// Answers the next file dialog with the given files, or cancels it when there are none, and keeps what it
/// asked. `before` is called while the dialog is open.
class FileDialogAnswerer {
public:
    explicit FileDialogAnswerer(const QStringList& files, const std::function<void()>& before = {})
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this, files, before] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (answered > 0) {
                // If it is still there it did not take the answer, and perhaps tells why in a box.
                auto* open = qobject_cast<QDialog*>(QApplication::activeModalWidget());
                if (open != nullptr && !m_dialog.isNull() && (open == m_dialog || open->parent() == m_dialog)) {
                    open->reject();
                }
                return;
            }
            if (dialog == nullptr) {
                return;
            }
            m_dialog = dialog;
            ++answered;
            title = dialog->windowTitle();
            directory = dialog->directory().absolutePath();
            filters = dialog->nameFilters();
            manyFiles = dialog->fileMode() == QFileDialog::ExistingFiles;
            if (before) {
                before();
                return;
            }
            if (files.isEmpty()) {
                dialog->reject();
                return;
            }
            const QString separator = manyFiles ? QStringLiteral("\"") : QString();
            dialog->findChild<QLineEdit*>("fileNameEdit")
                ->setText(separator + files.join(separator + ' ' + separator) + separator);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        m_timer.start(5);
    }

    int answered = 0;
    QString title;
    QString directory;
    QStringList filters;
    bool manyFiles = false;

private:
    QTimer m_timer;
    QPointer<QFileDialog> m_dialog;
};
