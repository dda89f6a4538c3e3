#include "views/PackageViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

PackageViewWin::PackageViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("数据传输"));
}

void PackageViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::PackageRecord), "PackageViewWin");
    if (record.IsDropped())
        return;
}

void PackageViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
