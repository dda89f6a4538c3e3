// SPDX-License-Identifier: MIT
#include "base/MessageBoxes.h"

#include <QPointer>

namespace {

void ShowBox(QMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text)
{
    QPointer<QMessageBox> box = new QMessageBox(icon, title, text, QMessageBox::Ok, parent);
    box->setTextFormat(Qt::PlainText);
    box->exec();
    delete box;
}

} // namespace

void ShowInformationBox(QWidget* parent, const QString& title, const QString& text)
{
    ShowBox(QMessageBox::Information, parent, title, text);
}

void ShowWarningBox(QWidget* parent, const QString& title, const QString& text)
{
    ShowBox(QMessageBox::Warning, parent, title, text);
}

void ShowCriticalBox(QWidget* parent, const QString& title, const QString& text)
{
    ShowBox(QMessageBox::Critical, parent, title, text);
}
