#pragma once

#include <QWidget>

/// The window of the track plot.
class PositioningViewWin : public QWidget {
    Q_OBJECT

public:
    explicit PositioningViewWin(QWidget* parent);

    /// Takes a record of the codec; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
