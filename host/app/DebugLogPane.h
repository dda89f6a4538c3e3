// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QPlainTextEdit;
class QPushButton;

/// Shows the debug log while the program runs; the log itself lives on without it.
class DebugLogPane : public QWidget {
    Q_OBJECT

public:
    explicit DebugLogPane(QWidget* parent = nullptr);
    ~DebugLogPane() override;

    /// Number of lines on show.
    int LineCount() const;

public Q_SLOTS:
    void Save();
    void Clear();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void Retranslate();
    void TakeNewLines();

    QPlainTextEdit* m_text;
    QPushButton* m_save;
    QPushButton* m_clear;
    quint64 m_next = 0;
};
