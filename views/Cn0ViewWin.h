#pragma once

#include <QWidget>

/// The window of the signal strength plot.
class Cn0ViewWin : public QWidget {
    Q_OBJECT

public:
    explicit Cn0ViewWin(QWidget* parent);

    /// Takes a record of the codec; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
