// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

// Modal boxes whose parent may go while they are open: the box lies on the heap and dies with its parent.
// After each of them the caller must look whether it still exists itself.

void ShowInformationBox(QWidget* parent, const QString& title, const QString& text);
void ShowWarningBox(QWidget* parent, const QString& title, const QString& text);
void ShowCriticalBox(QWidget* parent, const QString& title, const QString& text);
