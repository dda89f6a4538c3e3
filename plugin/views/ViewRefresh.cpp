// SPDX-License-Identifier: MIT
#include "views/ViewRefresh.h"

#include <QTimer>
#include <QWidget>

#include <chrono>

namespace {

/// Milliseconds to the next instant of renewal, the same for all callers.
int ToNextInstant()
{
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    return ViewRefresh::kPeriodMs - static_cast<int>(now % ViewRefresh::kPeriodMs);
}

} // namespace

ViewRefresh::ViewRefresh(QWidget* view) : QObject(view), m_view(view), m_timer(new QTimer(this))
{
    m_timer->setSingleShot(true);
    m_timer->setTimerType(Qt::PreciseTimer);
    connect(m_timer, &QTimer::timeout, this, &ViewRefresh::Due);
}

void ViewRefresh::Request()
{
    if (!m_view->isVisible()) {
        m_timer->stop();
        emit Due();
    } else if (!m_timer->isActive()) {
        m_timer->start(ToNextInstant());
    }
}

void ViewRefresh::Cancel()
{
    m_timer->stop();
}
