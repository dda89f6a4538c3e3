#include "views/MessageViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

MessageViewWin::MessageViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("消息数据"));
}

void MessageViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, gnss::kMessageHeaderSize + sizeof(gnss::MsgMeas), "MessageViewWin");
    if (record.IsDropped())
        return;
}

void MessageViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
