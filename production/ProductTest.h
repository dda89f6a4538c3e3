#pragma once

#include <QWidget>

/// One station of the factory test; it has a serial port of its own.
class ProductTest : public QWidget {
    Q_OBJECT

public:
    explicit ProductTest(QWidget* parent = nullptr);

signals:
    void CloseSignal(QString title);

protected:
    void closeEvent(QCloseEvent* event) override;
};
