// SPDX-License-Identifier: MIT
#pragma once

#include "performance/RefLocFile.h"

#include <QVector>
#include <QWidget>

class QLineEdit;

/// Names a surveyed point and saves it.
class RefLocWin : public QWidget {
    Q_OBJECT

public:
    explicit RefLocWin(QWidget* parent = nullptr);

    /// The points saved in this window's lifetime, as stored.
    const QVector<RefLocation>& Added() const { return m_added; }

signals:
    /// A point was saved; its texts are those of the line edits.
    void RefLocSaved(const RefLocation& location);

public slots:
    void SlotConfirmBtnClicked();
    void SlotCancleBtnClicked();

private:
    QLineEdit* m_nameEdit = nullptr;
    QLineEdit* m_lonEdit = nullptr;
    QLineEdit* m_latEdit = nullptr;
    QLineEdit* m_altEdit = nullptr;
    int m_count = 0; ///< points in the file, as far as this window knows
    QVector<RefLocation> m_added;
};
