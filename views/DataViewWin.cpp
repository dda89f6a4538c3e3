#include "views/DataViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

DataViewWin::DataViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("定位数据"));
}

void DataViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::FixRecord), "DataViewWin");
    if (record.IsDropped())
        return;
}

void DataViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
