#include "views/SatellitesPosViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

SatellitesPosViewWin::SatellitesPosViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("卫星分布"));
}

void SatellitesPosViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::SatPosRecord), "SatellitesPosViewWin");
    if (record.IsDropped())
        return;
}

void SatellitesPosViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
