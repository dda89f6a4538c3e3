#include "views/Cn0ViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

Cn0ViewWin::Cn0ViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("信号强度"));
}

void Cn0ViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::Cn0Record), "Cn0ViewWin");
    if (record.IsDropped())
        return;
}

void Cn0ViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
