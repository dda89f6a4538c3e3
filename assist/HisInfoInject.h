#pragma once

#include <QWidget>

#include <cstdint>

class QLineEdit;

/// The window that saves the receiver's history block and injects it.
class HisInfoInject : public QWidget {
    Q_OBJECT

public:
    explicit HisInfoInject(QWidget* parent = nullptr);

    /// Takes the history block that the receiver reports; `length` in bytes.
    void OnHisInfo(const void* buffer, int length);

    /// Path of the file that holds the block.
    QString FilePath() const;

    /// Puts that path into the file line.
    void ShowFilePath();

signals:
    void SendMsg(uint8_t* buffer, int len);
    void CloseSignal();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    QLineEdit* m_pathEdit = nullptr;
};
