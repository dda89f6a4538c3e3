// SPDX-License-Identifier: MIT
#pragma once

#include "views/track/AngleForm.h"

#include <QWidget>

class DegreeSpinBox;
class QDoubleSpinBox;

/// The fields of one angle. What they can't show of it is kept beside them, so that an angle comes back as it
/// was set unless the user changes a field.
class AngleRow : public QWidget {
    Q_OBJECT

public:
    /// `largest` in degrees; the range is -largest to largest. `name` begins the names of the fields.
    AngleRow(double largest, const QString& name, QWidget* parent);

    /// What isn't a number leaves the fields as they are; what lies outside the range is cut to it.
    void SetAngle(double angle);
    double Angle() const { return m_angle; }

    void SetForm(AngleForm form);

private:
    void Fill();
    void Read();

    double m_largest;
    double m_angle = 0.0;
    AngleForm m_form = AngleForm::Degrees;
    DegreeSpinBox* m_degrees;
    QDoubleSpinBox* m_minutes;
    QDoubleSpinBox* m_seconds;
};
