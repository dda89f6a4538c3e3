// SPDX-License-Identifier: MIT
#include "widgets/ClosingWidget.h"

void ClosingWidget::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal();
}
