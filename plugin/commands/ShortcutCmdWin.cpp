// SPDX-License-Identifier: MIT
#include "commands/ShortcutCmdWin.h"

#include "bridge/CommandFrame.h"
#include "protocol/LinkFrame.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <QtEndian>

namespace ShortcutDefaults {
int period = 1;
int count = 1;
int timeout = 1;
int reserve = 0;
} // namespace ShortcutDefaults

namespace {

constexpr int fieldMaximum = 1000;
constexpr int pageCount = 2;

struct Field {
    int page;
    const char* label;
    const int* value;
};

const Field fields[] = {
    {0, "period:", &ShortcutDefaults::period},
    {0, "count:", &ShortcutDefaults::count},
    {0, "timeout:", &ShortcutDefaults::timeout},
    {1, "reserve:", &ShortcutDefaults::reserve},
};

} // namespace

ShortcutCmdWin::ShortcutCmdWin(int page, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint)
{
    setWindowTitle(QStringLiteral("Shortcut Cmd"));
    setMinimumSize(300, 200);
    m_pages = new QStackedWidget(this);
    for (int i = 0; i < pageCount; ++i) {
        m_pages->addWidget(BuildPage(i));
    }
    m_pages->setCurrentIndex(page);

    auto* send = new QPushButton(tr("发送"), this);
    auto* cancel = new QPushButton(tr("取消"), this);
    connect(send, &QPushButton::clicked, this, &ShortcutCmdWin::SlotSendBtnClicked);
    connect(cancel, &QPushButton::clicked, this, &ShortcutCmdWin::SlotCancleBtnClicked);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(send);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_pages);
    layout->addLayout(buttons);
}

QWidget* ShortcutCmdWin::BuildPage(int page)
{
    auto* widget = new QWidget(m_pages);
    auto* layout = new QFormLayout(widget);
    for (const Field& field : fields) {
        if (field.page == page) {
            auto* box = new QSpinBox(widget);
            box->setRange(0, fieldMaximum);
            box->setValue(*field.value);
            layout->addRow(QString::fromLatin1(field.label), box);
        }
    }
    return widget;
}

void ShortcutCmdWin::SlotSendBtnClicked()
{
    QByteArray payload;
    const QList<QSpinBox*> boxes = m_pages->currentWidget()->findChildren<QSpinBox*>();
    for (const QSpinBox* box : boxes) {
        const qint32 value = qToLittleEndian<qint32>(box->value());
        payload.append(reinterpret_cast<const char*>(&value), sizeof(value));
    }
    const CommandFrame frame(m_pages->currentIndex() == 0 ? protocol::CmdStart : protocol::CmdStop, payload);
    const QPointer<ShortcutCmdWin> guard(this);
    if (frame.IsEncoded()) {
        emit SendMsg(frame.Data(), frame.Length());
    }
    if (!guard.isNull()) {
        close();
    }
}

void ShortcutCmdWin::SlotCancleBtnClicked()
{
    close();
}
