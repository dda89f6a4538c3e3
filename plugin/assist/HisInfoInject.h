// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/ClosingWidget.h"

#include <QString>

#include <cstdint>

class CommandFrame;
class QLineEdit;
class QTimer;

/// Fetches the receiver's history block into a file and writes it back.
class HisInfoInject : public ClosingWidget {
    Q_OBJECT

public:
    explicit HisInfoInject(QWidget* parent = nullptr);

    /// Takes the history block that the receiver reports; `length` in bytes. Also one that nobody asked for
    /// overwrites the file.
    void OnHisInfo(const void* record, int length);

    /// Path of the file that holds the block.
    QString FilePath() const { return m_filePath; }

    /// Puts that path into the file line.
    void ShowFilePath();

signals:
    void SendMsg(uint8_t* buff, int len);

public slots:
    void SlotSelectHisInfoFilePath();
    void SlotSendRptHisInfoCmd();
    void SlotInjectHisInfo();
    void SlotRptHisInfoTimeout();

private:
    enum class Step { Done, Failed, Gone };

    void BuildForm();
    Step InjectUtcTime();
    Step InjectFile();
    Step SendAndWait(const CommandFrame& frame, const QString& name, QString* answer);

    QLineEdit* m_pathEdit = nullptr;
    QString m_filePath;
    QTimer* m_reportTimer = nullptr;
};
