// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QTimer;
class QWidget;

/// Says when what a view shows is to be renewed. A receiver's epoch comes as many records in several reads, and
/// a renewal for each of them costs more than all the decoding; so it waits for the next fifth of a second, which
/// is the same instant for all views: a window with twelve of them is then painted once.
class ViewRefresh : public QObject {
    Q_OBJECT

public:
    static constexpr int kPeriodMs = 200;

    explicit ViewRefresh(QWidget* view);

    /// Asks for a renewal. While the view is hidden Due() comes at once, since nothing is painted then.
    void Request();

    /// Forgets a request.
    void Cancel();

signals:
    void Due();

private:
    QWidget* m_view;
    QTimer* m_timer;
};
