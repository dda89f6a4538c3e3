// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

/// The read-only field that tells how many seconds old a view's data are.
class AgeEdit : public QLineEdit {
    Q_OBJECT

public:
    explicit AgeEdit(QWidget* parent);

    void ShowAge(quint64 seconds);
};
