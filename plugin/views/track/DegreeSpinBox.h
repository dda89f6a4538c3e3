// SPDX-License-Identifier: MIT
#pragma once

#include <QDoubleSpinBox>

/// A field of degrees that keeps the sign of 0: without decimals -0° 30′ and 0° 30′ differ.
class DegreeSpinBox : public QDoubleSpinBox {
    Q_OBJECT

public:
    explicit DegreeSpinBox(QWidget* parent);

    void SetDegrees(double degrees, bool negative);
    bool IsNegative() const;

signals:
    /// The user has typed; tells of a change of sign too, which the value alone doesn't show.
    void Edited();

protected:
    QString textFromValue(double number) const override;

private:
    void ReadSign();

    bool m_negative = false; ///< the sign to show with a value of 0
};
