#include "production/ProductTest.h"

#include <QCloseEvent>

ProductTest::ProductTest(QWidget* parent) : QWidget(parent) {}

void ProductTest::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    emit CloseSignal(windowTitle());
}
