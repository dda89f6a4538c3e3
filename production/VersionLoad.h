#pragma once

#include <QWidget>

class QLabel;
class QTextEdit;

/// The window of the firmware load.
class VersionLoad : public QWidget {
    Q_OBJECT

public:
    explicit VersionLoad(QWidget* parent = nullptr);

    /// Sets the progress and the log back; called just before the window is shown.
    void Prepare();

signals:
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLabel* m_progress = nullptr;
    QTextEdit* m_log = nullptr;
};
