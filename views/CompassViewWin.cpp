#include "views/CompassViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

CompassViewWin::CompassViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("航向方位"));
}

void CompassViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::CompassRecord), "CompassViewWin");
    if (record.IsDropped())
        return;
}

void CompassViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
