// SPDX-License-Identifier: MIT
#include "views/track/AngleRow.h"

#include "views/track/DegreeSpinBox.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>

AngleRow::AngleRow(double largest, const QString& name, QWidget* parent)
    : QWidget(parent), m_largest(largest), m_degrees(new DegreeSpinBox(this)), m_minutes(new QDoubleSpinBox(this)),
      m_seconds(new QDoubleSpinBox(this))
{
    m_degrees->setObjectName(name + "Degrees");
    m_minutes->setObjectName(name + "Minutes");
    m_seconds->setObjectName(name + "Seconds");
    m_degrees->setRange(-largest, largest);
    m_degrees->setSuffix("°");
    m_minutes->setRange(0.0, 60.0);
    m_minutes->setSuffix("′");
    m_seconds->setRange(0.0, 60.0);
    m_seconds->setDecimals(4);
    m_seconds->setSuffix("″");

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_degrees, 1);
    row->addWidget(m_minutes, 1);
    row->addWidget(m_seconds, 1);

    const auto changed = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(m_degrees, changed, this, &AngleRow::Read);
    connect(m_degrees, &DegreeSpinBox::Edited, this, &AngleRow::Read);
    connect(m_minutes, changed, this, &AngleRow::Read);
    connect(m_seconds, changed, this, &AngleRow::Read);
    Fill();
}

void AngleRow::SetAngle(double angle)
{
    if (std::isnan(angle)) {
        return;
    }
    m_angle = std::clamp(angle, -m_largest, m_largest);
    Fill();
}

void AngleRow::SetForm(AngleForm form)
{
    m_form = form;
    Fill();
}

void AngleRow::Fill()
{
    const QSignalBlocker quietDegrees(m_degrees);
    const QSignalBlocker quietMinutes(m_minutes);
    const QSignalBlocker quietSeconds(m_seconds);
    const AngleFields fields = SplitAngle(m_angle, m_form);
    m_degrees->setDecimals(m_form == AngleForm::Degrees ? 8 : 0);
    m_degrees->SetDegrees(fields.degrees, fields.negative);
    m_minutes->setDecimals(m_form == AngleForm::Minutes ? 6 : 0);
    m_minutes->setValue(fields.minutes);
    m_minutes->setVisible(m_form != AngleForm::Degrees);
    m_seconds->setValue(fields.seconds);
    m_seconds->setVisible(m_form == AngleForm::Seconds);
}

void AngleRow::Read()
{
    const AngleFields fields{m_degrees->value(), m_minutes->value(), m_seconds->value(), m_degrees->IsNegative()};
    m_angle = std::clamp(JoinAngle(fields, m_form), -m_largest, m_largest);
}
