// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QMessageBox>
#include <QStringList>
#include <QTimer>

/// Answers message boxes with their default while it lives and keeps "title|text" of each.
class BoxAnswerer {
public:
    BoxAnswerer()
    {
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                boxes.append(box->windowTitle() + '|' + box->text());
                box->accept();
            }
        });
        m_timer.start(5);
    }

    QStringList boxes;

private:
    QTimer m_timer;
};
