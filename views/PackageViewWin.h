#pragma once

#include <QWidget>

/// The window of the list of frames that passed the link.
class PackageViewWin : public QWidget {
    Q_OBJECT

public:
    explicit PackageViewWin(QWidget* parent);

    /// Takes a record of the codec; `length` in bytes.
    void OnRecord(const void* buffer, int length);

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;
};
