#include "views/PositioningViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

PositioningViewWin::PositioningViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("定位轨迹"));
}

void PositioningViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::PositionRecord), "PositioningViewWin");
    if (record.IsDropped())
        return;
}

void PositioningViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
