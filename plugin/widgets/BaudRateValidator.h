// SPDX-License-Identifier: MIT
#pragma once

#include <QIntValidator>

/// Lets only the digits of a rate from 1 to 24000000 be typed, where the base class would let any number of as
/// many digits stand as one that isn't finished. Leading zeros are dropped.
class BaudRateValidator : public QIntValidator {
    Q_OBJECT

public:
    explicit BaudRateValidator(QObject* parent = nullptr);

    State validate(QString& input, int& position) const override;
};
