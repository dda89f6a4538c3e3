// SPDX-License-Identifier: MIT
#pragma once

#include "views/log/LogTextView.h"

#include <QByteArray>

class QComboBox;

/// A running dump of the bytes that the serial line delivers, before any decoding.
class HexViewWin : public LogTextView {
    Q_OBJECT

public:
    explicit HexViewWin(QWidget* parent);

    /// Takes the bytes of one read.
    void OnBytes(const QByteArray& bytes);

private:
    QComboBox* m_columns = nullptr;
};
