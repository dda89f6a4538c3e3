// SPDX-License-Identifier: MIT
#include "views/BasicViewWin.h"

#include "base/ProcessState.h"
#include "bridge/RecordCopy.h"
#include "protocol/Records.h"
#include "views/DisplayTimeZone.h"
#include "views/FixTexts.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QVector>

namespace {

QVector<BasicViewWin*> openViews;

QLineEdit* AddField(QFormLayout* form, const QString& label, const char* name)
{
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setReadOnly(true);
    form->addRow(label, field);
    return field;
}

} // namespace

BasicViewWin::BasicViewWin(QWidget* parent) : ClosingWidget(parent)
{
    setWindowTitle("Basic View");
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_longitude = AddField(form, tr("经度(°): "), "longitude");
    m_latitude = AddField(form, tr("纬度(°): "), "latitude");
    m_altitude = AddField(form, tr("海拔(m ): "), "altitude");
    m_time = AddField(form, tr("UTC时间 : "), "time");
    m_date = AddField(form, tr("日  期  : "), "date");
    m_zone = new QComboBox;
    m_zone->setObjectName("timeZone");
    m_zone->addItems(TimeZoneNames());
    form->addRow(tr("时区: "), m_zone);
    ShowZone(Global::timeZoneIndex);
    connect(m_zone, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &BasicViewWin::SlotTimeZoneChanged);
    openViews.append(this);
}

BasicViewWin::~BasicViewWin()
{
    openViews.removeOne(this);
}

void BasicViewWin::OnRecord(const void* buffer, int length)
{
    const RecordCopy record(buffer, length, sizeof(protocol::FixRecord), "BasicViewWin");
    if (record.IsDropped()) {
        return;
    }
    const QStringList texts = FixTexts(record.Data(), record.Size(), QString());
    m_longitude->setText(texts[1]);
    m_latitude->setText(texts[2]);
    m_altitude->setText(FixAltitudeText(record.Data(), record.Size()));
    const QDateTime time = FixDateTime(record.Data(), record.Size());
    const DateTimeTexts shown = MovedTexts(time, Global::timeZoneIndex - Global::kTimeZoneBase);
    m_date->setText(shown.date);
    m_time->setText(shown.time);
}

void BasicViewWin::SlotTimeZoneChanged(int index)
{
    if (index < 0 || index >= m_zone->count()) {
        return;
    }
    const int hours = index - Global::timeZoneIndex;
    for (BasicViewWin* view : qAsConst(openViews)) {
        view->MoveShownTime(hours);
        view->ShowZone(index);
    }
    Global::timeZoneIndex = index;
}

void BasicViewWin::ShowZone(int index)
{
    const QSignalBlocker blocker(m_zone);
    m_zone->setCurrentIndex(index);
}

void BasicViewWin::MoveShownTime(int hours)
{
    if (m_date->text().isEmpty() || m_time->text().isEmpty()) {
        return;
    }
    const DateTimeTexts shown = MovedTexts(ReadTexts({m_date->text(), m_time->text()}), hours);
    m_date->setText(shown.date);
    m_time->setText(shown.time);
}
