#pragma once

#include <QWidget>

/// The window of the field-level inspector of messages.
class MessageViewWin : public QWidget {
    Q_OBJECT

public:
    explicit MessageViewWin(QWidget* parent);

    /// Takes a record of the codec; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
