// SPDX-License-Identifier: MIT
#include "views/track/SetCenterPointWin.h"

#include "base/TrackState.h"
#include "views/track/AngleRow.h"
#include "views/track/TrackGeometry.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QPushButton>

SetCenterPointWin::SetCenterPointWin(QWidget* parent)
    : QDialog(parent), m_longitude(new AngleRow(180.0, "longitude", this)),
      m_latitude(new AngleRow(90.0, "latitude", this))
{
    setWindowTitle(tr("Set Center Point Coordinates"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    auto* showMode = new QComboBox(this);
    showMode->setObjectName("showMode");
    showMode->addItems({"dd.dddddddd°", "dd°mm.mmmmmm′", "dd°mm′ss.ssss″"});
    connect(showMode, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &SetCenterPointWin::SlotShowModeChanged);

    auto* average = new QPushButton(tr("Set to Average"), this);
    average->setObjectName("averageBtn");
    average->setAutoDefault(false);
    connect(average, &QPushButton::clicked, this, &SetCenterPointWin::SlotAverageBtnClicked);
    auto* ok = new QPushButton(tr("OK"), this);
    ok->setObjectName("okBtn");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &SetCenterPointWin::SlotOkBtnClicked);
    auto* cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName("cancelBtn");
    connect(cancel, &QPushButton::clicked, this, &SetCenterPointWin::SlotCancelBtnClicked);

    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->addRow(showMode);
    form->addRow(tr("Longitude"), m_longitude);
    form->addRow(tr("Latitudinal"), m_latitude);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(average);
    buttons->addStretch(1);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    form->addRow(buttons);
    // Wide enough for three fields, so that a change of form doesn't change the window's width.
    setMinimumWidth(36 * fontMetrics().averageCharWidth() + 180);

    m_longitude->SetAngle(TrackState::centerLongitude);
    m_latitude->SetAngle(TrackState::centerLatitude);
}

void SetCenterPointWin::SlotShowModeChanged(int index)
{
    const AngleForm form = static_cast<AngleForm>(qBound(0, index, 2));
    m_longitude->SetForm(form);
    m_latitude->SetForm(form);
}

void SetCenterPointWin::SlotAverageBtnClicked()
{
    const std::optional<TrackState::GeoPoint> mean = TrackGeometry::Average(TrackState::pointList);
    if (!mean) {
        return;
    }
    m_longitude->SetAngle(mean->longitude);
    m_latitude->SetAngle(mean->latitude);
}

void SetCenterPointWin::SlotOkBtnClicked()
{
    TrackState::centerLatitude = m_latitude->Angle();
    TrackState::centerLongitude = m_longitude->Angle();
    emit updateCenterPoint();
    accept();
}

void SetCenterPointWin::SlotCancelBtnClicked()
{
    reject();
}
