// SPDX-License-Identifier: MIT
#include "widgets/CustomBaudRateWin.h"

#include "widgets/BaudRateValidator.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

CustomBaudRateWin::CustomBaudRateWin(QWidget* parent) : QWidget(parent, Qt::Dialog)
{
    setWindowTitle("Custom BaudRate");
    m_edit = new QLineEdit(this);
    m_edit->setPlaceholderText("Enter baudrate");
    m_edit->setValidator(new BaudRateValidator(m_edit));
    m_edit->installEventFilter(this);
    m_label = new QLabel(tr("输入波特率小于24M"), this);

    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("ok");
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cancel");
    connect(ok, &QPushButton::clicked, this, &CustomBaudRateWin::SlotOkClick);
    connect(cancel, &QPushButton::clicked, this, &CustomBaudRateWin::SlotCancelClick);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* column = new QVBoxLayout(this);
    column->addWidget(m_edit);
    column->addWidget(m_label);
    column->addStretch(1);
    column->addLayout(buttons);
}

void CustomBaudRateWin::SlotOkClick()
{
    const QString text = m_edit->text();
    if (!text.isEmpty()) {
        emit addCustomBaudRate(text);
    }
    close();
}

void CustomBaudRateWin::SlotCancelClick()
{
    close();
}

bool CustomBaudRateWin::eventFilter(QObject* watched, QEvent* event)
{
    // The edit's own signal stays away while its text is empty, and Return closes the dialog then too.
    if (watched == m_edit && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            SlotOkClick();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
