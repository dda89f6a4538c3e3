#include "production/KpiViewWin.h"

#include "codec/Records.h"
#include "views/RecordCopy.h"

#include <QCloseEvent>

KpiViewWin::KpiViewWin(QWidget* parent) : QWidget(parent)
{
    setWindowTitle(tr("性能测试"));
}

void KpiViewWin::OnKpiFix(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::KpiFixRecord), "KpiViewWin");
    if (record.IsDropped())
        return;
}

void KpiViewWin::OnKpiCn0(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(gnss::KpiCn0Record), "KpiViewWin");
    if (record.IsDropped())
        return;
}

void KpiViewWin::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
