// SPDX-License-Identifier: MIT
#include "views/track/DegreeSpinBox.h"

#include <QLineEdit>

DegreeSpinBox::DegreeSpinBox(QWidget* parent) : QDoubleSpinBox(parent)
{
    connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &DegreeSpinBox::ReadSign);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this] {
        ReadSign();
        emit Edited();
    });
}

void DegreeSpinBox::SetDegrees(double degrees, bool negative)
{
    m_negative = negative;
    setValue(degrees);
    // A value that hasn't changed isn't written again, but its sign may have.
    lineEdit()->setText(prefix() + textFromValue(value()) + suffix());
    m_negative = negative;
}

bool DegreeSpinBox::IsNegative() const
{
    return value() < 0.0 || (value() == 0.0 && m_negative);
}

QString DegreeSpinBox::textFromValue(double number) const
{
    QString text = QDoubleSpinBox::textFromValue(number);
    if (number == 0.0 && m_negative && decimals() == 0 && !text.startsWith('-')) {
        return '-' + text;
    }
    return text;
}

void DegreeSpinBox::ReadSign()
{
    m_negative = lineEdit()->text().startsWith('-');
}
